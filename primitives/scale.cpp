// Exports of the Scale and ScaleC families: apply the region to each image,
// call the kernel.
#include "core/dispatch.h"
#include "core/region.h"
#include "pxl/pxl_primitives.h"

#define PXL_ROWS_EXPORTS
#include "core/member_rows.h"

extern "C" {
#include "primitives/scale.def"
#include "primitives/scale_c.def"
}
