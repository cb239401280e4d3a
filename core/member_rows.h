// The row macros of the family tables (core/family.h), one set a purpose.
// Define exactly one of these before including this file and the tables:
//
//   PXL_ROWS_KERNELS  kernel definitions, inside PXL_LEVEL_BEGIN / PXL_LEVEL_END of a unit;
//                     rows of other units are skipped
//   PXL_ROWS_EXPORTS  export definitions, inside extern "C"
//
// core/registry.def and tools/gen_header.cpp define their own.  No include
// guard: a file may switch purpose after #undef-ing the rows.
#include "core/family.h"

#undef PXL_FAMILY
#undef PXL_DOC
#undef PXL_MEMBER
#undef PXL_DIRECT

#define PXL_FAMILY(family)
#define PXL_DOC(title, text)

#if defined(PXL_ROWS_KERNELS)
// A unit defines the kernels of its own rows only; it says which unit it is
// with `#define PXL_THIS_UNIT_<unit> PXL_PROBE`.
#define PXL_PROBE ~, 1
#define PXL_PROBE_N_(x, n, ...) n
#define PXL_PROBE_N(...) PXL_PROBE_N_(__VA_ARGS__, 0, )
#define PXL_MEMBER(unit, name, shape, a) \
  PXL_CAT(PXL_MEMBER_IF_, PXL_PROBE_N(PXL_CAT(PXL_THIS_UNIT_, unit)))(name, shape, a)
#define PXL_MEMBER_IF_1(name, shape, a) \
  PxlStatus name PXL_KSIG_##shape a { return PXL_BODY_##shape a; }
#define PXL_MEMBER_IF_0(name, shape, a)
#define PXL_DIRECT(name, shape, a)
#elif defined(PXL_ROWS_EXPORTS)
#define PXL_MEMBER(unit, name, shape, a) \
  PxlStatus name PXL_SIG_##shape a { return ::pxl::k::name PXL_CALL_##shape a; }
#define PXL_DIRECT(name, shape, a) \
  PxlStatus name PXL_SIG_##shape a { PXL_DBODY_##shape a }
#else
#error "define PXL_ROWS_KERNELS or PXL_ROWS_EXPORTS"
#endif
