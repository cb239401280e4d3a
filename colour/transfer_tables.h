// The transfer tables of the sRGB conversions (colour/transfer_tables.inc,
// written by tools/gen_transfer_tables.cpp): the function at even steps,
// then the extra entry 1.0.
#ifndef PXL_COLOUR_TRANSFER_TABLES_H
#define PXL_COLOUR_TRANSFER_TABLES_H

namespace pxl {
namespace colour {
extern const float kSrgbToLinear256[257];
extern const float kLinearToSrgb256[257];
extern const float kSrgbToLinear212[213];
extern const float kLinearToSrgb212[213];
}  // namespace colour
}  // namespace pxl

#endif
