/*
 * pxl - element types, shared records and status codes.
 *
 * An image is a base pointer to the element at row 0, column 0 plus a signed
 * 32-bit row step in bytes.  The host owns every buffer; the library never
 * keeps a pointer after a call returns.
 */
#ifndef PXL_TYPES_H
#define PXL_TYPES_H

#include <stdint.h>

#if defined(PXL_BUILDING_LIBRARY)
#define PXL_API __attribute__((visibility("default")))
#else
#define PXL_API
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* Element types, named by the tokens that stand in export names. */
typedef uint8_t Pxl8u;   /* 8u  */
typedef int8_t Pxl8s;    /* 8s  */
typedef uint16_t Pxl16u; /* 16u */
typedef int16_t Pxl16s;  /* 16s */
typedef uint32_t Pxl32u; /* 32u */
typedef int32_t Pxl32s;  /* 32s */
typedef float Pxl32f;    /* 32f: the working type of the photo algorithms */
typedef double Pxl64f;   /* 64f */
typedef uint64_t Pxl64u; /* feature masks */

/* Width and height of an image or region, passed by value. */
typedef struct PxliSize {
  int32_t width;
  int32_t height;
} PxliSize;

/*
 * A region of interest, passed by value.  The start of each image of a call
 * is moved by y rows (y * step, a 32-bit product that wraps) and x pixels
 * (x * pixel size in elements, 32-bit, then times the element width); the
 * region's width and height become the working size.  Nothing clamps the
 * region to the buffer.
 */
typedef struct PxliRect {
  int32_t x;
  int32_t y;
  int32_t width;
  int32_t height;
} PxliRect;

typedef struct PxliPoint {
  int32_t x;
  int32_t y;
} PxliPoint;

typedef struct PxliPoint_32f {
  Pxl32f x;
  Pxl32f y;
} PxliPoint_32f;

typedef struct PxliPoint_64f {
  Pxl64f x;
  Pxl64f y;
} PxliPoint_64f;

typedef struct PxliRect_64f {
  Pxl64f x;
  Pxl64f y;
  Pxl64f width;
  Pxl64f height;
} PxliRect_64f;

typedef struct PxliBorderSize {
  int32_t borderLeft;
  int32_t borderTop;
  int32_t borderRight;
  int32_t borderBottom;
} PxliBorderSize;

/*
 * Every export that reports success or failure returns a PxlStatus: zero is
 * success, a negative value an error (nothing was written by the failing
 * kernel), a positive value a warning (the operation ran to its end).
 */
typedef int32_t PxlStatus;

enum {
  /* warnings and informational results */
  pxlStsNoErr = 0,
  pxlStsNoOperation = 1, /* SetNumThreads/GetNumThreads */
  pxlStsDivByZero = 2,
  pxlStsSqrtNegArg = 3,
  pxlStsLnZeroArg = 7,
  pxlStsLnNegArg = 8,
  pxlStsNonIntelCpu = 20, /* Init: another vendor; not a failure */
  pxlStsWrongIntersectROI = 29,
  pxlStsWrongIntersectQuad = 30,
  pxlStsNotSupportedCpu = 36,
  pxlStsNoAntialiasing = 46,
  pxlStsSizeWrn = 48,
  pxlStsFeatureNotSupported = 49,
  pxlStsFeaturesCombination = 51,

  /* errors */
  pxlStsNoMemErr = -4,
  pxlStsBadArgErr = -5,
  pxlStsSizeErr = -6,
  pxlStsRangeErr = -7,
  pxlStsNullPtrErr = -8,
  pxlStsDivByZeroErr = -10,
  pxlStsOutOfRangeErr = -11,
  pxlStsScaleRangeErr = -12,
  pxlStsContextMatchErr = -13,
  pxlStsNotSupportedModeErr = -14,
  pxlStsStepErr = -16,
  pxlStsThresholdErr = -19,
  pxlStsMirrorFlipErr = -22,
  pxlStsInterpolationErr = -23,
  pxlStsMaskSizeErr = -33,
  pxlStsEpsValErr = -36,
  pxlStsChannelErr = -47,
  pxlStsGammaRangeErr = -49,
  pxlStsAlphaTypeErr = -50,
  pxlStsCOIErr = -52,
  pxlStsNumChannelsErr = -53,
  pxlStsDitherLevelsErr = -54,
  pxlStsNoiseValErr = -55,
  pxlStsCoeffErr = -56,
  pxlStsRectErr = -57,
  pxlStsQuadErr = -58,
  pxlStsDataTypeErr = -59,
  pxlStsChannelOrderErr = -60,
  pxlStsLUTNofLevelsErr = -106,
  pxlStsHistoNofLevelsErr = -107,
  pxlStsNotEvenStepErr = -108,
  pxlStsQualityIndexErr = -210,
  pxlStsRoundModeNotSupportedErr = -213,
  pxlStsUnknownStatusCodeErr = -216,
  pxlStsDitherTypeErr = -224,
  pxlStsBorderErr = -225,
  pxlStsWarpDirectionErr = -231,
  pxlStsExceededSizeErr = -232,
  pxlStsInplaceModeNotSupportedErr = -9998
};

#ifdef __cplusplus
}
#endif

#endif /* PXL_TYPES_H */
