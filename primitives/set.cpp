// Exports of the Set family: apply the region to the image, call the kernel.
#include "core/dispatch.h"
#include "core/region.h"
#include "pxl/pxl_primitives.h"

#define PXL_ROWS_EXPORTS
#include "core/member_rows.h"

extern "C" {
#include "primitives/set.def"
}
