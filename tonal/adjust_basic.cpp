// Basic adjustments of float RGBA images: apply the region to the image and
// to the map, then hand the rows to the kernel.  Nothing is validated.
#include <math.h>
#include <stdint.h>

#include "core/dispatch.h"
#include "core/region.h"
#include "pxl/pxl_tonal.h"

using pxl::RegionStart;

extern "C" {

PxlStatus AdjustSaturation_32f_AC4IR(Pxl32f* pSrcDst, int srcDstStep, PxliRect roi,
                                     const Pxl32f* pMap, int mapStep) {
  pxl::k::adjustSaturationAC4(RegionStart(pSrcDst, srcDstStep, roi, 4), srcDstStep,
                              RegionStart(pMap, mapStep, roi, 1), mapStep, roi.width, roi.height);
  return pxlStsNoErr;
}

PxlStatus AdjustContrast_32f_AC4IR(Pxl32f* pSrcDst, int srcDstStep, PxliRect roi,
                                   const Pxl32f* pMap, int mapStep) {
  pxl::k::adjustContrastAC4(RegionStart(pSrcDst, srcDstStep, roi, 4), srcDstStep,
                            RegionStart(pMap, mapStep, roi, 1), mapStep, roi.width, roi.height);
  return pxlStsNoErr;
}

PxlStatus AdjustBrightness_32f_AC4IR(Pxl32f* pSrcDst, int srcDstStep, PxliRect roi,
                                     const Pxl32f* pMap, int mapStep) {
  pxl::k::adjustBrightnessAC4(RegionStart(pSrcDst, srcDstStep, roi, 4), srcDstStep,
                              RegionStart(pMap, mapStep, roi, 1), mapStep, roi.width, roi.height);
  return pxlStsNoErr;
}

PxlStatus AdjustBrightness_32f_C4IR(Pxl32f* pSrcDst, int srcDstStep, PxliRect roi,
                                    const Pxl32f* pMap, int mapStep) {
  pxl::k::adjustBrightnessC4(RegionStart(pSrcDst, srcDstStep, roi, 4), srcDstStep,
                             RegionStart(pMap, mapStep, roi, 1), mapStep, roi.width, roi.height);
  return pxlStsNoErr;
}

PxlStatus AdjustExposureLin_32f_C4IMR(Pxl32f* pSrcDst, int srcDstStep, PxliRect roi, Pxl32f value,
                                      const Pxl32f* pMap, int mapStep, Pxl32f minValue,
                                      Pxl32f maxValue) {
  pxl::k::adjustExposureLinMapC4(RegionStart(pSrcDst, srcDstStep, roi, 4), srcDstStep,
                                 RegionStart(pMap, mapStep, roi, 1), mapStep, roi.width, roi.height,
                                 value, minValue, maxValue);
  return pxlStsNoErr;
}

// The curve is chosen once, by the alignment of the region's first pixel; the
// other rows are not looked at.
PxlStatus AdjustExposureLin_32f_C4IR(Pxl32f* pSrcDst, int srcDstStep, PxliRect roi, Pxl32f value) {
  Pxl32f* p = RegionStart(pSrcDst, srcDstStep, roi, 4);
  if ((reinterpret_cast<uintptr_t>(p) & 15) == 0) {
    const float m = powf(2.0f, value * 1.666f);
    // Shoulder: k = 1 for value >= -1, rising linearly to 1.15 at -5 and below.
    const float t = value * 0.25f + 1.25f;
    const float c = t >= 0.0f ? (t < 1.0f ? t : 1.0f) : 0.0f;  // NaN gives 0
    const float d = 1.0f - c;
    const float k = static_cast<float>(static_cast<double>(d) * 0.15 + 1.0);
    pxl::k::adjustExposureLinAlignedC4(p, srcDstStep, roi.width, roi.height, m, k);
  } else {
    pxl::k::adjustExposureLinLumaC4(p, srcDstStep, roi.width, roi.height, powf(2.0f, value));
  }
  return pxlStsNoErr;
}

}  // extern "C"
