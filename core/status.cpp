#include "core/status.h"

namespace {

struct StatusText {
  PxlStatus code;
  const char* text;
};

constexpr StatusText kStatusTexts[] = {
    {pxlStsNoErr, "pxlStsNoErr: No errors"},
    {pxlStsNoOperation, "pxlStsNoOperation: No operation has been executed"},
    {pxlStsDivByZero, "pxlStsDivByZero: Zero value(s) for the divisor in the Div function"},
    {pxlStsSqrtNegArg, "pxlStsSqrtNegArg: Negative value(s) for the argument in the Sqrt function"},
    {pxlStsLnZeroArg, "pxlStsLnZeroArg: Zero value(s) for the argument in the Ln function"},
    {pxlStsLnNegArg, "pxlStsLnNegArg: Negative value(s) for the argument in the Ln function"},
    {pxlStsNonIntelCpu, "pxlStsNonIntelCpu: The target CPU is not Genuine Intel"},
    {pxlStsWrongIntersectROI,
     "pxlStsWrongIntersectROI: ROI has no intersection with the source or destination ROI. No "
     "operation"},
    {pxlStsWrongIntersectQuad,
     "pxlStsWrongIntersectQuad: Quadrangle has no intersection with the source or destination ROI. "
     "No operation"},
    {pxlStsNotSupportedCpu, "pxlStsNotSupportedCpu: The CPU is not supported"},
    {pxlStsNoAntialiasing, "pxlStsNoAntialiasing: The mode does not support antialiasing"},
    {pxlStsSizeWrn, "pxlStsSizeWrn: The size does not allow to perform full operation"},
    {pxlStsFeatureNotSupported,
     "pxlStsFeatureNotSupported: Current CPU doesn't support at least 1 of the desired features"},
    {pxlStsFeaturesCombination, "pxlStsFeaturesCombination: Wrong combination of features"},
    {pxlStsNoMemErr, "pxlStsNoMemErr: Not enough memory for the operation"},
    {pxlStsBadArgErr, "pxlStsBadArgErr: Incorrect arg/param of the function"},
    {pxlStsSizeErr, "pxlStsSizeErr: Incorrect value for data size"},
    {pxlStsRangeErr,
     "pxlStsRangeErr: Incorrect values for bounds: the lower bound is greater than the upper "
     "bound"},
    {pxlStsNullPtrErr, "pxlStsNullPtrErr: Null pointer error"},
    {pxlStsDivByZeroErr, "pxlStsDivByZeroErr: An attempt to divide by zero"},
    {pxlStsOutOfRangeErr,
     "pxlStsOutOfRangeErr: Argument is out of range, or point is outside the image"},
    {pxlStsScaleRangeErr, "pxlStsScaleRangeErr: Scale bounds are out of range"},
    {pxlStsContextMatchErr,
     "pxlStsContextMatchErr: Context parameter does not match the operation"},
    {pxlStsNotSupportedModeErr,
     "pxlStsNotSupportedModeErr: The requested mode is currently not supported"},
    {pxlStsStepErr, "pxlStsStepErr: Step value is not valid"},
    {pxlStsThresholdErr, "pxlStsThresholdErr: Invalid threshold bounds"},
    {pxlStsMirrorFlipErr, "pxlStsMirrorFlipErr: Invalid flip mode"},
    {pxlStsInterpolationErr, "pxlStsInterpolationErr: Invalid interpolation mode"},
    {pxlStsMaskSizeErr, "pxlStsMaskSizeErr: Invalid mask size"},
    {pxlStsEpsValErr, "pxlStsEpsValErr: Negative epsilon value"},
    {pxlStsChannelErr, "pxlStsChannelErr: Illegal channel number"},
    {pxlStsGammaRangeErr, "pxlStsGammaRangeErr: Gamma range bounds is less than, or equal to zero"},
    {pxlStsAlphaTypeErr, "pxlStsAlphaTypeErr: Illegal type of image compositing operation"},
    {pxlStsCOIErr, "pxlStsCOIErr: COI is out of range"},
    {pxlStsNumChannelsErr,
     "pxlStsNumChannelsErr: Number of channels is incorrect, or not supported"},
    {pxlStsDitherLevelsErr, "pxlStsDitherLevelsErr: Number of dithering levels is out of range"},
    {pxlStsNoiseValErr, "pxlStsNoiseValErr: Incorrect value for noise amplitude for dithering"},
    {pxlStsCoeffErr, "pxlStsCoeffErr: Incorrect values for transformation coefficients"},
    {pxlStsRectErr, "pxlStsRectErr: Size of the rectangle region is less than, or equal to 1"},
    {pxlStsQuadErr,
     "pxlStsQuadErr: The quadrangle is nonconvex or degenerates into triangle, line, or point"},
    {pxlStsDataTypeErr, "pxlStsDataTypeErr: Data type is incorrect or not supported"},
    {pxlStsChannelOrderErr, "pxlStsChannelOrderErr: Incorrect order of the destination channels"},
    {pxlStsLUTNofLevelsErr, "pxlStsLUTNofLevelsErr: Number of levels for LUT is less than 2"},
    {pxlStsHistoNofLevelsErr,
     "pxlStsHistoNofLevelsErr: Number of levels for histogram is less than 2"},
    {pxlStsNotEvenStepErr, "pxlStsNotEvenStepErr: Step value is not pixel multiple"},
    {pxlStsQualityIndexErr,
     "pxlStsQualityIndexErr: Cannot calculate the quality index for an image filled with a "
     "constant"},
    {pxlStsRoundModeNotSupportedErr,
     "pxlStsRoundModeNotSupportedErr: Rounding mode is not supported"},
    {pxlStsUnknownStatusCodeErr, "pxlStsUnknownStatusCodeErr: Unknown status code"},
    {pxlStsDitherTypeErr, "pxlStsDitherTypeErr: Dithering type is not supported"},
    {pxlStsBorderErr, "pxlStsBorderErr: Illegal value for border type"},
    {pxlStsWarpDirectionErr, "pxlStsWarpDirectionErr: The warp transform direction is illegal"},
    {pxlStsExceededSizeErr,
     "pxlStsExceededSizeErr: Requested size exceeded the maximum supported ROI size"},
    {pxlStsInplaceModeNotSupportedErr,
     "pxlStsInplaceModeNotSupportedErr: The inplace operation is currently not supported"},
};

}  // namespace

const char* pxlStatusText(PxlStatus status) {
  for (const StatusText& s : kStatusTexts)
    if (s.code == status) return s.text;
  return "pxlStsUnknownStatusCodeErr: Unknown status code";
}
