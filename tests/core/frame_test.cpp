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
#include "pxl_units.h"

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

TEST(Status, EveryCodeHasItsNumberAndItsOwnText) {
  struct Known {
    PxlStatus number;
    PxlStatus constant;
    const char* text;
  };
  const Known known[] = {
      {0, pxlStsNoErr, "pxlStsNoErr: No errors"},
      {1, pxlStsNoOperation, "pxlStsNoOperation: No operation has been executed"},
      {2, pxlStsDivByZero, "pxlStsDivByZero: Zero value(s) for the divisor in the Div function"},
      {3, pxlStsSqrtNegArg,
       "pxlStsSqrtNegArg: Negative value(s) for the argument in the Sqrt function"},
      {7, pxlStsLnZeroArg, "pxlStsLnZeroArg: Zero value(s) for the argument in the Ln function"},
      {8, pxlStsLnNegArg, "pxlStsLnNegArg: Negative value(s) for the argument in the Ln function"},
      {20, pxlStsNonIntelCpu, "pxlStsNonIntelCpu: The target CPU is not Genuine Intel"},
      {29, pxlStsWrongIntersectROI,
       "pxlStsWrongIntersectROI: ROI has no intersection with the source or destination ROI. No "
       "operation"},
      {30, pxlStsWrongIntersectQuad,
       "pxlStsWrongIntersectQuad: Quadrangle has no intersection with the source or destination "
       "ROI. No operation"},
      {36, pxlStsNotSupportedCpu, "pxlStsNotSupportedCpu: The CPU is not supported"},
      {46, pxlStsNoAntialiasing, "pxlStsNoAntialiasing: The mode does not support antialiasing"},
      {48, pxlStsSizeWrn, "pxlStsSizeWrn: The size does not allow to perform full operation"},
      {49, pxlStsFeatureNotSupported,
       "pxlStsFeatureNotSupported: Current CPU doesn't support at least 1 of the desired features"},
      {51, pxlStsFeaturesCombination, "pxlStsFeaturesCombination: Wrong combination of features"},
      {-4, pxlStsNoMemErr, "pxlStsNoMemErr: Not enough memory for the operation"},
      {-5, pxlStsBadArgErr, "pxlStsBadArgErr: Incorrect arg/param of the function"},
      {-6, pxlStsSizeErr, "pxlStsSizeErr: Incorrect value for data size"},
      {-7, pxlStsRangeErr,
       "pxlStsRangeErr: Incorrect values for bounds: the lower bound is greater than the upper "
       "bound"},
      {-8, pxlStsNullPtrErr, "pxlStsNullPtrErr: Null pointer error"},
      {-10, pxlStsDivByZeroErr, "pxlStsDivByZeroErr: An attempt to divide by zero"},
      {-11, pxlStsOutOfRangeErr,
       "pxlStsOutOfRangeErr: Argument is out of range, or point is outside the image"},
      {-12, pxlStsScaleRangeErr, "pxlStsScaleRangeErr: Scale bounds are out of range"},
      {-13, pxlStsContextMatchErr,
       "pxlStsContextMatchErr: Context parameter does not match the operation"},
      {-14, pxlStsNotSupportedModeErr,
       "pxlStsNotSupportedModeErr: The requested mode is currently not supported"},
      {-16, pxlStsStepErr, "pxlStsStepErr: Step value is not valid"},
      {-19, pxlStsThresholdErr, "pxlStsThresholdErr: Invalid threshold bounds"},
      {-22, pxlStsMirrorFlipErr, "pxlStsMirrorFlipErr: Invalid flip mode"},
      {-23, pxlStsInterpolationErr, "pxlStsInterpolationErr: Invalid interpolation mode"},
      {-33, pxlStsMaskSizeErr, "pxlStsMaskSizeErr: Invalid mask size"},
      {-36, pxlStsEpsValErr, "pxlStsEpsValErr: Negative epsilon value"},
      {-47, pxlStsChannelErr, "pxlStsChannelErr: Illegal channel number"},
      {-49, pxlStsGammaRangeErr,
       "pxlStsGammaRangeErr: Gamma range bounds is less than, or equal to zero"},
      {-50, pxlStsAlphaTypeErr, "pxlStsAlphaTypeErr: Illegal type of image compositing operation"},
      {-52, pxlStsCOIErr, "pxlStsCOIErr: COI is out of range"},
      {-53, pxlStsNumChannelsErr,
       "pxlStsNumChannelsErr: Number of channels is incorrect, or not supported"},
      {-54, pxlStsDitherLevelsErr,
       "pxlStsDitherLevelsErr: Number of dithering levels is out of range"},
      {-55, pxlStsNoiseValErr,
       "pxlStsNoiseValErr: Incorrect value for noise amplitude for dithering"},
      {-56, pxlStsCoeffErr, "pxlStsCoeffErr: Incorrect values for transformation coefficients"},
      {-57, pxlStsRectErr,
       "pxlStsRectErr: Size of the rectangle region is less than, or equal to 1"},
      {-58, pxlStsQuadErr,
       "pxlStsQuadErr: The quadrangle is nonconvex or degenerates into triangle, line, or point"},
      {-59, pxlStsDataTypeErr, "pxlStsDataTypeErr: Data type is incorrect or not supported"},
      {-60, pxlStsChannelOrderErr,
       "pxlStsChannelOrderErr: Incorrect order of the destination channels"},
      {-106, pxlStsLUTNofLevelsErr,
       "pxlStsLUTNofLevelsErr: Number of levels for LUT is less than 2"},
      {-107, pxlStsHistoNofLevelsErr,
       "pxlStsHistoNofLevelsErr: Number of levels for histogram is less than 2"},
      {-108, pxlStsNotEvenStepErr, "pxlStsNotEvenStepErr: Step value is not pixel multiple"},
      {-210, pxlStsQualityIndexErr,
       "pxlStsQualityIndexErr: Cannot calculate the quality index for an image filled with a "
       "constant"},
      {-213, pxlStsRoundModeNotSupportedErr,
       "pxlStsRoundModeNotSupportedErr: Rounding mode is not supported"},
      {-216, pxlStsUnknownStatusCodeErr, "pxlStsUnknownStatusCodeErr: Unknown status code"},
      {-224, pxlStsDitherTypeErr, "pxlStsDitherTypeErr: Dithering type is not supported"},
      {-225, pxlStsBorderErr, "pxlStsBorderErr: Illegal value for border type"},
      {-231, pxlStsWarpDirectionErr,
       "pxlStsWarpDirectionErr: The warp transform direction is illegal"},
      {-232, pxlStsExceededSizeErr,
       "pxlStsExceededSizeErr: Requested size exceeded the maximum supported ROI size"},
      {-9998, pxlStsInplaceModeNotSupportedErr,
       "pxlStsInplaceModeNotSupportedErr: The inplace operation is currently not supported"},
  };
  EXPECT_EQ(53u, sizeof known / sizeof known[0]);
  for (const Known& k : known) {
    EXPECT_EQ(k.number, k.constant) << k.text;
    EXPECT_STREQ(k.text, pxlStatusText(k.number));
  }
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

// Every table entry against its unit's level map, expanded here on its own
// rather than through the macros that build the tables: entry L + 1 of a
// kernel's table must be the version compiled for level map[L], and map[L]
// must be the highest level at or below L that the unit lists.  A table with
// two levels exchanged would run code the processor may lack and pass every
// other test on a processor that has both.
#define PXL_TEST_UNPACK(...) __VA_ARGS__
#define PXL_TEST_VERSIONS(n, map) PXL_TEST_VERSIONS_(n, PXL_TEST_UNPACK map)
#define PXL_TEST_VERSIONS_(n, ...) PXL_TEST_VERSIONS6(n, __VA_ARGS__)
#define PXL_TEST_VERSIONS6(n, a, b, c, d, e, f)                           \
  PXL_TEST_ADDRESS(::pxl::l##a::n), PXL_TEST_ADDRESS(::pxl::l##b::n),     \
      PXL_TEST_ADDRESS(::pxl::l##c::n), PXL_TEST_ADDRESS(::pxl::l##d::n), \
      PXL_TEST_ADDRESS(::pxl::l##e::n), PXL_TEST_ADDRESS(::pxl::l##f::n)
#define PXL_TEST_ADDRESS(f) reinterpret_cast<const void*>(&f)

// One row a kernel, as data: a loop checks them, so that the test stays one
// small function however many kernels there are.
struct TableRow {
  const char* name;
  const void* table;    // the kernel's seven entries
  const void* want[6];  // the version the level map names at each level
  const char* listed;   // the levels the unit lists
};

const TableRow kTableRows[] = {
#define PXL_KERNEL(unit, ret, name, params, args)         \
  {#name,                                                 \
   reinterpret_cast<const void*>(::pxl::k::name##_table), \
   {PXL_TEST_VERSIONS(name, PXL_UNIT_##unit)},            \
   PXL_UNIT_LISTED_##unit},
#include "core/registry.def"
#undef PXL_KERNEL
};

int HighestListedAtOrBelow(const char* listed, int level) {
  int best = -1;
  for (const char* c = listed; *c; ++c)
    if (*c >= '0' && *c <= '5' && *c - '0' <= level && *c - '0' > best) best = *c - '0';
  return best;
}

TEST(Dispatch, EveryTableEntryIsTheVersionItsLevelMapNames) {
  const int rows = static_cast<int>(sizeof kTableRows / sizeof kTableRows[0]);
  ASSERT_EQ(pxl::g_kernelCount, rows);
  for (int i = 0; i < rows; ++i) {
    const TableRow& r = kTableRows[i];
    const pxl::KernelInfo& info = pxl::g_kernelInfo[i];
    ASSERT_STREQ(r.name, info.name);
    void* const* entries = static_cast<void* const*>(const_cast<void*>(r.table));
    for (int level = 0; level < 6; ++level) {
      EXPECT_EQ(HighestListedAtOrBelow(r.listed, level), info.versionAtLevel[level])
          << r.name << " at level " << level;
      EXPECT_EQ(r.want[level], entries[level + 1])
          << r.name << ": entry of level " << level << " is not the version of level "
          << info.versionAtLevel[level];
      EXPECT_NE(entries[0], entries[level + 1]) << r.name;
    }
  }
}

// An x whose product with the channel count wraps in 32 bits moves every
// image by the wrapped product: 0x55555556 * 3 and 0x40000001 * 4 both wrap
// to a few elements, so a one-pixel region there touches the start of the
// buffers.
TEST(Region, WrappedColumnProductReachesTheExports) {
  alignas(16) Pxl8u src[16], dst[16];
  for (int i = 0; i < 16; ++i) src[i] = static_cast<Pxl8u>(i + 1);
  std::memset(dst, 0, sizeof dst);
  ASSERT_EQ(pxlStsNoErr, Copy_8u_C3R(src, 16, dst, 16, PxliRect{0x55555556, 0, 1, 1}));
  const Pxl8u want3[16] = {0, 0, 3, 4, 5};
  EXPECT_EQ(0, std::memcmp(want3, dst, 16));

  std::memset(dst, 0, sizeof dst);
  ASSERT_EQ(pxlStsNoErr, Copy_8u_C4R(src, 16, dst, 16, PxliRect{0x40000001, 0, 1, 1}));
  const Pxl8u want4[16] = {0, 0, 0, 0, 5, 6, 7, 8};
  EXPECT_EQ(0, std::memcmp(want4, dst, 16));

  alignas(16) Pxl32f f[8] = {};
  const Pxl32f value[4] = {1, 2, 3, 4};
  ASSERT_EQ(pxlStsNoErr, Set_32f_C4R(value, f, 32, PxliRect{0x40000001, 0, 1, 1}));
  for (int i = 0; i < 8; ++i) EXPECT_EQ(i < 4 ? 0.0f : float(i - 3), f[i]) << i;

  // The same offsets from the one place that applies regions.
  EXPECT_EQ(f + 4, pxl::RegionStart(f, 32, PxliRect{0x40000001, 0, 1, 1}, 4));
  EXPECT_EQ(f + 2, pxl::RegionStart(f, 32, PxliRect{0x55555556, 0, 1, 1}, 3));
  EXPECT_EQ(reinterpret_cast<uintptr_t>(f) - 4,
            reinterpret_cast<uintptr_t>(pxl::RegionStart(f, 32, PxliRect{0x55555555, 0, 1, 1}, 3)));
}

}  // namespace
