// Kernel tables, generated from the registry and the per-unit level map.
#include "core/dispatch.h"

#include "core/cpu.h"
#include "pxl_units.h"

#define PXL_UNPACK(...) __VA_ARGS__
#define PXL_LEVEL_LIST(map) PXL_UNPACK map
#define PXL_ENTRIES(name, map) PXL_ENTRIES_(name, PXL_UNPACK map)
#define PXL_ENTRIES_(name, ...) PXL_ENTRIES6(name, __VA_ARGS__)
#define PXL_ENTRIES6(n, a, b, c, d, e, f)                                       \
  &::pxl::PXL_CAT(l, a)::n, &::pxl::PXL_CAT(l, b)::n, &::pxl::PXL_CAT(l, c)::n, \
      &::pxl::PXL_CAT(l, d)::n, &::pxl::PXL_CAT(l, e)::n, &::pxl::PXL_CAT(l, f)::n

namespace pxl {
namespace k {

// The lazy entry starts the library up and forwards the interrupted call.
#define PXL_KERNEL(unit, ret, name, params, args)                \
  static ret name##_lazy params {                                \
    LazyInit();                                                  \
    return (name##_table + 1)[JumpIndex()] args;                 \
  }                                                              \
  const name##_fn name##_table[kLevelCount + 1] = {&name##_lazy, \
                                                   PXL_ENTRIES(name, PXL_UNIT_##unit)};
#include "core/registry.def"
#undef PXL_KERNEL

}  // namespace k

#define PXL_KERNEL(unit, ret, name, params, args) {#name, #unit, {PXL_LEVEL_LIST(PXL_UNIT_##unit)}},
const KernelInfo g_kernelInfo[] = {
#include "core/registry.def"
};
#undef PXL_KERNEL
const int g_kernelCount = sizeof(g_kernelInfo) / sizeof(g_kernelInfo[0]);

}  // namespace pxl
