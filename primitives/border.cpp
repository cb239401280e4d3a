// Exports of the border copies: call the kernel with the arguments as given (no region).
#include "core/dispatch.h"
#include "pxl/pxl_primitives.h"

#define PXL_ROWS_EXPORTS
#include "core/member_rows.h"

extern "C" {
#include "primitives/border.def"
}
