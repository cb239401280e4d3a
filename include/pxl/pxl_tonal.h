/**
 * @file pxl_tonal.h
 * @brief Tonal adjustments of float RGBA images: see @ref tonal.
 */
#ifndef PXL_TONAL_H
#define PXL_TONAL_H

#include "pxl_types.h"

#ifdef __cplusplus
extern "C" {
#endif

/**
 * @defgroup tonal Tonal adjustments
 * @brief Exposure, contrast, saturation and brightness of float RGBA images
 *        (pxl_tonal.h).
 *
 * Pixels are four 32-bit floats R, G, B, A, nominally 0 to 1; values are
 * used as stored, with no transfer-curve conversion.  A parameter map is a
 * one-channel float image (#PXL_FMT_32F_C1) with its own byte step,
 * addressed by the same region as the image: the value for pixel (x, y) of
 * the region is read at @c pMap + (roi.y + y) * mapStep + (roi.x + x) * 4
 * bytes, so pass the bases of the whole image and of the whole map.
 *
 * All of these are direct exports: they validate nothing and return
 * #pxlStsNoErr.  A region of height <= 0 or width <= 0 changes nothing; a
 * null pointer with a non-empty region faults.  Steps of the image and of the
 * map may be negative and any byte count.  The map is read while the image
 * is written, so the two must not overlap.
 * @{
 */

/**
 * @defgroup tonal_basic Basic adjustments
 * @ingroup tonal
 * @brief In place, per pixel, driven by one number or by a parameter map.
 * @{
 */

/**
 * Per-pixel saturation about the pixel's luma.
 *
 * With s the map value: Y = (0.299 R + 0.587 G) + 0.114 B in single
 * precision, then each of R, G, B becomes (p - Y) * s + Y.  s = 1 leaves the
 * colours (up to rounding), s = 0 gives gray at the pixel's luma, s > 1 moves
 * colours away from gray.  Not clamped: (1, 0, 0) with s = 2 gives
 * (1.701, -0.299, -0.299).
 *
 * Lanes: R, G, B; alpha is kept bit for bit.  Shape: direct.
 *
 * @param pSrcDst     base of the image, float RGBA; adjusted in place.
 * @param srcDstStep  its row step in bytes.
 * @param roi         the region to adjust.
 * @param pMap        base of the saturation map, one float a pixel.
 * @param mapStep     its row step in bytes.
 * @return #pxlStsNoErr, always.
 */
PXL_API PxlStatus AdjustSaturation_32f_AC4IR(Pxl32f* pSrcDst, int srcDstStep, PxliRect roi,
                                             const Pxl32f* pMap, int mapStep);

/**
 * Per-pixel contrast about mid-gray.
 *
 * With c the map value, each of R, G, B becomes (p - 0.5) * c + 0.5: a
 * channel of exactly 0.5 stays, c > 1 spreads the tones, c < 1 flattens them.
 * Not clamped.
 *
 * Lanes: R, G, B; alpha is kept bit for bit.  Shape: direct.
 *
 * @param pSrcDst     base of the image, float RGBA; adjusted in place.
 * @param srcDstStep  its row step in bytes.
 * @param roi         the region to adjust.
 * @param pMap        base of the contrast map, one float a pixel.
 * @param mapStep     its row step in bytes.
 * @return #pxlStsNoErr, always.
 */
PXL_API PxlStatus AdjustContrast_32f_AC4IR(Pxl32f* pSrcDst, int srcDstStep, PxliRect roi,
                                           const Pxl32f* pMap, int mapStep);

/**
 * Per-pixel gain on the colours.
 *
 * With g the map value, each of R, G, B becomes p * g.  Not clamped; a map
 * of 0 gives black.
 *
 * Lanes: R, G, B; alpha is kept bit for bit.  Shape: direct.
 *
 * @param pSrcDst     base of the image, float RGBA; adjusted in place.
 * @param srcDstStep  its row step in bytes.
 * @param roi         the region to adjust.
 * @param pMap        base of the gain map, one float a pixel.
 * @param mapStep     its row step in bytes.
 * @return #pxlStsNoErr, always.
 */
PXL_API PxlStatus AdjustBrightness_32f_AC4IR(Pxl32f* pSrcDst, int srcDstStep, PxliRect roi,
                                             const Pxl32f* pMap, int mapStep);

/**
 * Per-pixel gain on all four lanes, alpha included.
 *
 * With g the map value, each of R, G, B and A becomes p * g.  Not clamped; a
 * map of 0 gives black with alpha 0, and a map below 1 makes the picture
 * partly transparent.  Use AdjustBrightness_32f_AC4IR() to keep alpha.
 *
 * Lanes: all four.  Shape: direct.
 *
 * @param pSrcDst     base of the image, float RGBA; adjusted in place.
 * @param srcDstStep  its row step in bytes.
 * @param roi         the region to adjust.
 * @param pMap        base of the gain map, one float a pixel.
 * @param mapStep     its row step in bytes.
 * @return #pxlStsNoErr, always.
 */
PXL_API PxlStatus AdjustBrightness_32f_C4IR(Pxl32f* pSrcDst, int srcDstStep, PxliRect roi,
                                            const Pxl32f* pMap, int mapStep);

/**
 * Per-pixel exposure: a rational tone curve, one unit being 1.666 stops.
 *
 * For each pixel, with w its map value:
 * -# e = value + w;
 * -# bounded: e = (e >= minValue) ? (e < maxValue ? e : maxValue) : minValue,
 *    so below @p minValue, or NaN, gives @p minValue;
 * -# m = powf(2, e * 1.666f);
 * -# on each lane, out = p * m / ((1 - p) + p * m).
 *
 * The curve maps 0 to 0 and 1 to 1, so the nominal range stays in range; it
 * is not clamped.  value 0 with a zero map and bounds that contain 0 leaves
 * the pixels (up to rounding); bounds (1, 2) turn the same call into an
 * exposure of 1.
 *
 * With @p minValue above @p maxValue the bounds make a step, not a range:
 * every e at or above @p minValue becomes @p maxValue, every e below it (or
 * NaN) becomes @p minValue.  With bounds (0.5, -0.5) and a zero map, value
 * 0.2 gives exposure +0.5 (gray 0.5 becomes 0.6405) and value 0.5 gives -0.5
 * (0.3595).
 *
 * Lanes: all four, alpha through the same curve: an alpha of exactly 0 or 1
 * stays as it is.  Shape: direct.
 *
 * @param pSrcDst     base of the image, float RGBA; adjusted in place.
 * @param srcDstStep  its row step in bytes.
 * @param roi         the region to adjust.
 * @param value       exposure added to every map value.
 * @param pMap        base of the exposure map, one float a pixel.
 * @param mapStep     its row step in bytes.
 * @param minValue    lower bound of the exposure.
 * @param maxValue    upper bound of the exposure.
 * @return #pxlStsNoErr, always.
 */
PXL_API PxlStatus AdjustExposureLin_32f_C4IMR(Pxl32f* pSrcDst, int srcDstStep, PxliRect roi,
                                              Pxl32f value, const Pxl32f* pMap, int mapStep,
                                              Pxl32f minValue, Pxl32f maxValue);

/**
 * Uniform exposure, clamped to 0..1, by one of two curves chosen by the
 * address of the region's first pixel.
 *
 * The choice is made once a call: when the address
 * `pSrcDst + roi.y * srcDstStep + roi.x * 16` (in bytes) is a multiple of
 * 16 the first curve runs for every row,
 * otherwise the second.  Later rows are not looked at, even where the step
 * changes their alignment.  The two curves give different pictures, and both
 * are the intended behaviour.  An image from Malloc() with a region anywhere
 * in it always starts aligned; to be sure of one curve when tiling a picture,
 * keep every tile's first pixel equally aligned.
 *
 * First curve (aligned), per lane, with v the @p value argument:
 * m = powf(2, v * 1.666f); c = v / 4 + 1.25 clamped to 0..1 (NaN gives 0);
 * k = 1 + 0.15 * (1 - c), computed in double and rounded once, so 1 for
 * v >= -1 rising to 1.15 at v <= -5; out = clamp(p * m * k / ((k - p) + p * m)).
 *
 * Second curve (not aligned), luma-driven: m = powf(2, v) (no 1.666);
 * L = (0.7154 G + 0.2125 R) + 0.0721 B; t = m * L;
 * s = t / ((t + 1 - L) * (L + 0.000001)); every lane, alpha included,
 * becomes clamp(p * s).  Black (L = 0) gives s = 0, so its alpha becomes 0.
 *
 * Example, value 1:
 * | pixel (R, G, B, A)  | aligned                        | not aligned                 |
 * |---------------------|--------------------------------|-----------------------------|
 * | (0.5, 0.5, 0.5, 1)  | (0.7604, 0.7604, 0.7604, 1)    | (0.6667, 0.6667, 0.6667, 1) |
 * | (0.8, 0.4, 0.2, 1)  | (0.9270, 0.6790, 0.4424, 1)    | (1, 0.5440, 0.2720, 1)      |
 *
 * Lanes: all four; the result is clamped to 0..1 on every lane.
 * Shape: direct.
 *
 * @param pSrcDst     base of the image, float RGBA; adjusted in place.
 * @param srcDstStep  its row step in bytes.
 * @param roi         the region to adjust.
 * @param value       the exposure.
 * @return #pxlStsNoErr, always.
 */
PXL_API PxlStatus AdjustExposureLin_32f_C4IR(Pxl32f* pSrcDst, int srcDstStep, PxliRect roi,
                                             Pxl32f value);

/** @} */

/** @} */

#ifdef __cplusplus
}
#endif

#endif /* PXL_TONAL_H */
