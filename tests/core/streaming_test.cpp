// When large outputs bypass the cache: the cache size behind the decision,
// from the largest-cache query or, on processors of the vendor that
// describes its caches in extended leaf 0x8000001D, from that leaf.
#include "core/streaming.h"

#include <gtest/gtest.h>

#include <map>
#include <utility>

#include "core/cpu.h"

namespace {

using pxl::CpuidRegs;

class Leaves : public pxl::CpuProbe {
 public:
  std::map<std::pair<uint32_t, uint32_t>, CpuidRegs> regs;
  CpuidRegs Cpuid(uint32_t leaf, uint32_t sub) const override {
    auto it = regs.find({leaf, sub});
    return it == regs.end() ? CpuidRegs{0, 0, 0, 0} : it->second;
  }
  uint64_t Xcr0() const override { return 0; }
};

// A cache description as leaves 4 and 0x8000001D give it.
CpuidRegs Cache(uint32_t type, uint32_t ways, uint32_t line, uint32_t sets) {
  return {type, ((ways - 1) << 22) | (line - 1), sets - 1, 0};
}

Leaves Amd(uint32_t maxExt, bool topology) {
  Leaves cpu;
  cpu.regs[{0, 0}] = {0x10, 0x68747541u, 0x444D4163u, 0x69746E65u};  // "AuthenticAMD"
  cpu.regs[{0x80000000u, 0}] = {maxExt, 0, 0, 0};
  cpu.regs[{0x80000001u, 0}] = {0, 0, topology ? 1u << 22 : 0u, 0};
  cpu.regs[{0x8000001Du, 0}] = Cache(1, 8, 64, 64);        // 32 KiB data
  cpu.regs[{0x8000001Du, 1}] = Cache(2, 8, 64, 64);        // instruction
  cpu.regs[{0x8000001Du, 2}] = Cache(3, 16, 64, 32768);    // 32 MiB unified
  cpu.regs[{0x8000001Du, 4}] = Cache(3, 16, 64, 1 << 20);  // after the end: not read
  return cpu;
}

TEST(Streaming, CacheSizeFromTheVendorsOwnLeaf) {
  EXPECT_EQ(32 << 20, pxl::StreamingCacheBytes(Amd(0x80000021u, true)));
  EXPECT_EQ(0, pxl::StreamingCacheBytes(Amd(0x8000001Cu, true)));   // leaf not there
  EXPECT_EQ(0, pxl::StreamingCacheBytes(Amd(0x80000021u, false)));  // no topology
  Leaves intel;
  intel.regs[{0, 0}] = {0xB, 0x756E6547u, 0x6C65746Eu, 0x49656E69u};
  intel.regs[{4, 0}] = Cache(3, 12, 64, 8192);  // 6 MiB
  EXPECT_EQ(6 << 20, pxl::StreamingCacheBytes(intel));
  Leaves other;  // neither: never stream
  other.regs[{0, 0}] = {0xB, 1, 2, 3};
  other.regs[{4, 0}] = Cache(3, 12, 64, 8192);
  EXPECT_EQ(0, pxl::StreamingCacheBytes(other));
}

TEST(Streaming, OnlyWhatExceedsTheCacheStreams) {
  pxl::test::SetStreamingCacheBytes(1000);
  EXPECT_FALSE(pxl::StreamOutput(1000));
  EXPECT_TRUE(pxl::StreamOutput(1001));
  pxl::test::SetStreamingCacheBytes(0);  // unknown
  EXPECT_FALSE(pxl::StreamOutput(int64_t{1} << 40));
  pxl::test::SetStreamingCacheBytes(-1);
}

}  // namespace
