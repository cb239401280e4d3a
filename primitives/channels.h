// Shapes of the SwapChannels and Swizzle families (core/family.h); the rows
// are in swap_channels.def and swizzle.def.
//
// Both set channel c of each destination pixel to channel order[c] of the
// source pixel.  SwapChannels kernels check the pointers (source,
// destination, order: pxlStsNullPtrErr), the size (pxlStsSizeErr) and the
// order (pxlStsChannelOrderErr) before writing; Swizzle checks nothing.
#ifndef PXL_PRIMITIVES_CHANNELS_H
#define PXL_PRIMITIVES_CHANNELS_H

#include "core/family.h"

// Swap(T, L): SwapChannels_<T>_<L>R.
#define PXL_SIG_Swap(T, L) (PXL_SRC(T), PXL_DST(T), PxliRect roi, const int dstOrder[PXL_NV_##L])
#define PXL_KSIG_Swap(T, L) (PXL_SRC(T), PXL_DST(T), PXL_KSIZE, const int* dstOrder)
#define PXL_KARGS_Swap (pSrc, srcStep, pDst, dstStep, width, height, dstOrder)
#define PXL_CALL_Swap(T, L) \
  (PXL_AT(pSrc, srcStep, L), srcStep, PXL_AT(pDst, dstStep, L), dstStep, PXL_ROI_SIZE, dstOrder)
#define PXL_BODY_Swap(T, L)                                                                 \
  SwapChannels<sizeof(Pxl##T), PXL_CH_##L, PXL_NV_##L>(pSrc, srcStep, pDst, dstStep, width, \
                                                       height, dstOrder)

// SwapInPlace(T, L): SwapChannels_<T>_<L>IR.
#define PXL_SIG_SwapInPlace(T, L) (PXL_SRCDST(T), PxliRect roi, const int dstOrder[PXL_NV_##L])
#define PXL_KSIG_SwapInPlace(T, L) (PXL_SRCDST(T), PXL_KSIZE, const int* dstOrder)
#define PXL_KARGS_SwapInPlace (pSrcDst, srcDstStep, width, height, dstOrder)
#define PXL_CALL_SwapInPlace(T, L) \
  (PXL_AT(pSrcDst, srcDstStep, L), srcDstStep, PXL_ROI_SIZE, dstOrder)
#define PXL_BODY_SwapInPlace(T, L)                                                               \
  SwapChannels<sizeof(Pxl##T), PXL_CH_##L, PXL_NV_##L>(pSrcDst, srcDstStep, pSrcDst, srcDstStep, \
                                                       width, height, dstOrder)

// The unchecked loop behind Swizzle: one internal kernel a pixel layout of
// C elements of E bytes (primitives/kernels.def).
#define PXL_REORDER(E, N) PXL_CAT(PXL_CAT(PXL_CAT(reorderE, E), C), N)

// Swizzle(T, L): Swizzle_<T>_<L>R; SwizzleInPlace(T, L): Swizzle_<T>_<L>IR.
#define PXL_SIG_Swizzle(T, L) (PXL_SRC(T), PXL_DST(T), PxliRect roi, const int order[PXL_CH_##L])
#define PXL_DBODY_Swizzle(T, L)                                                                   \
  ::pxl::k::PXL_REORDER(PXL_BYTES_##T, PXL_CH_##L)(                                               \
      PXL_AT(pSrc, srcStep, L), srcStep, PXL_AT(pDst, dstStep, L), dstStep, PXL_ROI_SIZE, order); \
  return pxlStsNoErr;
#define PXL_SIG_SwizzleInPlace(T, L) (PXL_SRCDST(T), PxliRect roi, const int order[PXL_CH_##L])
#define PXL_DBODY_SwizzleInPlace(T, L)                                                   \
  Pxl##T* const start = PXL_AT(pSrcDst, srcDstStep, L);                                  \
  ::pxl::k::PXL_REORDER(PXL_BYTES_##T, PXL_CH_##L)(start, srcDstStep, start, srcDstStep, \
                                                   PXL_ROI_SIZE, order);                 \
  return pxlStsNoErr;

#endif
