// Processor detection, level selection and the largest-cache query.
//
// Detection and selection are pure functions of what the processor reports,
// so that every rule can be checked against synthetic processors; Init and
// the cache query apply them to the real processor and cache the answers.
#ifndef PXL_CORE_CPU_H
#define PXL_CORE_CPU_H

#include <stdint.h>

#include "pxl/pxl_types.h"

namespace pxl {

// Status of the cache query when the processor reports no usable size.  The
// query is internal; no export returns this code.
constexpr PxlStatus pxlStsUnknownCacheSize = -3;

struct CpuidRegs {
  uint32_t eax, ebx, ecx, edx;
};

// What detection reads: cpuid leaves and the XCR0 register.
class CpuProbe {
 public:
  virtual ~CpuProbe() = default;
  virtual CpuidRegs Cpuid(uint32_t leaf, uint32_t subleaf) const = 0;
  virtual uint64_t Xcr0() const = 0;
};

// The processor this code runs on.
const CpuProbe& HostCpu();

// The feature mask (PXL_CPU_* bits) of a processor.
uint64_t DetectFeatures(const CpuProbe& cpu);

// True when the vendor string of leaf 0 is "GenuineIntel".
bool IsGenuineIntel(const CpuProbe& cpu);

struct LevelChoice {
  int level;             // jump index, 0..5
  uint64_t enabledMask;  // detected mask (after the OS-state corrections) | required set
  PxlStatus status;      // pxlStsNoErr, FeatureNotSupported, NotSupportedCpu or FeaturesCombination
};

// Chooses the level for a detected mask.
LevelChoice SelectLevel(uint64_t mask);

// What Init decides for a detected mask and vendor, without storing it: the
// selection, with pxlStsNonIntelCpu replacing its status for another vendor.
LevelChoice StartUp(uint64_t mask, bool genuineIntel);

// Largest data or unified cache of a processor, in bytes, with its line size.
// Leaves *size and *line alone when it returns pxlStsNotSupportedCpu.
PxlStatus QueryLargestCache(const CpuProbe& cpu, int32_t* size, int32_t* line);

// Size in bytes of a leaf-2 cache descriptor: > 0 a data or unified cache,
// 0 a descriptor that names no such cache, -1 an unknown descriptor.
int32_t Leaf2DescriptorSize(uint8_t descriptor);

// Cached query on the host processor; pxlStsNullPtrErr on a null pointer.
PxlStatus LargestCacheSize(int32_t* size);

// The cache size that decides when a large output is written with
// non-temporal stores: the largest-cache answer where the processor gives
// it, else the largest cache of extended leaf 0x8000001D on processors of
// the vendor that describes its caches there; 0 when unknown.
int64_t StreamingCacheBytes(const CpuProbe& cpu);

// Start-up on the first kernel call; the same as Init with its status dropped.
void LazyInit();

// The enabled feature mask stored by the last Init (7 before any).
uint64_t EnabledFeatures();

namespace test {
// The highest level this machine can run.
int MaxSupportedLevel();
// Replaces the cached answer of the largest-cache query; status 1 makes the
// next query ask the processor again.
void SetLargestCacheAnswer(PxlStatus status, int32_t size);
// Replaces the cached streaming cache size; -1 makes the next decision ask
// the processor again.
void SetStreamingCacheBytes(int64_t bytes);
// Stores a level in the jump index, which every stub then uses; returns the
// previous value.  -1 sends the next kernel call through the lazy start-up.
int32_t ForceLevel(int32_t level);
}  // namespace test

}  // namespace pxl

#endif
