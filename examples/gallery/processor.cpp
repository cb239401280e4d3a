#include "gallery/processor.h"

namespace gallery {
namespace {

struct FeatureName {
  Pxl64u bit;
  const char* name;
};

const FeatureName kFeatureNames[] = {
    {PXL_CPU_MMX, "MMX"},
    {PXL_CPU_SSE, "SSE"},
    {PXL_CPU_SSE2, "SSE2"},
    {PXL_CPU_SSE3, "SSE3"},
    {PXL_CPU_SSSE3, "SSSE3"},
    {PXL_CPU_MOVBE, "MOVBE"},
    {PXL_CPU_SSE41, "SSE4.1"},
    {PXL_CPU_SSE42, "SSE4.2"},
    {PXL_CPU_AVX, "AVX"},
    {PXL_CPU_AVX_OS, "AVX(OS)"},
    {PXL_CPU_AES, "AES"},
    {PXL_CPU_CLMUL, "CLMUL"},
    {PXL_CPU_RDRAND, "RDRAND"},
    {PXL_CPU_F16C, "F16C"},
    {PXL_CPU_AVX2, "AVX2"},
    {PXL_CPU_ADX, "ADX"},
    {PXL_CPU_RDSEED, "RDSEED"},
    {PXL_CPU_PREFETCHW, "PREFETCHW"},
    {PXL_CPU_SHA, "SHA"},
    {PXL_CPU_AVX512F, "AVX512F"},
    {PXL_CPU_AVX512CD, "AVX512CD"},
    {PXL_CPU_AVX512ER, "AVX512ER"},
    {PXL_CPU_AVX512PF, "AVX512PF"},
    {PXL_CPU_AVX512BW, "AVX512BW"},
    {PXL_CPU_AVX512DQ, "AVX512DQ"},
    {PXL_CPU_AVX512VL, "AVX512VL"},
    {PXL_CPU_AVX512VBMI, "AVX512VBMI"},
    {PXL_CPU_MPX, "MPX"},
    {PXL_CPU_AVX5124FMAPS, "AVX512_4FMAPS"},
    {PXL_CPU_AVX5124VNNIW, "AVX512_4VNNIW"},
    {PXL_CPU_MODEL_TEST, "MODEL_TEST"},
    {PXL_CPU_AVX512IFMA, "AVX512IFMA"},
    {PXL_CPU_AVX512_OS, "AVX512(OS)"},
    {PXL_CPU_AVX512VPOPCNT, "AVX512VPOPCNTDQ"},
    {PXL_CPU_AVX512BITALG, "AVX512BITALG"},
};

// The library does not report the level it picked, so recompute it from the
// feature mask by the same rule: the highest level whose instruction sets are
// all present and, for AVX and AVX-512, whose register state the operating
// system saves.
int LevelFromFeatures(Pxl64u mask) {
  const auto has = [mask](Pxl64u bits) { return (mask & bits) == bits; };
  if (has(PXL_CPU_AVX512F | PXL_CPU_AVX512CD | PXL_CPU_AVX512BW | PXL_CPU_AVX512DQ |
          PXL_CPU_AVX512VL | PXL_CPU_AVX512_OS))
    return 5;
  if (has(PXL_CPU_AVX2 | PXL_CPU_AVX_OS)) return 4;
  if (has(PXL_CPU_AVX | PXL_CPU_AVX_OS)) return 3;
  if (has(PXL_CPU_SSE42)) return 2;
  if (mask & (PXL_CPU_SSE41 | PXL_CPU_MOVBE | PXL_CPU_SSSE3)) return 1;
  return 0;
}

}  // namespace

const char* StatusName(PxlStatus status) {
  switch (status) {
#define PXL_STATUS_CASE(name) \
  case name:                  \
    return #name;
    PXL_STATUS_CASE(pxlStsNoErr)
    PXL_STATUS_CASE(pxlStsNoOperation)
    PXL_STATUS_CASE(pxlStsDivByZero)
    PXL_STATUS_CASE(pxlStsSqrtNegArg)
    PXL_STATUS_CASE(pxlStsLnZeroArg)
    PXL_STATUS_CASE(pxlStsLnNegArg)
    PXL_STATUS_CASE(pxlStsNonIntelCpu)
    PXL_STATUS_CASE(pxlStsWrongIntersectROI)
    PXL_STATUS_CASE(pxlStsWrongIntersectQuad)
    PXL_STATUS_CASE(pxlStsNotSupportedCpu)
    PXL_STATUS_CASE(pxlStsNoAntialiasing)
    PXL_STATUS_CASE(pxlStsSizeWrn)
    PXL_STATUS_CASE(pxlStsFeatureNotSupported)
    PXL_STATUS_CASE(pxlStsFeaturesCombination)
    PXL_STATUS_CASE(pxlStsNoMemErr)
    PXL_STATUS_CASE(pxlStsBadArgErr)
    PXL_STATUS_CASE(pxlStsSizeErr)
    PXL_STATUS_CASE(pxlStsRangeErr)
    PXL_STATUS_CASE(pxlStsNullPtrErr)
    PXL_STATUS_CASE(pxlStsDivByZeroErr)
    PXL_STATUS_CASE(pxlStsOutOfRangeErr)
    PXL_STATUS_CASE(pxlStsScaleRangeErr)
    PXL_STATUS_CASE(pxlStsContextMatchErr)
    PXL_STATUS_CASE(pxlStsNotSupportedModeErr)
    PXL_STATUS_CASE(pxlStsStepErr)
    PXL_STATUS_CASE(pxlStsThresholdErr)
    PXL_STATUS_CASE(pxlStsMirrorFlipErr)
    PXL_STATUS_CASE(pxlStsInterpolationErr)
    PXL_STATUS_CASE(pxlStsMaskSizeErr)
    PXL_STATUS_CASE(pxlStsEpsValErr)
    PXL_STATUS_CASE(pxlStsChannelErr)
    PXL_STATUS_CASE(pxlStsGammaRangeErr)
    PXL_STATUS_CASE(pxlStsAlphaTypeErr)
    PXL_STATUS_CASE(pxlStsCOIErr)
    PXL_STATUS_CASE(pxlStsNumChannelsErr)
    PXL_STATUS_CASE(pxlStsDitherLevelsErr)
    PXL_STATUS_CASE(pxlStsNoiseValErr)
    PXL_STATUS_CASE(pxlStsCoeffErr)
    PXL_STATUS_CASE(pxlStsRectErr)
    PXL_STATUS_CASE(pxlStsQuadErr)
    PXL_STATUS_CASE(pxlStsDataTypeErr)
    PXL_STATUS_CASE(pxlStsChannelOrderErr)
    PXL_STATUS_CASE(pxlStsLUTNofLevelsErr)
    PXL_STATUS_CASE(pxlStsHistoNofLevelsErr)
    PXL_STATUS_CASE(pxlStsNotEvenStepErr)
    PXL_STATUS_CASE(pxlStsQualityIndexErr)
    PXL_STATUS_CASE(pxlStsRoundModeNotSupportedErr)
    PXL_STATUS_CASE(pxlStsUnknownStatusCodeErr)
    PXL_STATUS_CASE(pxlStsDitherTypeErr)
    PXL_STATUS_CASE(pxlStsBorderErr)
    PXL_STATUS_CASE(pxlStsWarpDirectionErr)
    PXL_STATUS_CASE(pxlStsExceededSizeErr)
    PXL_STATUS_CASE(pxlStsInplaceModeNotSupportedErr)
#undef PXL_STATUS_CASE
    default:
      return status < 0 ? "error" : "warning";
  }
}

std::string FeatureNames(Pxl64u mask) {
  std::string names;
  for (const FeatureName& f : kFeatureNames) {
    if (mask & f.bit) {
      if (!names.empty()) names += ' ';
      names += f.name;
    }
  }
  return names.empty() ? "(none)" : names;
}

std::string LevelName(Pxl64u mask) {
  static const char* const kNames[] = {
      "0 (SSE2/SSE3)", "1 (SSSE3/SSE4.1)", "2 (SSE4.2)",
      "3 (AVX)",       "4 (AVX2/FMA/BMI)", "5 (AVX-512)",
  };
  return kNames[LevelFromFeatures(mask)];
}

}  // namespace gallery
