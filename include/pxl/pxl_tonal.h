/*
 * pxl - tonal adjustments of float RGBA images.
 *
 * Pixels are four 32-bit floats, R, G, B, A, nominally 0 to 1; values are
 * used as stored, with no transfer-curve conversion.  A parameter map is a
 * one-channel float image with its own byte step, addressed by the same
 * region as the image: pass the bases of the whole image and of the whole
 * map.  These exports validate nothing and return pxlStsNoErr; a region of
 * height <= 0 or width <= 0 changes nothing.
 */
#ifndef PXL_TONAL_H
#define PXL_TONAL_H

#include "pxl_types.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Per-pixel saturation s about the pixel's luma Y = 0.299 R + 0.587 G + 0.114 B: (p - Y) * s + Y;
 * alpha kept; unclamped. */
PXL_API PxlStatus AdjustSaturation_32f_AC4IR(Pxl32f* pSrcDst, int srcDstStep, PxliRect roi,
                                             const Pxl32f* pMap, int mapStep);

/* Per-pixel contrast c about mid-grey: (p - 0.5) * c + 0.5; alpha kept; unclamped. */
PXL_API PxlStatus AdjustContrast_32f_AC4IR(Pxl32f* pSrcDst, int srcDstStep, PxliRect roi,
                                           const Pxl32f* pMap, int mapStep);

/* Per-pixel gain g on R, G, B: p * g; alpha kept bit for bit; unclamped. */
PXL_API PxlStatus AdjustBrightness_32f_AC4IR(Pxl32f* pSrcDst, int srcDstStep, PxliRect roi,
                                             const Pxl32f* pMap, int mapStep);

/* Per-pixel gain g on all four lanes, alpha included: p * g; unclamped. */
PXL_API PxlStatus AdjustBrightness_32f_C4IR(Pxl32f* pSrcDst, int srcDstStep, PxliRect roi,
                                            const Pxl32f* pMap, int mapStep);

/*
 * Per-pixel exposure in units of 1.666 stops on all four lanes: e = value +
 * map, bounded to [minValue, maxValue] (below minValue or NaN gives
 * minValue), m = powf(2, e * 1.666f), out = p*m / ((1 - p) + p*m).  Maps 0 to
 * 0 and 1 to 1; unclamped.
 */
PXL_API PxlStatus AdjustExposureLin_32f_C4IMR(Pxl32f* pSrcDst, int srcDstStep, PxliRect roi,
                                              Pxl32f value, const Pxl32f* pMap, int mapStep,
                                              Pxl32f minValue, Pxl32f maxValue);

/*
 * Uniform exposure on all four lanes, clamped to 0..1.  Two curves, chosen
 * once a call by the address of the region's first pixel:
 *  - 16-byte aligned: m = powf(2, value * 1.666f), k = 1 + 0.15 * (1 - c)
 *    with c = clamp(value / 4 + 1.25, 0, 1); out = (p m k) / ((k - p) + p m);
 *  - otherwise: m = powf(2, value), L = 0.7154 G + 0.2125 R + 0.0721 B,
 *    t = m L, s = t / ((t + 1 - L) (L + 1e-6)); out = p * s on all lanes.
 * The two curves differ; both are the intended behaviour.
 */
PXL_API PxlStatus AdjustExposureLin_32f_C4IR(Pxl32f* pSrcDst, int srcDstStep, PxliRect roi,
                                             Pxl32f value);

#ifdef __cplusplus
}
#endif

#endif /* PXL_TONAL_H */
