// Processor-level dispatch of kernels.
//
// Every kernel exists once per processor level, in the namespace pxl::l0 ..
// pxl::l5, and is called through the stub pxl::k::<name>.  The stub reads the
// process-wide jump index (-1 before start-up, then 0..5) and calls entry
// index + 1 of the kernel's table, whose entry 0 is the lazy start-up: with
// the index still -1 the first call runs Init and then the kernel, with its
// arguments untouched.  A call therefore costs one load and one indirect call.
#ifndef PXL_CORE_DISPATCH_H
#define PXL_CORE_DISPATCH_H

#include <stdint.h>

#include "core/family.h"
#include "pxl/pxl_types.h"

namespace pxl {

// -1 until Init (or the first kernel call) stores the selected level.
extern int32_t g_jumpIndex;

inline int32_t JumpIndex() { return __atomic_load_n(&g_jumpIndex, __ATOMIC_RELAXED); }

constexpr int kLevelCount = 6;

// Per-level declarations of every kernel.
#define PXL_KERNEL(unit, ret, name, params, args) ret name params;
namespace l0 {
#include "core/registry.def"
}
namespace l1 {
#include "core/registry.def"
}
namespace l2 {
#include "core/registry.def"
}
namespace l3 {
#include "core/registry.def"
}
namespace l4 {
#include "core/registry.def"
}
namespace l5 {
#include "core/registry.def"
}
#undef PXL_KERNEL

// Tables and stubs.
namespace k {
#define PXL_KERNEL(unit, ret, name, params, args)       \
  typedef ret(*name##_fn) params;                       \
  extern const name##_fn name##_table[kLevelCount + 1]; \
  inline ret name params { return (name##_table + 1)[JumpIndex()] args; }
#include "core/registry.def"
#undef PXL_KERNEL
}  // namespace k

// One row of the kernel listing: the kernel, its unit, and the level whose
// version runs at each jump index.
struct KernelInfo {
  const char* name;
  const char* unit;
  int versionAtLevel[kLevelCount];
};
extern const KernelInfo g_kernelInfo[];
extern const int g_kernelCount;

}  // namespace pxl

#endif
