// Member tables of export families.
//
// A family with many members (element types x layouts x forms) is written
// once, as a table: a `*.def` file with one row a member.
//
//   PXL_FAMILY(Family)                 opens the family (its region of the public header)
//   PXL_DOC("title", "text")           documents the rows that follow, up to the next PXL_DOC
//   PXL_MEMBER(unit, Name, Shape, (a)) a pass-through export Name over the dispatched kernel
//                                      k::Name, defined in the kernel unit `unit`
//   PXL_DIRECT(Name, Shape, (a))       an export that runs its own loop and validates nothing
//
// A shape is what a group of members has in common: their parameters and the
// work they do.  For a shape S the family's private header defines, each a
// function-like macro of the row's shape arguments (a):
//
//   PXL_SIG_S(a)    the export's parameter list, exactly as the public header declares it
//   PXL_KSIG_S(a)   the kernel's parameter list: pointers already moved to the region,
//                   the region's width and height in place of the rectangle
//   PXL_CALL_S(a)   the kernel's arguments, as the export computes them from its own
//   PXL_BODY_S(a)   the kernel's body at every level, an expression of type PxlStatus
//   PXL_DBODY_S(a)  for direct members, the export's body (statements)
//
// and PXL_KARGS_S, the kernel's parameter names in order.  Each includer of a
// table defines the row macros for its own purpose (core/member_rows.h):
// core/registry.def registers one kernel a member, a kernel unit defines the
// kernels, an export file defines the exports, and tools/gen_header.cpp writes
// the declarations into the public header from PXL_SIG_S, so that the header
// and the definitions cannot disagree (the compiler checks the definitions
// against the header's declarations).
//
// Everything here is macros, so that tables and shapes can be included inside
// the per-level namespaces.
#ifndef PXL_CORE_FAMILY_H
#define PXL_CORE_FAMILY_H

#define PXL_CAT_(a, b) a##b
#define PXL_CAT(a, b) PXL_CAT_(a, b)
#define PXL_STR_(...) #__VA_ARGS__
#define PXL_XSTR(...) PXL_STR_(__VA_ARGS__)

// Bytes an element of each element type.
#define PXL_BYTES_8u 1
#define PXL_BYTES_8s 1
#define PXL_BYTES_16u 2
#define PXL_BYTES_16s 2
#define PXL_BYTES_32u 4
#define PXL_BYTES_32s 4
#define PXL_BYTES_32f 4
#define PXL_BYTES_64f 8

// Elements a pixel of an interleaved layout, or planes of a planar one.
#define PXL_CH_C1 1
#define PXL_CH_C3 3
#define PXL_CH_C4 4
#define PXL_CH_AC4 4
#define PXL_CH_P3 3
#define PXL_CH_P4 4
// Channels a layout processes: AC4 leaves the fourth alone.
#define PXL_NV_C1 1
#define PXL_NV_C3 3
#define PXL_NV_C4 4
#define PXL_NV_AC4 3
#define PXL_NV_P3 3
#define PXL_NV_P4 4

// Parameter groups of the public signatures.  (The header generator writes
// pointers as `T* p` whatever the spacing here.)
// clang-format off
#define PXL_SRC(T) const Pxl##T* pSrc, int srcStep
#define PXL_DST(T) Pxl##T* pDst, int dstStep
#define PXL_SRCDST(T) Pxl##T* pSrcDst, int srcDstStep
#define PXL_SRC_PLANES(T, P) const Pxl##T* const pSrc[PXL_CH_##P], int srcStep
#define PXL_DST_PLANES(T, P) Pxl##T* const pDst[PXL_CH_##P], int dstStep
#define PXL_MASK const Pxl8u* pMask, int maskStep

// The same groups in kernels.
#define PXL_KSRC_PLANES(T) const Pxl##T* const* pSrc, int srcStep
#define PXL_KDST_PLANES(T) Pxl##T* const* pDst, int dstStep
#define PXL_KSIZE int width, int height
// clang-format on

// In an export: an image moved to the region, for layout L.
#define PXL_AT(p, step, L) ::pxl::RegionStart(p, step, roi, PXL_CH_##L)
#define PXL_PLANES_AT(p, step, P) ::pxl::PlanesAt<PXL_CH_##P>(p, step, roi).get()
#define PXL_MASK_AT ::pxl::MaskStart(pMask, maskStep, roi), maskStep
#define PXL_ROI_SIZE roi.width, roi.height

#endif
