// Shapes of the border copies, Transpose and Mirror (core/family.h); the rows
// are in border.def, transpose.def and mirror.def.
//
// All three work on whole pixels and never look inside one, so each kernel
// is a thin call of a template on the pixel's size in bytes (PXL_PB): the
// 30 or so members of a family share eight instantiations a level.
#ifndef PXL_PRIMITIVES_LAYOUT_H
#define PXL_PRIMITIVES_LAYOUT_H

#include "core/family.h"

// Bytes a pixel of element type T in layout L.
#define PXL_PB(T, L) (PXL_BYTES_##T * PXL_CH_##L)

// ---- border copies ---------------------------------------------------------
// The fill value of a constant border: one element for C1, an array of one
// element a channel otherwise; and its address for the kernel.
#define PXL_BVALUE_C1(T) Pxl##T value
#define PXL_BVALUE_C3(T) const Pxl##T value[3]
#define PXL_BVALUE_C4(T) const Pxl##T value[4]
#define PXL_BVALUE_AT_C1 &value
#define PXL_BVALUE_AT_C3 value
#define PXL_BVALUE_AT_C4 value

// BorderConst(T, L): CopyConstBorder_<T>_<L>R.
#define PXL_SIG_BorderConst(T, L)                                                         \
  (PXL_SRC(T), PxliSize srcRoiSize, PXL_DST(T), PxliSize dstRoiSize, int topBorderHeight, \
   int leftBorderWidth, PXL_BVALUE_##L(T))
#define PXL_KSIG_BorderConst(T, L) PXL_SIG_BorderConst(T, L)
#define PXL_KARGS_BorderConst \
  (pSrc, srcStep, srcRoiSize, pDst, dstStep, dstRoiSize, topBorderHeight, leftBorderWidth, value)
#define PXL_CALL_BorderConst(T, L) PXL_KARGS_BorderConst
#define PXL_BODY_BorderConst(T, L)                                                       \
  BorderCopy<PXL_PB(T, L), kConst>(pSrc, srcStep, srcRoiSize, pDst, dstStep, dstRoiSize, \
                                   topBorderHeight, leftBorderWidth, PXL_BVALUE_AT_##L)

// BorderEdge(T, L, K): CopyReplicateBorder / CopyMirrorBorder, K = kReplicate or kMirror.
#define PXL_SIG_BorderEdge(T, L, K)                                                       \
  (PXL_SRC(T), PxliSize srcRoiSize, PXL_DST(T), PxliSize dstRoiSize, int topBorderHeight, \
   int leftBorderWidth)
#define PXL_KSIG_BorderEdge(T, L, K) PXL_SIG_BorderEdge(T, L, K)
#define PXL_KARGS_BorderEdge \
  (pSrc, srcStep, srcRoiSize, pDst, dstStep, dstRoiSize, topBorderHeight, leftBorderWidth)
#define PXL_CALL_BorderEdge(T, L, K) PXL_KARGS_BorderEdge
#define PXL_BODY_BorderEdge(T, L, K)                                                \
  BorderCopy<PXL_PB(T, L), K>(pSrc, srcStep, srcRoiSize, pDst, dstStep, dstRoiSize, \
                              topBorderHeight, leftBorderWidth, pSrc)

// BorderConstInPlace(T, L): CopyConstBorder_<T>_<L>IR.  pSrc points at the
// source's first pixel, inside the destination.
#define PXL_SIG_BorderConstInPlace(T, L)                                                         \
  (Pxl##T * pSrc, int srcDstStep, PxliSize srcRoiSize, PxliSize dstRoiSize, int topBorderHeight, \
   int leftBorderWidth, PXL_BVALUE_##L(T))
#define PXL_KSIG_BorderConstInPlace(T, L) PXL_SIG_BorderConstInPlace(T, L)
#define PXL_KARGS_BorderConstInPlace \
  (pSrc, srcDstStep, srcRoiSize, dstRoiSize, topBorderHeight, leftBorderWidth, value)
#define PXL_CALL_BorderConstInPlace(T, L) PXL_KARGS_BorderConstInPlace
#define PXL_BODY_BorderConstInPlace(T, L)                                                     \
  BorderCopy<PXL_PB(T, L), kConst | kInPlace>(pSrc, srcDstStep, srcRoiSize, pSrc, srcDstStep, \
                                              dstRoiSize, topBorderHeight, leftBorderWidth,   \
                                              PXL_BVALUE_AT_##L)

// BorderEdgeInPlace(T, L, K): CopyReplicateBorder / CopyMirrorBorder, IR.
#define PXL_SIG_BorderEdgeInPlace(T, L, K)                                                       \
  (Pxl##T * pSrc, int srcDstStep, PxliSize srcRoiSize, PxliSize dstRoiSize, int topBorderHeight, \
   int leftBorderWidth)
#define PXL_KSIG_BorderEdgeInPlace(T, L, K) PXL_SIG_BorderEdgeInPlace(T, L, K)
#define PXL_KARGS_BorderEdgeInPlace \
  (pSrc, srcDstStep, srcRoiSize, dstRoiSize, topBorderHeight, leftBorderWidth)
#define PXL_CALL_BorderEdgeInPlace(T, L, K) PXL_KARGS_BorderEdgeInPlace
#define PXL_BODY_BorderEdgeInPlace(T, L, K)                                              \
  BorderCopy<PXL_PB(T, L), K | kInPlace>(pSrc, srcDstStep, srcRoiSize, pSrc, srcDstStep, \
                                         dstRoiSize, topBorderHeight, leftBorderWidth, pSrc)

// ---- transpose ---------------------------------------------------------------
// Transpose(T, L): Transpose_<T>_<L>R.  The one region moves both images to
// (x, y), unexchanged.
#define PXL_SIG_Transpose(T, L) (PXL_SRC(T), PXL_DST(T), PxliRect roi)
#define PXL_KSIG_Transpose(T, L) (PXL_SRC(T), PXL_DST(T), PXL_KSIZE)
#define PXL_KARGS_Transpose (pSrc, srcStep, pDst, dstStep, width, height)
#define PXL_CALL_Transpose(T, L) \
  (PXL_AT(pSrc, srcStep, L), srcStep, PXL_AT(pDst, dstStep, L), dstStep, PXL_ROI_SIZE)
#define PXL_BODY_Transpose(T, L) \
  TransposeCopy<PXL_PB(T, L)>(pSrc, srcStep, pDst, dstStep, width, height)

// TransposeInPlace(T, L): Transpose_<T>_<L>IR, square regions only.
#define PXL_SIG_TransposeInPlace(T, L) (PXL_SRCDST(T), PxliRect roi)
#define PXL_KSIG_TransposeInPlace(T, L) (PXL_SRCDST(T), PXL_KSIZE)
#define PXL_KARGS_TransposeInPlace (pSrcDst, srcDstStep, width, height)
#define PXL_CALL_TransposeInPlace(T, L) (PXL_AT(pSrcDst, srcDstStep, L), srcDstStep, PXL_ROI_SIZE)
#define PXL_BODY_TransposeInPlace(T, L) \
  TransposeSquare<PXL_PB(T, L)>(pSrcDst, srcDstStep, width, height)

// ---- mirror ------------------------------------------------------------------
// Mirror(T, L): Mirror_<T>_<L>R.
#define PXL_SIG_Mirror(T, L) (PXL_SRC(T), PXL_DST(T), PxliRect roi, PxlFlip flip)
#define PXL_KSIG_Mirror(T, L) (PXL_SRC(T), PXL_DST(T), PXL_KSIZE, int flip)
#define PXL_KARGS_Mirror (pSrc, srcStep, pDst, dstStep, width, height, flip)
#define PXL_CALL_Mirror(T, L) \
  (PXL_AT(pSrc, srcStep, L), srcStep, PXL_AT(pDst, dstStep, L), dstStep, PXL_ROI_SIZE, flip)
#define PXL_BODY_Mirror(T, L) \
  MirrorCopy<PXL_PB(T, L)>(pSrc, srcStep, pDst, dstStep, width, height, flip)

// MirrorInPlace(T, L): Mirror_<T>_<L>IR.
#define PXL_SIG_MirrorInPlace(T, L) (PXL_SRCDST(T), PxliRect roi, PxlFlip flip)
#define PXL_KSIG_MirrorInPlace(T, L) (PXL_SRCDST(T), PXL_KSIZE, int flip)
#define PXL_KARGS_MirrorInPlace (pSrcDst, srcDstStep, width, height, flip)
#define PXL_CALL_MirrorInPlace(T, L) \
  (PXL_AT(pSrcDst, srcDstStep, L), srcDstStep, PXL_ROI_SIZE, flip)
#define PXL_BODY_MirrorInPlace(T, L) \
  MirrorInPlace<PXL_PB(T, L)>(pSrcDst, srcDstStep, width, height, flip)

#endif
