// Exports of the SwapChannels and Swizzle families.
#include "core/dispatch.h"
#include "core/region.h"
#include "pxl/pxl_primitives.h"

#define PXL_ROWS_EXPORTS
#include "core/member_rows.h"

extern "C" {
#include "primitives/swap_channels.def"
#include "primitives/swizzle.def"
}
