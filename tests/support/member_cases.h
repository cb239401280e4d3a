// Row macros that turn a family table into test cases: each member becomes
// {"Name", runner}, where the runner is PXL_TEST_<Shape>(shape arguments)
// applied to the export, as the including test defines it.  Include this,
// then the table, inside an array of pxltest::MemberCase.
#include "core/family.h"

#undef PXL_FAMILY
#undef PXL_DOC
#undef PXL_MEMBER
#undef PXL_DIRECT
#define PXL_FAMILY(family)
#define PXL_DOC(title, text)
#define PXL_MEMBER(unit, name, shape, a) {#name, [] { PXL_TEST_##shape a(&::name); }},
#define PXL_DIRECT(name, shape, a) {#name, [] { PXL_TEST_##shape a(&::name); }},
