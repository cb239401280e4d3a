// Regions, status texts and the dispatch tables.
#include <gtest/gtest.h>

#include <cstring>
#include <set>
#include <string>

#include "core/cpu.h"
#include "core/dispatch.h"
#include "core/region.h"
#include "core/status.h"
#include "pxl/pxl.h"

namespace {

TEST(Region, RowAndColumnOffsetsAreWrapping32BitProducts) {
  // y * step passes 2^31 - 1 and wraps to a negative offset.
  EXPECT_EQ(-2147483648LL, pxl::RegionOffset(0, 2, 1 << 30, 1, 1));
  EXPECT_EQ(-2147483648LL + 1000, pxl::RegionOffset(0, 2, (1 << 30) + 500, 1, 1));
  // x * elements a pixel wraps in 32 bits before the element width widens it.
  EXPECT_EQ(0, pxl::RegionOffset(0x40000000, 0, 0, 4, 4));
  EXPECT_EQ(-int64_t{0x70000000} * 4, pxl::RegionOffset(0x30000000, 0, 0, 3, 4));
  // Negative coordinates move in front of the base.
  EXPECT_EQ(-2 * 100 - 3 * 4 * 4, pxl::RegionOffset(-3, -2, 100, 4, 4));
}

TEST(Region, EachImageUsesItsOwnPixelSize) {
  // Three channels to one: the source moves by 3x bytes, the destination by x.
  alignas(8) uint8_t buf[64];
  const PxliRect roi{2, 1, 4, 4};
  EXPECT_EQ(buf + 6 + 20, pxl::RegionStart(buf, 20, roi, 3));
  EXPECT_EQ(buf + 2 + 20, pxl::RegionStart(buf, 20, roi, 1));
  float* f = reinterpret_cast<float*>(buf);
  EXPECT_EQ(reinterpret_cast<uint8_t*>(f) + 20 + 2 * 16,
            reinterpret_cast<uint8_t*>(pxl::RegionStart(f, 20, roi, 4)));
  Pxl8u* planes[3] = {buf, buf + 10, buf + 20};
  Pxl8u* moved[3];
  pxl::RegionStartPlanes(planes, 3, 7, roi, moved);
  for (int i = 0; i < 3; ++i) EXPECT_EQ(planes[i] + 7 + 2, moved[i]);
  EXPECT_EQ(buf + 1 * 9 + 2, pxl::MaskStart(buf, 9, roi));
}

TEST(Status, EveryCodeHasItsOwnMessageNamedAfterIt) {
  struct Named {
    PxlStatus code;
    const char* name;
  };
#define N(c) \
  { c, #c }
  const Named codes[] = {
      N(pxlStsNoErr),
      N(pxlStsNoOperation),
      N(pxlStsDivByZero),
      N(pxlStsSqrtNegArg),
      N(pxlStsLnZeroArg),
      N(pxlStsLnNegArg),
      N(pxlStsNonIntelCpu),
      N(pxlStsWrongIntersectROI),
      N(pxlStsWrongIntersectQuad),
      N(pxlStsNotSupportedCpu),
      N(pxlStsNoAntialiasing),
      N(pxlStsSizeWrn),
      N(pxlStsFeatureNotSupported),
      N(pxlStsFeaturesCombination),
      N(pxlStsNoMemErr),
      N(pxlStsBadArgErr),
      N(pxlStsSizeErr),
      N(pxlStsRangeErr),
      N(pxlStsNullPtrErr),
      N(pxlStsDivByZeroErr),
      N(pxlStsOutOfRangeErr),
      N(pxlStsScaleRangeErr),
      N(pxlStsContextMatchErr),
      N(pxlStsNotSupportedModeErr),
      N(pxlStsStepErr),
      N(pxlStsThresholdErr),
      N(pxlStsMirrorFlipErr),
      N(pxlStsInterpolationErr),
      N(pxlStsMaskSizeErr),
      N(pxlStsEpsValErr),
      N(pxlStsChannelErr),
      N(pxlStsGammaRangeErr),
      N(pxlStsAlphaTypeErr),
      N(pxlStsCOIErr),
      N(pxlStsNumChannelsErr),
      N(pxlStsDitherLevelsErr),
      N(pxlStsNoiseValErr),
      N(pxlStsCoeffErr),
      N(pxlStsRectErr),
      N(pxlStsQuadErr),
      N(pxlStsDataTypeErr),
      N(pxlStsChannelOrderErr),
      N(pxlStsLUTNofLevelsErr),
      N(pxlStsHistoNofLevelsErr),
      N(pxlStsNotEvenStepErr),
      N(pxlStsQualityIndexErr),
      N(pxlStsRoundModeNotSupportedErr),
      N(pxlStsUnknownStatusCodeErr),
      N(pxlStsDitherTypeErr),
      N(pxlStsBorderErr),
      N(pxlStsWarpDirectionErr),
      N(pxlStsExceededSizeErr),
      N(pxlStsInplaceModeNotSupportedErr),
  };
#undef N
  std::set<std::string> texts;
  for (const Named& n : codes) {
    const std::string text = pxlStatusText(n.code);
    EXPECT_EQ(0u, text.rfind(std::string(n.name) + ": ", 0)) << text;
    EXPECT_GT(text.size(), std::strlen(n.name) + 4);
    texts.insert(text);
  }
  EXPECT_EQ(sizeof(codes) / sizeof(codes[0]), texts.size());
  EXPECT_STREQ("pxlStsNoErr: No errors", pxlStatusText(0));
  EXPECT_STREQ("pxlStsNonIntelCpu: The target CPU is not Genuine Intel", pxlStatusText(20));
}

TEST(Status, UnknownCodesReadAsUnknown) {
  const char* unknown = pxlStatusText(pxlStsUnknownStatusCodeErr);
  EXPECT_STREQ("pxlStsUnknownStatusCodeErr: Unknown status code", unknown);
  for (PxlStatus code : {-1, -2, -3, -9, 4, 5, 99, -100000, 0x7FFFFFFF})
    EXPECT_STREQ(unknown, pxlStatusText(code)) << code;
}

TEST(Dispatch, EveryKernelHasAVersionAtEachLevelAtOrBelowIt) {
  ASSERT_GT(pxl::g_kernelCount, 0);
  std::set<std::string> names;
  for (int i = 0; i < pxl::g_kernelCount; ++i) {
    const pxl::KernelInfo& k = pxl::g_kernelInfo[i];
    EXPECT_TRUE(names.insert(k.name).second) << k.name << " is registered twice";
    EXPECT_EQ(0, k.versionAtLevel[0]) << k.name;
    for (int level = 1; level < pxl::kLevelCount; ++level) {
      EXPECT_LE(k.versionAtLevel[level], level) << k.name;
      EXPECT_GE(k.versionAtLevel[level], k.versionAtLevel[level - 1]) << k.name;
    }
  }
}

TEST(Dispatch, ForcedIndexReachesTheStubsAndMinusOneRestartsLazily) {
  const int top = pxl::test::MaxSupportedLevel();
  EXPECT_GE(top, 0);
  EXPECT_LE(top, 5);
  const int32_t saved = pxl::test::ForceLevel(-1);
  int step = 0;
  void* p = Malloc_8u_C1(3, 3, &step);  // first call through the lazy entry
  EXPECT_NE(nullptr, p);
  EXPECT_EQ(64, step);
  EXPECT_EQ(top, pxl::JumpIndex());
  Free(p);
  pxl::test::ForceLevel(saved);
}

}  // namespace
