// Processor detection on synthetic processors, the level selection table,
// the vendor rule, the cache query, and the threading exports.
#include "core/cpu.h"

#include <gtest/gtest.h>

#include <map>
#include <utility>

#include "core/dispatch.h"
#include "pxl/pxl.h"

namespace {

using pxl::CpuidRegs;

// A processor made of cpuid answers.  Leaves it was not given read as zero;
// it records what detection asked for.
class FakeCpu : public pxl::CpuProbe {
 public:
  FakeCpu(uint32_t maxLeaf = 7, uint32_t maxExtLeaf = 0x80000008u, bool intel = true) {
    set(0, 0,
        {maxLeaf, intel ? 0x756E6547u : 0x68747541u, intel ? 0x6C65746Eu : 0x444D4163u,
         intel ? 0x49656E69u : 0x69746E65u});
    set(0x80000000u, 0, {maxExtLeaf, 0, 0, 0});
  }
  void set(uint32_t leaf, uint32_t sub, CpuidRegs r) { leaves_[{leaf, sub}] = r; }
  CpuidRegs& at(uint32_t leaf, uint32_t sub = 0) { return leaves_[{leaf, sub}]; }
  CpuidRegs Cpuid(uint32_t leaf, uint32_t sub) const override {
    asked_[leaf]++;
    auto it = leaves_.find({leaf, sub});
    return it == leaves_.end() ? CpuidRegs{0, 0, 0, 0} : it->second;
  }
  uint64_t Xcr0() const override {
    ++xcr0Reads;
    return xcr0;
  }
  int asked(uint32_t leaf) const { return asked_[leaf]; }

  uint64_t xcr0 = 0;
  mutable int xcr0Reads = 0;

 private:
  std::map<std::pair<uint32_t, uint32_t>, CpuidRegs> leaves_;
  mutable std::map<uint32_t, int> asked_;
};

enum Reg { EAX, EBX, ECX, EDX };

uint32_t& RegOf(CpuidRegs& r, Reg which) {
  return which == EAX ? r.eax : which == EBX ? r.ebx : which == ECX ? r.ecx : r.edx;
}

TEST(Detection, EachFeatureBitComesFromItsCpuidBit) {
  struct Row {
    uint32_t leaf;
    Reg reg;
    int bit;
    uint64_t feature;
  };
  // clang-format off
  const Row rows[] = {
      {1, EDX, 23, PXL_CPU_MMX},          {1, EDX, 25, PXL_CPU_SSE},
      {1, EDX, 26, PXL_CPU_SSE2},         {1, ECX, 0, PXL_CPU_SSE3},
      {1, ECX, 9, PXL_CPU_SSSE3},         {1, ECX, 22, PXL_CPU_MOVBE},
      {1, ECX, 19, PXL_CPU_SSE41},        {1, ECX, 20, PXL_CPU_SSE42},
      {1, ECX, 28, PXL_CPU_AVX},          {1, ECX, 25, PXL_CPU_AES},
      {1, ECX, 1, PXL_CPU_CLMUL},         {1, ECX, 30, PXL_CPU_RDRAND},
      {1, ECX, 29, PXL_CPU_F16C},         {7, EBX, 19, PXL_CPU_ADX},
      {7, EBX, 18, PXL_CPU_RDSEED},       {7, EBX, 29, PXL_CPU_SHA},
      {7, EBX, 16, PXL_CPU_AVX512F},      {7, EBX, 28, PXL_CPU_AVX512CD},
      {7, EBX, 27, PXL_CPU_AVX512ER},     {7, EBX, 26, PXL_CPU_AVX512PF},
      {7, EBX, 30, PXL_CPU_AVX512BW},     {7, EBX, 17, PXL_CPU_AVX512DQ},
      {7, EBX, 31, PXL_CPU_AVX512VL},     {7, ECX, 1, PXL_CPU_AVX512VBMI},
      {7, EBX, 14, PXL_CPU_MPX},          {7, EDX, 3, PXL_CPU_AVX5124FMAPS},
      {7, EDX, 2, PXL_CPU_AVX5124VNNIW},  {7, EBX, 21, PXL_CPU_AVX512IFMA},
      {7, ECX, 14, PXL_CPU_AVX512VPOPCNT}, {7, ECX, 12, PXL_CPU_AVX512BITALG},
      {0x80000001u, ECX, 8, PXL_CPU_PREFETCHW},
  };
  // clang-format on
  for (const Row& row : rows) {
    FakeCpu cpu;
    RegOf(cpu.at(row.leaf), row.reg) |= 1u << row.bit;
    EXPECT_EQ(row.feature, pxl::DetectFeatures(cpu))
        << "leaf " << std::hex << row.leaf << " reg " << row.reg << " bit " << std::dec << row.bit;
  }
}

TEST(Detection, AvxStateNeedsXsaveAvxAndBothXcr0Bits) {
  FakeCpu cpu;
  cpu.xcr0 = 0x6;
  cpu.at(1).ecx = 1u << 28;  // AVX without OSXSAVE: XCR0 must not be read
  EXPECT_EQ(PXL_CPU_AVX, pxl::DetectFeatures(cpu));
  EXPECT_EQ(0, cpu.xcr0Reads);

  cpu.at(1).ecx |= 1u << 27;
  EXPECT_EQ(PXL_CPU_AVX | PXL_CPU_AVX_OS, pxl::DetectFeatures(cpu));
  cpu.xcr0 = 0x4;
  EXPECT_EQ(PXL_CPU_AVX, pxl::DetectFeatures(cpu));
}

TEST(Detection, Avx512StateIsTestedOnlyWithLeaf7) {
  FakeCpu cpu;
  cpu.at(1).ecx = 1u << 27;
  cpu.xcr0 = 0xE0;
  EXPECT_EQ(PXL_CPU_AVX512_OS, pxl::DetectFeatures(cpu));
  cpu.xcr0 = 0x60;
  EXPECT_EQ(0u, pxl::DetectFeatures(cpu));

  FakeCpu old(6);
  old.at(1).ecx = 1u << 27;
  old.xcr0 = 0xE6;
  old.at(7).ebx = ~0u;
  EXPECT_EQ(0u, pxl::DetectFeatures(old));
  EXPECT_EQ(0, old.asked(7));
}

TEST(Detection, Avx2SetNeedsFmaAvx2Bmi1AndBmi2) {
  FakeCpu cpu;
  cpu.at(1).ecx = 1u << 12;
  cpu.at(7).ebx = (1u << 5) | (1u << 3) | (1u << 8);
  EXPECT_EQ(PXL_CPU_AVX2, pxl::DetectFeatures(cpu));
  for (uint32_t missing : {1u << 5, 1u << 3, 1u << 8}) {
    cpu.at(7).ebx = ((1u << 5) | (1u << 3) | (1u << 8)) & ~missing;
    EXPECT_EQ(0u, pxl::DetectFeatures(cpu));
  }
  cpu.at(1).ecx = 0;
  cpu.at(7).ebx = (1u << 5) | (1u << 3) | (1u << 8);
  EXPECT_EQ(0u, pxl::DetectFeatures(cpu));
}

TEST(Detection, ExtendedLeafAndModelTest) {
  FakeCpu low(7, 0x80000000u);
  low.at(0x80000001u).ecx = 1u << 8;
  EXPECT_EQ(0u, pxl::DetectFeatures(low));
  EXPECT_EQ(0, low.asked(0x80000001u));

  FakeCpu model;
  model.at(1).eax = 0x12B1F;  // masked with 0xFF0: 0xB10
  EXPECT_EQ(PXL_CPU_MODEL_TEST, pxl::DetectFeatures(model));
  model.at(1).eax = 0x12B2F;
  EXPECT_EQ(0u, pxl::DetectFeatures(model));
}

TEST(Detection, ExtendedLeafIsReadFromItsFirstNumberUp) {
  // The largest extended leaf exactly 0x80000001 is enough to read it.
  FakeCpu exact(7, 0x80000001u);
  exact.at(0x80000001u).ecx = 1u << 8;
  EXPECT_EQ(PXL_CPU_PREFETCHW, pxl::DetectFeatures(exact));
  EXPECT_EQ(1, exact.asked(0x80000001u));
}

// ---- selection -----------------------------------------------------------------

constexpr uint64_t kBase = 0x7;      // MMX SSE SSE2
constexpr uint64_t kToSse42 = 0xDF;  // .. SSE3 SSSE3 SSE4.1 SSE4.2 (no MOVBE)
constexpr uint64_t kAvxOs = PXL_CPU_AVX | PXL_CPU_AVX_OS;
constexpr uint64_t kAvx512 = 0x7300000;  // F CD BW DQ VL

TEST(Selection, TableRowsInOrder) {
  struct Row {
    uint64_t mask;
    int level;
    PxlStatus status;
  };
  const Row rows[] = {
      {kToSse42 | kAvxOs | PXL_CPU_AVX2 | kAvx512 | PXL_CPU_AVX512_OS, 5, pxlStsNoErr},
      {kToSse42 | kAvxOs | PXL_CPU_AVX2 | 0xF00000 | PXL_CPU_AVX512_OS, 4, pxlStsNoErr},
      {kToSse42 | kAvxOs | PXL_CPU_AVX2, 4, pxlStsNoErr},
      {kToSse42 | kAvxOs, 3, pxlStsNoErr},
      {kToSse42, 2, pxlStsNoErr},
      {0x5F, 1, pxlStsNoErr},
      {0x3F, 1, pxlStsNoErr},
      {0x1F, 1, pxlStsNoErr},
      {0xF, 0, pxlStsNoErr},
      {0x7, 0, pxlStsNoErr},
      {0x3, 0, pxlStsNotSupportedCpu},
      {0x1, 0, pxlStsNotSupportedCpu},
      {0x0, 0, pxlStsNotSupportedCpu},
  };
  for (const Row& r : rows) {
    const pxl::LevelChoice c = pxl::SelectLevel(r.mask);
    EXPECT_EQ(r.level, c.level) << std::hex << r.mask;
    EXPECT_EQ(r.status, c.status) << std::hex << r.mask;
  }
}

TEST(Selection, TheConditionDecidesAndMissingRequiredBitsOnlyReport) {
  // AVX2 with its state but no SSSE3: still level 4.
  const uint64_t noSsse3 = (kToSse42 & ~PXL_CPU_SSSE3) | kAvxOs | PXL_CPU_AVX2;
  const pxl::LevelChoice c = pxl::SelectLevel(noSsse3);
  EXPECT_EQ(4, c.level);
  EXPECT_EQ(pxlStsFeaturesCombination, c.status);
  EXPECT_EQ(noSsse3 | 0x81DF, c.enabledMask);

  // SSE4.1 alone: level 1, with SSE3 and SSSE3 missing.
  EXPECT_EQ(1, pxl::SelectLevel(kBase | PXL_CPU_SSE41).level);
  EXPECT_EQ(pxlStsFeaturesCombination, pxl::SelectLevel(kBase | PXL_CPU_SSE41).status);

  // Without MOVBE the higher levels are reached with no complaint.
  EXPECT_EQ(pxlStsNoErr, pxl::SelectLevel(kToSse42 | kAvxOs).status);
  EXPECT_EQ(0u, pxl::SelectLevel(kToSse42 | kAvxOs).enabledMask & PXL_CPU_MOVBE);
}

TEST(Selection, LevelFiveNeedsAllFiveOfItsFeatures) {
  // Without any one of F, CD, BW, DQ and VL the AVX2 row decides: level 4.
  const uint64_t below = kToSse42 | kAvxOs | PXL_CPU_AVX2 | PXL_CPU_AVX512_OS;
  EXPECT_EQ(5, pxl::SelectLevel(below | kAvx512).level);
  for (uint64_t missing :
       {PXL_CPU_AVX512F, PXL_CPU_AVX512CD, PXL_CPU_AVX512BW, PXL_CPU_AVX512DQ, PXL_CPU_AVX512VL}) {
    const pxl::LevelChoice c = pxl::SelectLevel(below | (kAvx512 & ~missing));
    EXPECT_EQ(4, c.level) << std::hex << missing;
    EXPECT_EQ(pxlStsNoErr, c.status) << std::hex << missing;
  }
}

TEST(Selection, FeaturesWithoutOsStateAreDropped) {
  // AVX and AVX2 without the AVX state: cleared, level 2 with SSE4.2.
  const pxl::LevelChoice a = pxl::SelectLevel(kToSse42 | PXL_CPU_AVX | PXL_CPU_AVX2);
  EXPECT_EQ(2, a.level);
  EXPECT_EQ(pxlStsFeatureNotSupported, a.status);
  EXPECT_EQ(0u, a.enabledMask & 0x8100);

  // AVX-512 without its state: cleared, level 4 from AVX2.
  const pxl::LevelChoice b = pxl::SelectLevel(kToSse42 | kAvxOs | PXL_CPU_AVX2 | kAvx512 |
                                              PXL_CPU_AVX512IFMA | PXL_CPU_MPX);
  EXPECT_EQ(4, b.level);
  EXPECT_EQ(pxlStsFeatureNotSupported, b.status);
  EXPECT_EQ(0u, b.enabledMask & 0xC6FF00000ULL);
  // IFMA and MPX are outside the cleared group.
  EXPECT_EQ(PXL_CPU_AVX512IFMA | PXL_CPU_MPX, b.enabledMask & (PXL_CPU_AVX512IFMA | PXL_CPU_MPX));
}

TEST(Selection, OtherVendorKeepsItsLevelAndReportsTheVendor) {
  FakeCpu amd(7, 0x80000008u, false);
  amd.at(1).edx = (1u << 23) | (1u << 25) | (1u << 26);
  amd.at(1).ecx = 1u | (1u << 9) | (1u << 19) | (1u << 20) | (1u << 27) | (1u << 28) | (1u << 12);
  amd.at(7).ebx = (1u << 5) | (1u << 3) | (1u << 8);
  amd.xcr0 = 0x7;
  EXPECT_FALSE(pxl::IsGenuineIntel(amd));
  const pxl::LevelChoice c = pxl::StartUp(pxl::DetectFeatures(amd), pxl::IsGenuineIntel(amd));
  EXPECT_EQ(4, c.level);
  EXPECT_EQ(pxlStsNonIntelCpu, c.status);

  FakeCpu intel;
  EXPECT_TRUE(pxl::IsGenuineIntel(intel));
  intel.at(0).ecx ^= 1;  // one word off
  EXPECT_FALSE(pxl::IsGenuineIntel(intel));
}

// ---- the host processor ------------------------------------------------------

TEST(Startup, InitOnThisProcessor) {
  const PxlStatus st = Init();
  const uint64_t mask = pxl::DetectFeatures(pxl::HostCpu());
  const bool intel = pxl::IsGenuineIntel(pxl::HostCpu());
  // Another vendor's processor is reported, not refused.
  EXPECT_EQ(pxl::StartUp(mask, intel).status, st);
  if (!intel) {
    EXPECT_EQ(pxlStsNonIntelCpu, st);
  }
  EXPECT_EQ(pxl::SelectLevel(mask).level, pxl::JumpIndex());
  EXPECT_EQ(pxl::SelectLevel(mask).enabledMask, pxl::EnabledFeatures());
  EXPECT_EQ(st, Init());  // the same answer again

  Pxl64u reported = 0;
  EXPECT_EQ(pxlStsNoErr, GetCpuFeatures(&reported));
  EXPECT_EQ(mask, reported);
  EXPECT_EQ(pxlStsNullPtrErr, GetCpuFeatures(nullptr));
  EXPECT_NE(0u, reported & PXL_CPU_SSE2);
}

TEST(Startup, ThreadExportsReportOneThread) {
  int n = 0;
  EXPECT_EQ(pxlStsNullPtrErr, GetNumThreads(nullptr));
  EXPECT_EQ(1, GetNumThreads(&n));
  EXPECT_EQ(1, n);
  for (int arg : {-5, 0, 1, 2, 64}) {
    EXPECT_EQ(1, SetNumThreads(arg));
    n = 0;
    EXPECT_EQ(1, GetNumThreads(&n));
    EXPECT_EQ(1, n);
  }
}

// ---- cache query ---------------------------------------------------------------

CpuidRegs Leaf4(uint32_t type, uint32_t ways, uint32_t partitions, uint32_t line, uint32_t sets) {
  return {type, ((ways - 1) << 22) | ((partitions - 1) << 12) | (line - 1), sets - 1, 0};
}

TEST(CacheQuery, Leaf4TakesTheLargestDataOrUnifiedCache) {
  FakeCpu cpu(0xB);
  cpu.set(4, 0, Leaf4(1, 8, 1, 64, 64));      // L1d 32 KiB
  cpu.set(4, 1, Leaf4(2, 64, 1, 64, 4096));   // instruction cache, 16 MiB: passed over
  cpu.set(4, 2, Leaf4(3, 16, 1, 64, 1024));   // L2 1 MiB
  cpu.set(4, 3, Leaf4(3, 12, 2, 128, 4096));  // L3 12 MiB, 128-byte lines
  cpu.set(4, 5, Leaf4(3, 16, 16, 64, 8192));  // after the terminator: never read
  int32_t size = -1, line = -1;
  EXPECT_EQ(pxlStsNoErr, pxl::QueryLargestCache(cpu, &size, &line));
  EXPECT_EQ(12 * 2 * 128 * 4096, size);
  EXPECT_EQ(128, line);
}

TEST(CacheQuery, FailuresAndLeaf2) {
  int32_t size = 77, line = 77;
  FakeCpu amd(0xB, 0x80000008u, false);
  amd.set(4, 0, Leaf4(3, 16, 1, 64, 1024));
  EXPECT_EQ(pxlStsNotSupportedCpu, pxl::QueryLargestCache(amd, &size, &line));
  EXPECT_EQ(77, size);
  FakeCpu ancient(1);
  EXPECT_EQ(pxlStsNotSupportedCpu, pxl::QueryLargestCache(ancient, &size, &line));
  EXPECT_EQ(77, size);

  FakeCpu empty(4);  // leaf 4 lists no cache
  EXPECT_EQ(pxl::pxlStsUnknownCacheSize, pxl::QueryLargestCache(empty, &size, &line));
  EXPECT_EQ(0, size);

  FakeCpu p3(3);  // leaf 2: count 01, L1d 32 KiB, TLBs, L2 2 MiB; EDX invalid
  p3.set(2, 0, {0x2C5B0001u, 0x007D0000u, 0x00000050u, 0x80FE0000u});
  EXPECT_EQ(pxlStsNoErr, pxl::QueryLargestCache(p3, &size, &line));
  EXPECT_EQ(2 * 1024 * 1024, size);
  EXPECT_EQ(64, line);

  p3.set(2, 0, {0x2C5B0001u, 0x00FE0000u, 0, 0});  // 0xFE is no known descriptor
  EXPECT_EQ(pxl::pxlStsUnknownCacheSize, pxl::QueryLargestCache(p3, &size, &line));
  EXPECT_EQ(0, size);

  EXPECT_EQ(32 * 1024, pxl::Leaf2DescriptorSize(0x2C));
  EXPECT_EQ(0, pxl::Leaf2DescriptorSize(0x5B));
  EXPECT_EQ(-1, pxl::Leaf2DescriptorSize(0xFF));  // "use leaf 4": not a size
}

TEST(CacheQuery, HostAnswerIsCached) {
  EXPECT_EQ(pxlStsNullPtrErr, pxl::LargestCacheSize(nullptr));
  int32_t a = -5, b = -5;
  const PxlStatus first = pxl::LargestCacheSize(&a);
  EXPECT_EQ(first, pxl::LargestCacheSize(&b));
  EXPECT_EQ(a, b);
  if (!pxl::IsGenuineIntel(pxl::HostCpu())) {
    EXPECT_EQ(pxlStsNotSupportedCpu, first);
    EXPECT_EQ(-5, a);
  } else if (first == pxlStsNoErr) {
    EXPECT_GT(a, 0);
  }
}

}  // namespace
