// Shapes of the Copy family (core/family.h); the rows are in copy.def.
//
// Every kernel checks its pointers (null: pxlStsNullPtrErr), then the size
// (width or height below 1: pxlStsSizeErr), before it writes anything; steps
// are not checked.
#ifndef PXL_PRIMITIVES_COPY_H
#define PXL_PRIMITIVES_COPY_H

#include "core/family.h"

// The layout tokens of a pair, as (elements a source pixel, elements a
// destination pixel, elements copied a pixel, fourth destination element
// set to the type's opaque value).  A one-channel side of C3C1, C1C3, C4C1
// and C1C4 is one channel of the multi-channel image, whose pointer points
// at that channel.
#define PXL_COPY_PAIR_C3C1 3, 1, 1, false
#define PXL_COPY_PAIR_C1C3 1, 3, 1, false
#define PXL_COPY_PAIR_C4C1 4, 1, 1, false
#define PXL_COPY_PAIR_C1C4 1, 4, 1, false
#define PXL_COPY_PAIR_C3C4 3, 4, 3, true
#define PXL_COPY_PAIR_C4C3 4, 3, 3, false
#define PXL_COPY_PAIR_C3AC4 3, 4, 3, false
#define PXL_COPY_PAIR_AC4C3 4, 3, 3, false

// CopySame(T, L): Copy_<T>_<L>R.
#define PXL_SIG_CopySame(T, L) (PXL_SRC(T), PXL_DST(T), PxliRect roi)
#define PXL_KSIG_CopySame(T, L) (PXL_SRC(T), PXL_DST(T), PXL_KSIZE)
#define PXL_KARGS_CopySame (pSrc, srcStep, pDst, dstStep, width, height)
#define PXL_CALL_CopySame(T, L) \
  (PXL_AT(pSrc, srcStep, L), srcStep, PXL_AT(pDst, dstStep, L), dstStep, PXL_ROI_SIZE)
#define PXL_BODY_CopySame(T, L) \
  CopySame<Pxl##T, PXL_CH_##L, PXL_NV_##L>(pSrc, srcStep, pDst, dstStep, width, height)

// CopyPair(T, S, D): Copy_<T>_<S><D>R between two interleaved layouts.
#define PXL_SIG_CopyPair(T, S, D) (PXL_SRC(T), PXL_DST(T), PxliRect roi)
#define PXL_KSIG_CopyPair(T, S, D) (PXL_SRC(T), PXL_DST(T), PXL_KSIZE)
#define PXL_KARGS_CopyPair (pSrc, srcStep, pDst, dstStep, width, height)
#define PXL_CALL_CopyPair(T, S, D) \
  (PXL_AT(pSrc, srcStep, S), srcStep, PXL_AT(pDst, dstStep, D), dstStep, PXL_ROI_SIZE)
#define PXL_BODY_CopyPair(T, S, D) \
  CopyStrided<Pxl##T, PXL_COPY_PAIR_##S##D>(pSrc, srcStep, pDst, dstStep, width, height)

// CopyChannel(T, L): Copy_<T>_<L>CR, one channel of interest; both pointers
// point at that channel of their image.
#define PXL_SIG_CopyChannel(T, L) (PXL_SRC(T), PXL_DST(T), PxliRect roi)
#define PXL_KSIG_CopyChannel(T, L) (PXL_SRC(T), PXL_DST(T), PXL_KSIZE)
#define PXL_KARGS_CopyChannel (pSrc, srcStep, pDst, dstStep, width, height)
#define PXL_CALL_CopyChannel(T, L) PXL_CALL_CopySame(T, L)
#define PXL_BODY_CopyChannel(T, L) \
  CopyStrided<Pxl##T, PXL_CH_##L, PXL_CH_##L, 1, false>(pSrc, srcStep, pDst, dstStep, width, height)

// CopyToPlanes(T, S, P): Copy_<T>_<S><P>R, interleaved to planes.
#define PXL_SIG_CopyToPlanes(T, S, P) (PXL_SRC(T), PXL_DST_PLANES(T, P), PxliRect roi)
#define PXL_KSIG_CopyToPlanes(T, S, P) (PXL_SRC(T), PXL_KDST_PLANES(T), PXL_KSIZE)
#define PXL_KARGS_CopyToPlanes (pSrc, srcStep, pDst, dstStep, width, height)
#define PXL_CALL_CopyToPlanes(T, S, P) \
  (PXL_AT(pSrc, srcStep, S), srcStep, PXL_PLANES_AT(pDst, dstStep, P), dstStep, PXL_ROI_SIZE)
#define PXL_BODY_CopyToPlanes(T, S, P) \
  CopyToPlanes<Pxl##T, PXL_CH_##S, PXL_CH_##P>(pSrc, srcStep, pDst, dstStep, width, height)

// CopyFromPlanes(T, P, D): Copy_<T>_<P><D>R, planes to interleaved.
#define PXL_SIG_CopyFromPlanes(T, P, D) (PXL_SRC_PLANES(T, P), PXL_DST(T), PxliRect roi)
#define PXL_KSIG_CopyFromPlanes(T, P, D) (PXL_KSRC_PLANES(T), PXL_DST(T), PXL_KSIZE)
#define PXL_KARGS_CopyFromPlanes (pSrc, srcStep, pDst, dstStep, width, height)
#define PXL_CALL_CopyFromPlanes(T, P, D) \
  (PXL_PLANES_AT(pSrc, srcStep, P), srcStep, PXL_AT(pDst, dstStep, D), dstStep, PXL_ROI_SIZE)
#define PXL_BODY_CopyFromPlanes(T, P, D) \
  CopyFromPlanes<Pxl##T, PXL_CH_##P, PXL_CH_##D>(pSrc, srcStep, pDst, dstStep, width, height)

// CopyMasked(T, L): Copy_<T>_<L>MR, the pixels whose mask byte is not 0.
#define PXL_SIG_CopyMasked(T, L) (PXL_SRC(T), PXL_DST(T), PxliRect roi, PXL_MASK)
#define PXL_KSIG_CopyMasked(T, L) (PXL_SRC(T), PXL_DST(T), PXL_KSIZE, PXL_MASK)
#define PXL_KARGS_CopyMasked (pSrc, srcStep, pDst, dstStep, width, height, pMask, maskStep)
#define PXL_CALL_CopyMasked(T, L) \
  (PXL_AT(pSrc, srcStep, L), srcStep, PXL_AT(pDst, dstStep, L), dstStep, PXL_ROI_SIZE, PXL_MASK_AT)
#define PXL_BODY_CopyMasked(T, L)                                                                \
  CopyMasked<Pxl##T, PXL_CH_##L, PXL_NV_##L>(pSrc, srcStep, pDst, dstStep, width, height, pMask, \
                                             maskStep)

#endif
