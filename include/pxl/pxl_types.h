/**
 * @file pxl_types.h
 * @brief Element types, shared records, status codes, and the rules every
 *        export follows.
 *
 * @par Images
 * An image is a base pointer to the element at row 0, column 0 and a signed
 * 32-bit row step: the distance in bytes from the start of one row to the
 * start of the next, for every element type.  The host owns every buffer; the
 * library never keeps a pointer after a call returns, and allocates nothing
 * that outlives a call.
 *
 * @par Steps
 * A step may be negative (rows stored bottom-up: pass the address of row 0,
 * the top row, and a negative step) and may be any byte count, also one that
 * is not a multiple of the pixel size or of 4, so rows may start at any byte
 * address; the exports then read and write their floats unaligned.  Nothing
 * checks that a step fits the buffer or is at least one row long.  Every
 * export declared today accepts any step.  An export that needs more (a
 * positive step, a multiple of the pixel size) says so in its own
 * description and then fails with #pxlStsStepErr or #pxlStsNotEvenStepErr.
 * Steps from Malloc() are multiples of 64.  Where a row's alignment changes
 * the result, the export says so (AdjustExposureLin_32f_C4IR()).
 *
 * @par Regions
 * Exports whose name ends in @c R take a #PxliRect by value.  Each image of
 * the call is moved to the region's first pixel on its own, by its own step
 * and pixel size; the region's width and height are the working size.  So
 * pass the bases of whole images (and of whole parameter maps), never
 * pointers already moved to the region.  Nothing clamps a region to a buffer.
 *
 * @par Names
 * A name reads as operation, element type and form:
 * @c AdjustBrightness_32f_AC4IR works on 32-bit floats (@c 32f), four
 * channels of which the fourth, alpha, is left as it was (@c AC4), in place
 * (@c I), on a region (@c R).  @c C1, @c C3, @c C4 are one, three and four
 * interleaved channels, all processed.  Arguments come in the order images
 * (pointer, step), region, then the operation's own parameters.
 *
 * @par Lanes
 * Pixels of the photo algorithms are four floats R, G, B, A (lanes 0 to 3),
 * nominally 0 to 1, used as stored: no export converts transfer curves.  An
 * @c AC4 export leaves lane 3 of the destination bit for bit as it was; a
 * @c C4 export computes lane 3 like the others, and its description says
 * what that does to alpha.
 *
 * @par Shapes and statuses
 * Every export that can fail returns a #PxlStatus: 0 (#pxlStsNoErr) is
 * success, a negative value an error, a positive value a warning after which
 * the operation has run to its end.  Each export has one of four shapes,
 * named in its description, which decides what it does with bad input:
 * - @b pass-through: one kernel, which checks its arguments before writing
 *   anything, in the order pointers, sizes, steps, parameters, and returns
 *   #pxlStsNullPtrErr, #pxlStsSizeErr, #pxlStsStepErr, ... with nothing
 *   written.  A null image pointer is seen only while the region starts at
 *   (0, 0).
 * - @b row-loop: a one-row kernel called for each row; the status is that of
 *   the last row, and a height below 1 returns #pxlStsNoErr.
 * - @b direct: its own loop, which validates nothing and returns
 *   #pxlStsNoErr; an empty region changes nothing, a null pointer faults.
 * - @b staged: several stages with working memory; a failing stage's status
 *   is returned after the buffers are freed, and what earlier stages wrote
 *   stays.
 *
 * @par Threads
 * The library starts no threads and takes no locks.  Calls on disjoint
 * buffers may run side by side on the host's threads.
 */
#ifndef PXL_TYPES_H
#define PXL_TYPES_H

#include <stdint.h>
#ifndef __cplusplus
#include <stdbool.h>
#endif

/** @cond PXL_INTERNAL */
#if defined(PXL_BUILDING_LIBRARY)
#define PXL_API __attribute__((visibility("default")))
#else
#define PXL_API
#endif
/** @endcond */

#ifdef __cplusplus
extern "C" {
#endif

/**
 * @defgroup types Types, records and status codes
 * @brief What every export has in common (pxl_types.h).
 * @{
 */

/**
 * @defgroup element_types Element types
 * @ingroup types
 * @brief Each named by the token that stands for it in export names.
 * @{
 */
typedef uint8_t Pxl8u;   /**< @c 8u: unsigned 8-bit integer. */
typedef int8_t Pxl8s;    /**< @c 8s: signed 8-bit integer. */
typedef uint16_t Pxl16u; /**< @c 16u: unsigned 16-bit integer. */
typedef int16_t Pxl16s;  /**< @c 16s: signed 16-bit integer. */
typedef uint32_t Pxl32u; /**< @c 32u: unsigned 32-bit integer. */
typedef int32_t Pxl32s;  /**< @c 32s: signed 32-bit integer. */
typedef float Pxl32f;    /**< @c 32f: IEEE single; the working type of the photo algorithms. */
typedef double Pxl64f;   /**< @c 64f: IEEE double. */
typedef uint64_t Pxl64u; /**< Unsigned 64-bit: processor feature masks. */
/** @} */

/** Width and height of an image or region, passed by value. */
typedef struct PxliSize {
  int32_t width;  /**< Pixels a row. */
  int32_t height; /**< Rows. */
} PxliSize;

/**
 * A region of interest, passed by value.
 *
 * The start of each image of a call is moved by @p y rows and @p x pixels:
 * by @c y * step bytes, a 32-bit signed product that wraps and is then
 * sign-extended, and by @c x times the image's elements a pixel (1, 3 or 4;
 * also a wrapping 32-bit product) times the element width.  So a buffer
 * larger than 2 GiB is addressed correctly only by regions that start within
 * its first 2^31 - 1 bytes.  The region's @p width and @p height become the
 * working size.  Negative @p x or @p y move in front of the buffer; nothing
 * checks or clamps.
 */
typedef struct PxliRect {
  int32_t x;      /**< First column, in pixels. */
  int32_t y;      /**< First row. */
  int32_t width;  /**< Columns to process. */
  int32_t height; /**< Rows to process. */
} PxliRect;

/** A pixel position. */
typedef struct PxliPoint {
  int32_t x; /**< Column. */
  int32_t y; /**< Row. */
} PxliPoint;

/** A position in single-precision pixel coordinates. */
typedef struct PxliPoint_32f {
  Pxl32f x; /**< Column. */
  Pxl32f y; /**< Row. */
} PxliPoint_32f;

/** A position in double-precision pixel coordinates. */
typedef struct PxliPoint_64f {
  Pxl64f x; /**< Column. */
  Pxl64f y; /**< Row. */
} PxliPoint_64f;

/** A rectangle in double-precision pixel coordinates. */
typedef struct PxliRect_64f {
  Pxl64f x;      /**< Left edge. */
  Pxl64f y;      /**< Top edge. */
  Pxl64f width;  /**< Width. */
  Pxl64f height; /**< Height. */
} PxliRect_64f;

/** Border widths around an image, in pixels. */
typedef struct PxliBorderSize {
  int32_t borderLeft;   /**< Columns to the left. */
  int32_t borderTop;    /**< Rows above. */
  int32_t borderRight;  /**< Columns to the right. */
  int32_t borderBottom; /**< Rows below. */
} PxliBorderSize;

/**
 * The result of every export that reports success or failure: zero is
 * success, a negative value an error (the failing kernel wrote nothing), a
 * positive value a warning (the operation ran to its end).
 */
typedef int32_t PxlStatus;

/** Status codes.  Each export's description lists those it returns. */
enum {
  /* success, warnings and information */
  pxlStsNoErr = 0,                /**< No error. */
  pxlStsNoOperation = 1,          /**< Nothing was done: SetNumThreads(), GetNumThreads(). */
  pxlStsDivByZero = 2,            /**< Zero divisor(s) met; every pixel was still computed. */
  pxlStsSqrtNegArg = 3,           /**< Negative square-root argument(s); every pixel computed. */
  pxlStsLnZeroArg = 7,            /**< Zero logarithm argument(s); every pixel computed. */
  pxlStsLnNegArg = 8,             /**< Negative logarithm argument(s); every pixel computed. */
  pxlStsNonIntelCpu = 20,         /**< Init(): another vendor's processor; not a failure. */
  pxlStsWrongIntersectROI = 29,   /**< The regions do not intersect; nothing was written. */
  pxlStsWrongIntersectQuad = 30,  /**< The quadrangle misses the regions; nothing was written. */
  pxlStsNotSupportedCpu = 36,     /**< Init(): the processor lacks SSE2. */
  pxlStsNoAntialiasing = 46,      /**< The mode does not support antialiasing. */
  pxlStsSizeWrn = 48,             /**< The size does not allow the full operation. */
  pxlStsFeatureNotSupported = 49, /**< Init(): AVX or AVX-512 without operating-system support. */
  pxlStsFeaturesCombination = 51, /**< Init(): an inconsistent combination of features. */

  /* errors: nothing was written by the failing kernel */
  pxlStsNoMemErr = -4,             /**< Not enough memory for working buffers. */
  pxlStsBadArgErr = -5,            /**< An argument or parameter is wrong. */
  pxlStsSizeErr = -6,              /**< A width or height below 1. */
  pxlStsRangeErr = -7,             /**< A lower bound above the upper bound. */
  pxlStsNullPtrErr = -8,           /**< A null pointer. */
  pxlStsDivByZeroErr = -10,        /**< Division by a zero constant. */
  pxlStsOutOfRangeErr = -11,       /**< An argument out of range, or a point outside the image. */
  pxlStsScaleRangeErr = -12,       /**< Scale bounds out of range. */
  pxlStsContextMatchErr = -13,     /**< A context record made for another operation. */
  pxlStsNotSupportedModeErr = -14, /**< A mode that is not supported. */
  pxlStsStepErr = -16,             /**< A step the export cannot work with. */
  pxlStsThresholdErr = -19,        /**< Invalid threshold bounds. */
  pxlStsMirrorFlipErr = -22,       /**< Invalid flip mode. */
  pxlStsInterpolationErr = -23,    /**< Invalid interpolation mode. */
  pxlStsMaskSizeErr = -33,         /**< Invalid mask size. */
  pxlStsEpsValErr = -36,           /**< Negative epsilon. */
  pxlStsChannelErr = -47,          /**< Illegal channel number. */
  pxlStsGammaRangeErr = -49,       /**< Gamma range bounds at or below zero. */
  pxlStsAlphaTypeErr = -50,        /**< Illegal kind of alpha compositing. */
  pxlStsCOIErr = -52,              /**< Channel of interest out of range. */
  pxlStsNumChannelsErr = -53,      /**< Number of channels wrong or not supported. */
  pxlStsDitherLevelsErr = -54,     /**< Number of dithering levels out of range. */
  pxlStsNoiseValErr = -55,         /**< Wrong noise amplitude for dithering. */
  pxlStsCoeffErr = -56,            /**< Wrong transformation coefficients. */
  pxlStsRectErr = -57,             /**< A rectangle of size 1 or less. */
  pxlStsQuadErr = -58,             /**< A quadrangle that is not convex or degenerates. */
  pxlStsDataTypeErr = -59,         /**< Data type wrong or not supported. */
  pxlStsChannelOrderErr = -60,     /**< Wrong order of destination channels. */
  pxlStsLUTNofLevelsErr = -106,    /**< Fewer than 2 table levels. */
  pxlStsHistoNofLevelsErr = -107,  /**< Fewer than 2 histogram levels. */
  pxlStsNotEvenStepErr = -108,     /**< A step that is not a multiple of the pixel size. */
  pxlStsQualityIndexErr = -210,    /**< Quality index of a constant image. */
  pxlStsRoundModeNotSupportedErr = -213,   /**< Rounding mode not supported. */
  pxlStsUnknownStatusCodeErr = -216,       /**< Unknown status code. */
  pxlStsDitherTypeErr = -224,              /**< Dithering type not supported. */
  pxlStsBorderErr = -225,                  /**< Illegal border type. */
  pxlStsWarpDirectionErr = -231,           /**< Illegal warp direction. */
  pxlStsExceededSizeErr = -232,            /**< Size above the largest supported region. */
  pxlStsInplaceModeNotSupportedErr = -9998 /**< In-place operation not supported. */
};

/** @} */

#ifdef __cplusplus
}
#endif

#endif /* PXL_TYPES_H */
