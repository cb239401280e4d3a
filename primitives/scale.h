// Shapes of the Scale and ScaleC families (core/family.h); the rows are in
// scale.def and scale_c.def.
//
// Every kernel checks its pointers (null: pxlStsNullPtrErr), then the size
// (width or height below 1: pxlStsSizeErr), then its parameters, before it
// writes anything; steps are not checked.
#ifndef PXL_PRIMITIVES_SCALE_H
#define PXL_PRIMITIVES_SCALE_H

#include "core/family.h"

// The region's width in elements of a row of one-element pixels: a
// wrapping 32-bit product, as region coordinates are.
#define PXL_WIDE(w, n) static_cast<int>(static_cast<uint32_t>(w) * static_cast<uint32_t>(n))

// ScaleRange(S, D, L): Scale_<S><D>_<L>R between integer types, full range
// onto full range.
#define PXL_SIG_ScaleRange(S, D, L) (PXL_SRC(S), PXL_DST(D), PxliRect roi)
#define PXL_KSIG_ScaleRange(S, D, L) (PXL_SRC(S), PXL_DST(D), PXL_KSIZE)
#define PXL_KARGS_ScaleRange (pSrc, srcStep, pDst, dstStep, width, height)
#define PXL_CALL_ScaleRange(S, D, L) \
  (PXL_AT(pSrc, srcStep, L), srcStep, PXL_AT(pDst, dstStep, L), dstStep, PXL_ROI_SIZE)
#define PXL_BODY_ScaleRange(S, D, L) \
  ScaleRange<Pxl##S, Pxl##D, PXL_CH_##L, PXL_NV_##L>(pSrc, srcStep, pDst, dstStep, width, height)

// ScaleFloat(S, D, L): Scale_<S><D>_<L>R to or from 32f, with the float
// range [vMin, vMax].
#define PXL_SIG_ScaleFloat(S, D, L) (PXL_SRC(S), PXL_DST(D), PxliRect roi, Pxl32f vMin, Pxl32f vMax)
#define PXL_KSIG_ScaleFloat(S, D, L) (PXL_SRC(S), PXL_DST(D), PXL_KSIZE, Pxl32f vMin, Pxl32f vMax)
#define PXL_KARGS_ScaleFloat (pSrc, srcStep, pDst, dstStep, width, height, vMin, vMax)
#define PXL_CALL_ScaleFloat(S, D, L) \
  (PXL_AT(pSrc, srcStep, L), srcStep, PXL_AT(pDst, dstStep, L), dstStep, PXL_ROI_SIZE, vMin, vMax)
#define PXL_BODY_ScaleFloat(S, D, L)                                                              \
  ScaleFloat<Pxl##S, Pxl##D, PXL_CH_##L, PXL_NV_##L>(pSrc, srcStep, pDst, dstStep, width, height, \
                                                     vMin, vMax)

// ScaleFloatRow(S, D, L): the C3 and C4 forms between 16u and 32f, run as
// the C1 form on width x channels elements of the same rows.
#define PXL_SIG_ScaleFloatRow(S, D, L) PXL_SIG_ScaleFloat(S, D, L)
#define PXL_KSIG_ScaleFloatRow(S, D, L) PXL_KSIG_ScaleFloat(S, D, L)
#define PXL_KARGS_ScaleFloatRow PXL_KARGS_ScaleFloat
#define PXL_CALL_ScaleFloatRow(S, D, L)                                  \
  (PXL_AT(pSrc, srcStep, L), srcStep, PXL_AT(pDst, dstStep, L), dstStep, \
   PXL_WIDE(roi.width, PXL_CH_##L), roi.height, vMin, vMax)
#define PXL_BODY_ScaleFloatRow(S, D, L) \
  ScaleFloat<Pxl##S, Pxl##D, 1, 1>(pSrc, srcStep, pDst, dstStep, width, height, vMin, vMax)

// ScaleC(S, D, L): ScaleC_<S><D>_<L>R (S = D for the same-type members,
// named ScaleC_<T>_<L>R), src * mVal + aVal.
#define PXL_SIG_ScaleC(S, D, L) (PXL_SRC(S), Pxl64f mVal, Pxl64f aVal, PXL_DST(D), PxliRect roi)
#define PXL_KSIG_ScaleC(S, D, L) (PXL_SRC(S), Pxl64f mVal, Pxl64f aVal, PXL_DST(D), PXL_KSIZE)
#define PXL_KARGS_ScaleC (pSrc, srcStep, mVal, aVal, pDst, dstStep, width, height)
#define PXL_CALL_ScaleC(S, D, L) \
  (PXL_AT(pSrc, srcStep, L), srcStep, mVal, aVal, PXL_AT(pDst, dstStep, L), dstStep, PXL_ROI_SIZE)
#define PXL_BODY_ScaleC(S, D, L)                                                                   \
  ScaleLinear<Pxl##S, Pxl##D, PXL_CH_##L, PXL_NV_##L>(pSrc, srcStep, pDst, dstStep, width, height, \
                                                      mVal, aVal)

// ScaleCInPlace(T, L): ScaleC_<T>_<L>IR.
#define PXL_SIG_ScaleCInPlace(T, L) (Pxl64f mVal, Pxl64f aVal, PXL_SRCDST(T), PxliRect roi)
#define PXL_KSIG_ScaleCInPlace(T, L) (Pxl64f mVal, Pxl64f aVal, PXL_SRCDST(T), PXL_KSIZE)
#define PXL_KARGS_ScaleCInPlace (mVal, aVal, pSrcDst, srcDstStep, width, height)
#define PXL_CALL_ScaleCInPlace(T, L) \
  (mVal, aVal, PXL_AT(pSrcDst, srcDstStep, L), srcDstStep, PXL_ROI_SIZE)
#define PXL_BODY_ScaleCInPlace(T, L)                                                            \
  ScaleLinear<Pxl##T, Pxl##T, PXL_CH_##L, PXL_NV_##L>(pSrcDst, srcDstStep, pSrcDst, srcDstStep, \
                                                      width, height, mVal, aVal)

#endif
