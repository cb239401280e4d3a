// Format codes of Malloc and their pixel sizes in bytes.  A code is
// layout * 7 + type + 1 over the layouts C1, C2, C3, C4, AC4 and the types
// 8u, 16u, 16s, 32s, 32f, 32sc, 32fc.
#ifndef PXL_CORE_IMAGE_FORMATS_H
#define PXL_CORE_IMAGE_FORMATS_H

// F(code, bytes per pixel) for every code 1..35, a layout a line.
// clang-format off
#define PXL_IMAGE_FORMATS(F)                                                    \
  F(1, 1) F(2, 2) F(3, 2) F(4, 4) F(5, 4) F(6, 8) F(7, 8)                       \
  F(8, 2) F(9, 4) F(10, 4) F(11, 8) F(12, 8) F(13, 16) F(14, 16)                \
  F(15, 3) F(16, 6) F(17, 6) F(18, 12) F(19, 12) F(20, 24) F(21, 24)            \
  F(22, 4) F(23, 8) F(24, 8) F(25, 16) F(26, 16) F(27, 32) F(28, 32)            \
  F(29, 4) F(30, 8) F(31, 8) F(32, 16) F(33, 16) F(34, 32) F(35, 32)
// clang-format on

#endif
