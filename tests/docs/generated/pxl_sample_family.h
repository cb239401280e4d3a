/**
 * @file pxl_sample_family.h
 * @brief A header laid out as generated families will be: checks that the
 *        reference settings document them without warnings.
 */
#ifndef PXL_SAMPLE_FAMILY_H
#define PXL_SAMPLE_FAMILY_H

#include "pxl/pxl_types.h"

/**
 * @defgroup sample Sample family header
 * @brief Declarations in the generated layout.
 * @{
 */

/* ---- generated: SampleAdd ---- */
/** @name SampleAdd
 * @{ */
/**
 * Adds two images element by element.
 *
 * Shape: pass-through.
 *
 * @param pSrc1     first source.
 * @param src1Step  its row step in bytes.
 * @param pSrc2     second source.
 * @param src2Step  its row step in bytes.
 * @param pDst      destination.
 * @param dstStep   its row step in bytes.
 * @param roi       the region.
 * @return #pxlStsNoErr, or a negative status with nothing written.
 */
PXL_API PxlStatus SampleAdd_8u_C1R(const Pxl8u* pSrc1, int src1Step, const Pxl8u* pSrc2, int src2Step, Pxl8u* pDst, int dstStep, PxliRect roi);
PXL_API PxlStatus SampleAdd_16u_C1R(const Pxl16u* pSrc1, int src1Step, const Pxl16u* pSrc2, int src2Step, Pxl16u* pDst, int dstStep, PxliRect roi);
PXL_API PxlStatus SampleAdd_32f_C1R(const Pxl32f* pSrc1, int src1Step, const Pxl32f* pSrc2, int src2Step, Pxl32f* pDst, int dstStep, PxliRect roi);
/** @} */
/* ---- end generated: SampleAdd ---- */

/* ---- generated: SampleSet ---- */
/** @name SampleSet
 * @{ */
/**
 * Sets every element of a region to a value.
 *
 * @param value    the value.
 * @param pDst     destination.
 * @param dstStep  its row step in bytes.
 * @param roi      the region.
 * @return #pxlStsNoErr.
 */
PXL_API PxlStatus SampleSet_8u_C1R(Pxl8u value, Pxl8u* pDst, int dstStep, PxliRect roi);
PXL_API PxlStatus SampleSet_32f_C1R(Pxl32f value, Pxl32f* pDst, int dstStep, PxliRect roi);
/** @} */
/* ---- end generated: SampleSet ---- */

/** @} */

#endif
