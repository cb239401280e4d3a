// Processor detection, level selection, Init and the cache query.
#include "core/cpu.h"

#include <cpuid.h>

#include "core/dispatch.h"
#include "core/streaming.h"
#include "pxl/pxl_core.h"

namespace pxl {

int32_t g_jumpIndex = -1;

namespace {

uint64_t g_enabledMask = 7;  // MMX, SSE and SSE2 until Init says otherwise
uint64_t g_detectedMask = 0;
int32_t g_detectedValid = 0;

int32_t g_cacheSize = -1;  // negative: not asked yet
int32_t g_cacheLine = 0;
PxlStatus g_cacheStatus = 1;  // 1: no answer cached

// Shared state is written by single stores and read without locks; two
// threads that start up at once compute and store the same values.  A flag
// that says "the values before me are valid" is stored with release and
// read with acquire.
template <typename T>
void Store(T* where, T value, int order = __ATOMIC_RELAXED) {
  __atomic_store_n(where, value, order);
}
template <typename T>
T Load(const T* where, int order = __ATOMIC_RELAXED) {
  return __atomic_load_n(where, order);
}

inline bool Bit(uint32_t reg, int bit) { return (reg >> bit) & 1u; }

class HardwareCpu final : public CpuProbe {
 public:
  CpuidRegs Cpuid(uint32_t leaf, uint32_t subleaf) const override {
    CpuidRegs r;
    __cpuid_count(leaf, subleaf, r.eax, r.ebx, r.ecx, r.edx);
    return r;
  }
  uint64_t Xcr0() const override {
    uint32_t lo, hi;
    __asm__ volatile("xgetbv" : "=a"(lo), "=d"(hi) : "c"(0));
    return (static_cast<uint64_t>(hi) << 32) | lo;
  }
};

// Host feature mask, detected once.
uint64_t HostFeatures() {
  if (!Load(&g_detectedValid, __ATOMIC_ACQUIRE)) {
    Store(&g_detectedMask, DetectFeatures(HostCpu()));
    Store(&g_detectedValid, 1, __ATOMIC_RELEASE);
  }
  return Load(&g_detectedMask);
}

struct Leaf2Entry {
  uint8_t descriptor;
  int32_t size;       // bytes; 0: known, but not a data or unified cache
  int32_t line = 64;  // line size in bytes
};

constexpr int32_t KB = 1024;
constexpr int32_t MB = 1024 * 1024;

// Leaf-2 descriptors as the processor manuals list them.  TLBs, instruction
// and trace caches and prefetch hints are known but name no data cache.
// clang-format off
constexpr Leaf2Entry kLeaf2[] = {
    {0x01, 0}, {0x02, 0}, {0x03, 0}, {0x04, 0}, {0x05, 0}, {0x06, 0},
    {0x08, 0}, {0x09, 0}, {0x0A, 8 * KB, 32}, {0x0B, 0}, {0x0C, 16 * KB, 32},
    {0x0D, 16 * KB}, {0x0E, 24 * KB}, {0x1D, 128 * KB}, {0x21, 256 * KB},
    {0x22, 512 * KB}, {0x23, 1 * MB}, {0x24, 1 * MB}, {0x25, 2 * MB},
    {0x29, 4 * MB}, {0x2C, 32 * KB}, {0x30, 0}, {0x39, 128 * KB},
    {0x3A, 192 * KB}, {0x3B, 128 * KB}, {0x3C, 256 * KB}, {0x3D, 384 * KB},
    {0x3E, 512 * KB}, {0x40, 0}, {0x41, 128 * KB, 32}, {0x42, 256 * KB, 32},
    {0x43, 512 * KB, 32}, {0x44, 1 * MB, 32}, {0x45, 2 * MB, 32}, {0x46, 4 * MB},
    {0x47, 8 * MB}, {0x48, 3 * MB}, {0x49, 4 * MB}, {0x4A, 6 * MB},
    {0x4B, 8 * MB}, {0x4C, 12 * MB}, {0x4D, 16 * MB}, {0x4E, 6 * MB},
    {0x4F, 0}, {0x50, 0}, {0x51, 0}, {0x52, 0}, {0x55, 0}, {0x56, 0},
    {0x57, 0}, {0x59, 0}, {0x5A, 0}, {0x5B, 0}, {0x5C, 0}, {0x5D, 0},
    {0x60, 16 * KB}, {0x61, 0}, {0x63, 0}, {0x64, 0}, {0x66, 8 * KB},
    {0x67, 16 * KB}, {0x68, 32 * KB}, {0x6A, 0}, {0x6B, 0}, {0x6C, 0},
    {0x6D, 0}, {0x70, 0}, {0x71, 0}, {0x72, 0}, {0x73, 0}, {0x76, 0},
    {0x78, 1 * MB}, {0x79, 128 * KB}, {0x7A, 256 * KB}, {0x7B, 512 * KB},
    {0x7C, 1 * MB}, {0x7D, 2 * MB}, {0x7F, 512 * KB}, {0x80, 512 * KB},
    {0x82, 256 * KB, 32}, {0x83, 512 * KB, 32}, {0x84, 1 * MB, 32}, {0x85, 2 * MB, 32},
    {0x86, 512 * KB}, {0x87, 1 * MB}, {0xA0, 0}, {0xB0, 0}, {0xB1, 0},
    {0xB2, 0}, {0xB3, 0}, {0xB4, 0}, {0xB5, 0}, {0xB6, 0}, {0xBA, 0},
    {0xC0, 0}, {0xC1, 0}, {0xC2, 0}, {0xC3, 0}, {0xC4, 0}, {0xCA, 0},
    {0xD0, 512 * KB}, {0xD1, 1 * MB}, {0xD2, 2 * MB}, {0xD6, 1 * MB},
    {0xD7, 2 * MB}, {0xD8, 4 * MB}, {0xDC, 1536 * KB}, {0xDD, 3 * MB},
    {0xDE, 6 * MB}, {0xE2, 2 * MB}, {0xE3, 4 * MB}, {0xE4, 8 * MB},
    {0xEA, 12 * MB}, {0xEB, 18 * MB}, {0xEC, 24 * MB}, {0xF0, 0}, {0xF1, 0},
};
// clang-format on

// Walks a deterministic cache leaf (4, or 0x8000001D on other vendors'
// processors, which describe their caches the same way) with sub-leaves 0 to
// 31, stopping at the first of type 0 and passing over instruction caches;
// the largest cache and its line size win.
void WalkCacheLeaf(const CpuProbe& cpu, uint32_t leaf, uint64_t* best, int32_t* bestLine) {
  for (uint32_t sub = 0; sub < 32; ++sub) {
    const CpuidRegs r = cpu.Cpuid(leaf, sub);
    const uint32_t type = r.eax & 0x1F;
    if (type == 0) break;
    if (type == 2) continue;  // instruction cache
    const uint64_t ways = (r.ebx >> 22) + 1;
    const uint64_t partitions = ((r.ebx >> 12) & 0x3FF) + 1;
    const uint64_t lineSize = (r.ebx & 0xFFF) + 1;
    const uint64_t sets = uint64_t{r.ecx} + 1;
    const uint64_t bytes = ways * partitions * lineSize * sets;
    if (bytes > *best) {
      *best = bytes;
      *bestLine = static_cast<int32_t>(lineSize);
    }
  }
}

int64_t g_streamingCache = -1;  // bytes; -1 until asked

const Leaf2Entry* FindLeaf2(uint8_t descriptor) {
  for (const Leaf2Entry& e : kLeaf2)
    if (e.descriptor == descriptor) return &e;
  return nullptr;
}

}  // namespace

const CpuProbe& HostCpu() {
  static const HardwareCpu cpu;
  return cpu;
}

uint64_t DetectFeatures(const CpuProbe& cpu) {
  const CpuidRegs l0 = cpu.Cpuid(0, 0);
  const CpuidRegs lx = cpu.Cpuid(0x80000000u, 0);
  const CpuidRegs l1 = cpu.Cpuid(1, 0);
  uint64_t m = 0;

  if (Bit(l1.edx, 23)) m |= PXL_CPU_MMX;
  if (Bit(l1.edx, 25)) m |= PXL_CPU_SSE;
  if (Bit(l1.edx, 26)) m |= PXL_CPU_SSE2;
  if (Bit(l1.ecx, 0)) m |= PXL_CPU_SSE3;
  if (Bit(l1.ecx, 9)) m |= PXL_CPU_SSSE3;
  if (Bit(l1.ecx, 22)) m |= PXL_CPU_MOVBE;
  if (Bit(l1.ecx, 19)) m |= PXL_CPU_SSE41;
  if (Bit(l1.ecx, 20)) m |= PXL_CPU_SSE42;
  if (Bit(l1.ecx, 28)) m |= PXL_CPU_AVX;
  if (Bit(l1.ecx, 25)) m |= PXL_CPU_AES;
  if (Bit(l1.ecx, 1)) m |= PXL_CPU_CLMUL;
  if (Bit(l1.ecx, 30)) m |= PXL_CPU_RDRAND;
  if (Bit(l1.ecx, 29)) m |= PXL_CPU_F16C;
  // XCR0 may be read only when the OS has enabled XSAVE (leaf 1 ECX bit 27).
  if (Bit(l1.ecx, 27) && Bit(l1.ecx, 28)) {
    if ((cpu.Xcr0() & 0x6) == 0x6) m |= PXL_CPU_AVX_OS;
  }

  if (l0.eax >= 7) {
    const CpuidRegs l7 = cpu.Cpuid(7, 0);
    if (Bit(l1.ecx, 12) && Bit(l7.ebx, 5) && Bit(l7.ebx, 3) && Bit(l7.ebx, 8)) m |= PXL_CPU_AVX2;
    if (Bit(l7.ebx, 19)) m |= PXL_CPU_ADX;
    if (Bit(l7.ebx, 18)) m |= PXL_CPU_RDSEED;
    if (Bit(l7.ebx, 29)) m |= PXL_CPU_SHA;
    if (Bit(l7.ebx, 16)) m |= PXL_CPU_AVX512F;
    if (Bit(l7.ebx, 28)) m |= PXL_CPU_AVX512CD;
    if (Bit(l7.ebx, 27)) m |= PXL_CPU_AVX512ER;
    if (Bit(l7.ebx, 26)) m |= PXL_CPU_AVX512PF;
    if (Bit(l7.ebx, 30)) m |= PXL_CPU_AVX512BW;
    if (Bit(l7.ebx, 17)) m |= PXL_CPU_AVX512DQ;
    if (Bit(l7.ebx, 31)) m |= PXL_CPU_AVX512VL;
    if (Bit(l7.ecx, 1)) m |= PXL_CPU_AVX512VBMI;
    if (Bit(l7.ebx, 14)) m |= PXL_CPU_MPX;
    if (Bit(l7.edx, 3)) m |= PXL_CPU_AVX5124FMAPS;
    if (Bit(l7.edx, 2)) m |= PXL_CPU_AVX5124VNNIW;
    if (Bit(l7.ebx, 21)) m |= PXL_CPU_AVX512IFMA;
    if (Bit(l7.ecx, 14)) m |= PXL_CPU_AVX512VPOPCNT;
    if (Bit(l7.ecx, 12)) m |= PXL_CPU_AVX512BITALG;
    if (Bit(l1.ecx, 27) && (cpu.Xcr0() & 0xE0) == 0xE0) m |= PXL_CPU_AVX512_OS;
  }
  if (lx.eax >= 0x80000001u) {
    if (Bit(cpu.Cpuid(0x80000001u, 0).ecx, 8)) m |= PXL_CPU_PREFETCHW;
  }
  if ((l1.eax & 0xFF0) == 0xB10) m |= PXL_CPU_MODEL_TEST;
  return m;
}

bool IsGenuineIntel(const CpuProbe& cpu) {
  const CpuidRegs r = cpu.Cpuid(0, 0);
  // "Genu", "ineI", "ntel" as little-endian words.
  return r.ebx == 0x756E6547u && r.edx == 0x49656E69u && r.ecx == 0x6C65746Eu;
}

LevelChoice SelectLevel(uint64_t mask) {
  PxlStatus osStatus = pxlStsNoErr;
  if ((mask & 0x8100) && !(mask & PXL_CPU_AVX_OS)) {
    mask &= ~uint64_t{0x8100};
    osStatus = pxlStsFeatureNotSupported;
  }
  constexpr uint64_t kAvx512Family = 0xC6FF00000ULL;
  if ((mask & kAvx512Family) && !(mask & PXL_CPU_AVX512_OS)) {
    mask &= ~kAvx512Family;
    osStatus = pxlStsFeatureNotSupported;
  }

  struct Row {
    uint64_t condition;  // all of these bits
    int level;
    uint64_t required;
  };
  // clang-format off
  static constexpr Row kRows[] = {
      {0x7300000, 5, 0x73081DF}, {0xF00000, 4, 0xF081DF}, {0x8000, 4, 0x81DF},
      {0x100, 3, 0x1DF},         {0x80, 2, 0xDF},         {0x40, 1, 0x5F},
      {0x20, 1, 0x3F},           {0x10, 1, 0x1F},         {0x8, 0, 0xF},
      {0x4, 0, 0x7},
  };
  // clang-format on

  LevelChoice c{0, mask | 0x1, pxlStsNotSupportedCpu};
  if ((mask & 0x2) == 0x2) c.enabledMask = mask | 0x3;  // SSE without SSE2
  for (const Row& row : kRows) {
    if ((mask & row.condition) == row.condition) {
      c.level = row.level;
      c.enabledMask = mask | row.required;
      c.status = (mask & row.required) == row.required ? pxlStsNoErr : pxlStsFeaturesCombination;
      break;
    }
  }
  if (osStatus != pxlStsNoErr) c.status = osStatus;
  return c;
}

LevelChoice StartUp(uint64_t mask, bool genuineIntel) {
  LevelChoice c = SelectLevel(mask);
  if (!genuineIntel) c.status = pxlStsNonIntelCpu;
  return c;
}

int32_t Leaf2DescriptorSize(uint8_t descriptor) {
  const Leaf2Entry* e = FindLeaf2(descriptor);
  return e ? e->size : -1;
}

PxlStatus QueryLargestCache(const CpuProbe& cpu, int32_t* size, int32_t* line) {
  const uint32_t maxLeaf = cpu.Cpuid(0, 0).eax;
  if (maxLeaf < 2 || !IsGenuineIntel(cpu)) return pxlStsNotSupportedCpu;

  uint64_t best = 0;
  int32_t bestLine = 0;
  if (maxLeaf >= 4) {
    WalkCacheLeaf(cpu, 4, &best, &bestLine);
  } else {
    const CpuidRegs r = cpu.Cpuid(2, 0);
    const uint32_t regs[4] = {r.eax & 0xFFFFFF00u, r.ebx, r.ecx, r.edx};  // AL is a count
    for (uint32_t reg : regs) {
      if (reg & 0x80000000u) continue;  // holds no descriptors
      for (int b = 0; b < 4; ++b) {
        const uint8_t d = static_cast<uint8_t>(reg >> (8 * b));
        if (d == 0) continue;
        const Leaf2Entry* e = FindLeaf2(d);
        if (!e) {
          *size = 0;
          *line = 0;
          return pxlStsUnknownCacheSize;
        }
        if (static_cast<uint64_t>(e->size) > best) {
          best = static_cast<uint64_t>(e->size);
          bestLine = e->line;
        }
      }
    }
  }
  if (best == 0) {
    *size = 0;
    *line = 0;
    return pxlStsUnknownCacheSize;
  }
  *size = best > 0x7FFFFFFFu ? 0x7FFFFFFF : static_cast<int32_t>(best);
  *line = bestLine;
  return pxlStsNoErr;
}

PxlStatus LargestCacheSize(int32_t* size) {
  if (!size) return pxlStsNullPtrErr;
  PxlStatus st = Load(&g_cacheStatus, __ATOMIC_ACQUIRE);
  if (st == 1) {
    int32_t s = Load(&g_cacheSize), line = Load(&g_cacheLine);
    st = QueryLargestCache(HostCpu(), &s, &line);
    Store(&g_cacheSize, s);
    Store(&g_cacheLine, line);
    Store(&g_cacheStatus, st, __ATOMIC_RELEASE);
  }
  if (st != pxlStsNotSupportedCpu) *size = Load(&g_cacheSize);
  return st;
}

int64_t StreamingCacheBytes(const CpuProbe& cpu) {
  int32_t size = 0, line = 0;
  if (QueryLargestCache(cpu, &size, &line) == pxlStsNoErr) return size;
  const CpuidRegs l0 = cpu.Cpuid(0, 0);
  // "AuthenticAMD", with the cache topology leaf (0x80000001 ECX bit 22).
  const bool amd = l0.ebx == 0x68747541u && l0.edx == 0x69746E65u && l0.ecx == 0x444D4163u;
  if (!amd || cpu.Cpuid(0x80000000u, 0).eax < 0x8000001Du) return 0;
  if (!Bit(cpu.Cpuid(0x80000001u, 0).ecx, 22)) return 0;
  uint64_t best = 0;
  int32_t bestLine = 0;
  WalkCacheLeaf(cpu, 0x8000001Du, &best, &bestLine);
  return static_cast<int64_t>(best);
}

bool StreamOutput(int64_t bytesMoved) {
  int64_t size = Load(&g_streamingCache, __ATOMIC_ACQUIRE);
  if (size < 0) {
    size = StreamingCacheBytes(HostCpu());
    Store(&g_streamingCache, size, __ATOMIC_RELEASE);
  }
  return size > 0 && bytesMoved > size;
}

bool StreamLargeFill(int64_t pixels) {
  if (pixels <= 0x80000) return false;
  int32_t size = 0;
  return LargestCacheSize(&size) == pxlStsNoErr && size <= pixels;
}

uint64_t EnabledFeatures() { return Load(&g_enabledMask); }

void LazyInit() { (void)Init(); }

namespace test {

int MaxSupportedLevel() { return SelectLevel(HostFeatures()).level; }

void SetStreamingCacheBytes(int64_t bytes) { Store(&g_streamingCache, bytes, __ATOMIC_RELEASE); }

void SetLargestCacheAnswer(PxlStatus status, int32_t size) {
  Store(&g_cacheSize, size);
  Store(&g_cacheLine, int32_t{64});
  Store(&g_cacheStatus, status, __ATOMIC_RELEASE);
}

int32_t ForceLevel(int32_t level) {
  const int32_t previous = JumpIndex();
  Store(&g_jumpIndex, level);
  return previous;
}

}  // namespace test
}  // namespace pxl

using namespace pxl;

extern "C" {

PxlStatus Init(void) {
  const LevelChoice c = StartUp(HostFeatures(), IsGenuineIntel(HostCpu()));
  Store(&g_enabledMask, c.enabledMask);
  Store(&g_jumpIndex, static_cast<int32_t>(c.level));
  return c.status;
}

PxlStatus GetCpuFeatures(Pxl64u* pFeatureMask) {
  if (!pFeatureMask) return pxlStsNullPtrErr;
  *pFeatureMask = HostFeatures();
  return pxlStsNoErr;
}

PxlStatus SetNumThreads(int numThreads) {
  (void)numThreads;
  return pxlStsNoOperation;
}

PxlStatus GetNumThreads(int* pNumThreads) {
  if (!pNumThreads) return pxlStsNullPtrErr;
  *pNumThreads = 1;
  return pxlStsNoOperation;
}

}  // extern "C"
