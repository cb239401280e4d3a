// Shapes of the Set family (core/family.h); the rows are in set.def.
//
// The value leads the arguments.  Every kernel checks its pointers (the
// destination, a value array, a mask: pxlStsNullPtrErr), then the size
// (pxlStsSizeErr), before it writes anything.
#ifndef PXL_PRIMITIVES_SET_H
#define PXL_PRIMITIVES_SET_H

#include "core/family.h"

// SetC1(T): Set_<T>_C1R, one value for every pixel.
#define PXL_SIG_SetC1(T) (Pxl##T value, PXL_DST(T), PxliRect roi)
#define PXL_KSIG_SetC1(T) (Pxl##T value, PXL_DST(T), PXL_KSIZE)
#define PXL_KARGS_SetC1 (value, pDst, dstStep, width, height)
#define PXL_CALL_SetC1(T) (value, PXL_AT(pDst, dstStep, C1), dstStep, PXL_ROI_SIZE)
#define PXL_BODY_SetC1(T) SetC1<Pxl##T>(value, pDst, dstStep, width, height)

// SetPixel(T, L): Set_<T>_<L>R, one value a channel (AC4: three, the fourth
// channel left as it was).
#define PXL_SIG_SetPixel(T, L) (const Pxl##T value[PXL_NV_##L], PXL_DST(T), PxliRect roi)
#define PXL_KSIG_SetPixel(T, L) (const Pxl##T* value, PXL_DST(T), PXL_KSIZE)
#define PXL_KARGS_SetPixel (value, pDst, dstStep, width, height)
#define PXL_CALL_SetPixel(T, L) (value, PXL_AT(pDst, dstStep, L), dstStep, PXL_ROI_SIZE)
#define PXL_BODY_SetPixel(T, L) \
  SetPixel<Pxl##T, PXL_CH_##L, PXL_NV_##L>(value, pDst, dstStep, width, height)

// SetChannel(T, L): Set_<T>_<L>CR, one channel of interest, the pointer at
// that channel.
#define PXL_SIG_SetChannel(T, L) (Pxl##T value, PXL_DST(T), PxliRect roi)
#define PXL_KSIG_SetChannel(T, L) (Pxl##T value, PXL_DST(T), PXL_KSIZE)
#define PXL_KARGS_SetChannel (value, pDst, dstStep, width, height)
#define PXL_CALL_SetChannel(T, L) (value, PXL_AT(pDst, dstStep, L), dstStep, PXL_ROI_SIZE)
#define PXL_BODY_SetChannel(T, L) \
  SetMasked<Pxl##T, PXL_CH_##L, 1, false>(&value, pDst, dstStep, width, height, nullptr, 0)

// SetMaskedC1(T): Set_<T>_C1MR.
#define PXL_SIG_SetMaskedC1(T) (Pxl##T value, PXL_DST(T), PxliRect roi, PXL_MASK)
#define PXL_KSIG_SetMaskedC1(T) (Pxl##T value, PXL_DST(T), PXL_KSIZE, PXL_MASK)
#define PXL_KARGS_SetMaskedC1 (value, pDst, dstStep, width, height, pMask, maskStep)
#define PXL_CALL_SetMaskedC1(T) \
  (value, PXL_AT(pDst, dstStep, C1), dstStep, PXL_ROI_SIZE, PXL_MASK_AT)
#define PXL_BODY_SetMaskedC1(T) \
  SetMasked<Pxl##T, 1, 1, true>(&value, pDst, dstStep, width, height, pMask, maskStep)

// SetMaskedPixel(T, L): Set_<T>_<L>MR.
#define PXL_SIG_SetMaskedPixel(T, L) \
  (const Pxl##T value[PXL_NV_##L], PXL_DST(T), PxliRect roi, PXL_MASK)
#define PXL_KSIG_SetMaskedPixel(T, L) (const Pxl##T* value, PXL_DST(T), PXL_KSIZE, PXL_MASK)
#define PXL_KARGS_SetMaskedPixel (value, pDst, dstStep, width, height, pMask, maskStep)
#define PXL_CALL_SetMaskedPixel(T, L) \
  (value, PXL_AT(pDst, dstStep, L), dstStep, PXL_ROI_SIZE, PXL_MASK_AT)
#define PXL_BODY_SetMaskedPixel(T, L)                                                         \
  SetMasked<Pxl##T, PXL_CH_##L, PXL_NV_##L, true>(value, pDst, dstStep, width, height, pMask, \
                                                  maskStep)

#endif
