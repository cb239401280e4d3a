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

TEST(Status, TextsAreUniqueAndNamedForTheirCodes) {
  // Every known code in the numbering has a distinct text "<name>: <message>".
  std::set<std::string> texts;
  const std::string unknown = pxlStatusText(pxlStsUnknownStatusCodeErr);
  for (PxlStatus code = -10000; code <= 100; ++code) {
    const std::string text = pxlStatusText(code);
    if (text == unknown && code != pxlStsUnknownStatusCodeErr) continue;
    EXPECT_EQ(0u, text.rfind("pxlSts", 0)) << code;
    EXPECT_NE(std::string::npos, text.find(": ")) << code;
    EXPECT_TRUE(texts.insert(text).second) << text;
  }
  EXPECT_EQ(53u, texts.size());
  EXPECT_STREQ("pxlStsNoErr: No errors", pxlStatusText(pxlStsNoErr));
  EXPECT_STREQ("pxlStsNonIntelCpu: The target CPU is not Genuine Intel",
               pxlStatusText(pxlStsNonIntelCpu));
  EXPECT_STREQ("pxlStsInplaceModeNotSupportedErr: The inplace operation is currently not supported",
               pxlStatusText(pxlStsInplaceModeNotSupportedErr));
  // Codes outside the table, such as signal-processing ones, read as unknown.
  EXPECT_EQ("pxlStsUnknownStatusCodeErr: Unknown status code", unknown);
  for (PxlStatus code : {-1, -2, -3, -9, 4, 99, -100000, 0x7FFFFFFF})
    EXPECT_EQ(unknown, pxlStatusText(code)) << code;
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
