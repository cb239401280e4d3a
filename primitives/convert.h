// Shapes of the Convert family (core/family.h); the rows are in convert.def.
//
// Every kernel checks its pointers (null: pxlStsNullPtrErr), then the size
// (width or height below 1: pxlStsSizeErr), then the rounding mode
// (pxlStsRoundModeNotSupportedErr), before it writes anything; steps are not
// checked.
#ifndef PXL_PRIMITIVES_CONVERT_H
#define PXL_PRIMITIVES_CONVERT_H

#include "core/family.h"

// Convert(S, D, L): Convert_<S><D>_<L>R, no parameters.
#define PXL_SIG_Convert(S, D, L) (PXL_SRC(S), PXL_DST(D), PxliRect roi)
#define PXL_KSIG_Convert(S, D, L) (PXL_SRC(S), PXL_DST(D), PXL_KSIZE)
#define PXL_KARGS_Convert (pSrc, srcStep, pDst, dstStep, width, height)
#define PXL_CALL_Convert(S, D, L) \
  (PXL_AT(pSrc, srcStep, L), srcStep, PXL_AT(pDst, dstStep, L), dstStep, PXL_ROI_SIZE)
#define PXL_BODY_Convert(S, D, L) \
  ConvertPlain<Pxl##S, Pxl##D, PXL_CH_##L, PXL_NV_##L>(pSrc, srcStep, pDst, dstStep, width, height)

// ConvertSfs(S, D, L): Convert_<S><D>_<L>RSfs, a rounding mode and a scale
// factor.  From 32f and 64f: round(x * 2^-scaleFactor); from 32s: the
// integer divided (multiplied) by a power of two.
#define PXL_SIG_ConvertSfs(S, D, L) \
  (PXL_SRC(S), PXL_DST(D), PxliRect roi, PxlRoundMode rndMode, int scaleFactor)
#define PXL_KSIG_ConvertSfs(S, D, L) \
  (PXL_SRC(S), PXL_DST(D), PXL_KSIZE, int rndMode, int scaleFactor)
#define PXL_KARGS_ConvertSfs (pSrc, srcStep, pDst, dstStep, width, height, rndMode, scaleFactor)
#define PXL_CALL_ConvertSfs(S, D, L)                                                            \
  (PXL_AT(pSrc, srcStep, L), srcStep, PXL_AT(pDst, dstStep, L), dstStep, PXL_ROI_SIZE, rndMode, \
   scaleFactor)
#define PXL_BODY_ConvertSfs(S, D, L)                                                         \
  ConvertScaled<Pxl##S, Pxl##D, PXL_CH_##L, PXL_NV_##L>(pSrc, srcStep, pDst, dstStep, width, \
                                                        height, rndMode, scaleFactor)

// ConvertRs: Convert_16s16u_C1Rs, negative elements to 0.
#define PXL_SIG_ConvertRs() (PXL_SRC(16s), PXL_DST(16u), PxliRect roi)
#define PXL_KSIG_ConvertRs() (PXL_SRC(16s), PXL_DST(16u), PXL_KSIZE)
#define PXL_KARGS_ConvertRs (pSrc, srcStep, pDst, dstStep, width, height)
#define PXL_CALL_ConvertRs() \
  (PXL_AT(pSrc, srcStep, C1), srcStep, PXL_AT(pDst, dstStep, C1), dstStep, PXL_ROI_SIZE)
#define PXL_BODY_ConvertRs() \
  ConvertPlain<Pxl16s, Pxl16u, 1, 1>(pSrc, srcStep, pDst, dstStep, width, height)

#endif
