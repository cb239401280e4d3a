// Shapes of the curve, transfer and tone-curve exports (core/family.h); the
// rows are in curve.def, transfer.def and tonemap.def.  All are direct
// exports: they apply the region, run their loop and return pxlStsNoErr,
// checking nothing.
#ifndef PXL_COLOUR_CURVE_H
#define PXL_COLOUR_CURVE_H

#include "core/family.h"

#define PXL_CURVE_TABLE const Pxl32f *pTable, int levels, bool hasExtraEntry, bool warmTable
#define PXL_CURVE_TABLE_ARGS pTable, levels, hasExtraEntry, warmTable

// Curve(T, L): Curve_<T>_<L>R with L one of C1, C3, C4: every element.
#define PXL_SIG_Curve(T, L) (PXL_SRC(T), PXL_DST(T), PxliRect roi, PXL_CURVE_TABLE)
#define PXL_DBODY_Curve(T, L)                                                                   \
  ::pxl::colour::Elements(PXL_AT(pSrc, srcStep, L), srcStep, PXL_AT(pDst, dstStep, L), dstStep, \
                          ::pxl::colour::Times(roi.width, PXL_CH_##L), roi.height,              \
                          PXL_CURVE_TABLE_ARGS);                                                \
  return pxlStsNoErr;

// CurvePixels(T, S, D, A): the first three elements of each pixel from
// layout S to layout D; A = 1 copies the source's fourth element.
#define PXL_SIG_CurvePixels(T, S, D, A) (PXL_SRC(T), PXL_DST(T), PxliRect roi, PXL_CURVE_TABLE)
#define PXL_DBODY_CurvePixels(T, S, D, A)                                                        \
  ::pxl::colour::Pixels(PXL_AT(pSrc, srcStep, S), srcStep, PXL_AT(pDst, dstStep, D), dstStep,    \
                        roi.width, roi.height, PXL_CURVE_TABLE_ARGS, PXL_CH_##S, PXL_CH_##D, A); \
  return pxlStsNoErr;

// CurveInPlace(T, L): Curve_<T>_<L>IR; AC4 leaves the fourth element.
#define PXL_SIG_CurveInPlace(T, L) (PXL_SRCDST(T), PxliRect roi, PXL_CURVE_TABLE)
#define PXL_DBODY_CurveInPlace(T, L)                                                 \
  Pxl##T* const p = PXL_AT(pSrcDst, srcDstStep, L);                                  \
  if (PXL_CH_##L == PXL_NV_##L)                                                      \
    ::pxl::colour::Elements(p, srcDstStep, p, srcDstStep,                            \
                            ::pxl::colour::Times(roi.width, PXL_CH_##L), roi.height, \
                            PXL_CURVE_TABLE_ARGS);                                   \
  else                                                                               \
    ::pxl::colour::Pixels(p, srcDstStep, p, srcDstStep, roi.width, roi.height,       \
                          PXL_CURVE_TABLE_ARGS, 4, 4, 0);                            \
  return pxlStsNoErr;

// The transfer tables of each element type and direction, with their levels.
#define PXL_TRANSFER_32f_ToLinear ::pxl::colour::kSrgbToLinear256, 256
#define PXL_TRANSFER_32f_ToSrgb ::pxl::colour::kLinearToSrgb256, 256
#define PXL_TRANSFER_16u_ToLinear ::pxl::colour::kSrgbToLinear212, 212
#define PXL_TRANSFER_16u_ToSrgb ::pxl::colour::kLinearToSrgb212, 212

// TransferRow(T, L, Dir): C1, C3, C4 as one row of width x channels
// elements through Curve_<T>_C1R: x and width multiplied by the channels.
#define PXL_SIG_TransferRow(T, L, Dir) (PXL_SRC(T), PXL_DST(T), PxliRect roi)
#define PXL_DBODY_TransferRow(T, L, Dir)                                                        \
  return Curve_##T##_C1R(pSrc, srcStep, pDst, dstStep, ::pxl::colour::Widened(roi, PXL_CH_##L), \
                         PXL_TRANSFER_##T##_##Dir, true, true);
#define PXL_SIG_TransferRowInPlace(T, L, Dir) (PXL_SRCDST(T), PxliRect roi)
#define PXL_DBODY_TransferRowInPlace(T, L, Dir)                                         \
  return Curve_##T##_C1IR(pSrcDst, srcDstStep, ::pxl::colour::Widened(roi, PXL_CH_##L), \
                          PXL_TRANSFER_##T##_##Dir, true, true);

// TransferSame(T, F, Dir): the Curve member of the same form F (AC4R,
// C3AC4R, AC4C3R) with the transfer table.
#define PXL_SIG_TransferSame(T, F, Dir) (PXL_SRC(T), PXL_DST(T), PxliRect roi)
#define PXL_DBODY_TransferSame(T, F, Dir) \
  return Curve_##T##_##F(pSrc, srcStep, pDst, dstStep, roi, PXL_TRANSFER_##T##_##Dir, true, true);
#define PXL_SIG_TransferSameInPlace(T, F, Dir) (PXL_SRCDST(T), PxliRect roi)
#define PXL_DBODY_TransferSameInPlace(T, F, Dir) \
  return Curve_##T##_##F(pSrcDst, srcDstStep, roi, PXL_TRANSFER_##T##_##Dir, true, true);

// Tonemap(L): Uncharted2Tonemap_32f_<L>R and _<L>IR, on the four-float runner.
#define PXL_TONEMAP_LAYOUT_C1 1
#define PXL_TONEMAP_LAYOUT_C3 3
#define PXL_TONEMAP_LAYOUT_C4 4
#define PXL_TONEMAP_LAYOUT_AC4 0
#define PXL_SIG_Tonemap(L) (PXL_SRC(32f), PXL_DST(32f), PxliRect roi)
#define PXL_DBODY_Tonemap(L)                                                                     \
  ::pxl::k::uncharted2Rows(PXL_AT(pSrc, srcStep, L), srcStep, PXL_AT(pDst, dstStep, L), dstStep, \
                           roi.width, roi.height, PXL_TONEMAP_LAYOUT_##L);                       \
  return pxlStsNoErr;
#define PXL_SIG_TonemapInPlace(L) (PXL_SRCDST(32f), PxliRect roi)
#define PXL_DBODY_TonemapInPlace(L)                                             \
  Pxl32f* const p = PXL_AT(pSrcDst, srcDstStep, L);                             \
  ::pxl::k::uncharted2Rows(p, srcDstStep, p, srcDstStep, roi.width, roi.height, \
                           PXL_TONEMAP_LAYOUT_##L);                             \
  return pxlStsNoErr;

#endif
