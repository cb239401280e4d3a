// Every Convert member against references computed in long double from the
// rules (saturation, nearest-even, the three rounding modes, exact powers of
// two), at every processor level, on guarded images with the values where
// conversions go wrong: bounds, halves, infinities, NaN, subnormals.
#include "primitives/convert.h"

#include <gtest/gtest.h>

#include <cfloat>
#include <cmath>
#include <limits>
#include <type_traits>

#include "support/grid.h"
#include "support/values.h"

namespace {

using namespace pxltest;

// ---- references -------------------------------------------------------------------

template <typename D>
D Saturated(long double y) {
  if (y < Lo<D>()) return std::numeric_limits<D>::lowest();
  if (y > Hi<D>()) return std::numeric_limits<D>::max();
  return static_cast<D>(y);
}

template <typename S, typename D>
D RefPlain(S v) {
  if constexpr (std::is_floating_point<D>::value && std::is_integral<S>::value) {
    return static_cast<D>(v);
  } else if constexpr (std::is_same<S, float>::value) {
    return static_cast<D>(v);
  } else if constexpr (std::is_same<S, double>::value) {
    if (std::isfinite(v) && std::fabs(v) > FLT_MAX) return v > 0 ? FLT_MAX : -FLT_MAX;
    return static_cast<float>(v);
  } else {
    return Saturated<D>(static_cast<long double>(v));
  }
}

long double Rounded(long double y, int mode) {
  if (mode == pxlRndZero) return std::trunc(y);
  if (mode == pxlRndNear) return std::nearbyint(y);
  return std::round(y);  // ties away from zero
}

template <typename S, typename D>
D RefScaled(S v, int mode, int sf) {
  if constexpr (std::is_floating_point<S>::value) {
    if (std::isnan(v)) return 0;
    const int e = sf < -1000 ? 1000 : (sf > 1000 ? -1000 : -sf);
    return Saturated<D>(Rounded(std::ldexp(static_cast<long double>(v), e), mode));
  } else {
    const int f = sf > 31 ? 31 : (sf < -15 ? -15 : sf);
    return Saturated<D>(Rounded(std::ldexp(static_cast<long double>(v), -f), mode));
  }
}

// ---- runners --------------------------------------------------------------------------

template <typename S, typename D, int C, int NV, typename Call, typename Ref>
void Check(const std::vector<Geometry>& geometries, Call call, Ref ref, const std::string& what) {
  ForEachLevel([&](int level) {
    for (const Geometry& g : geometries) {
      Img<S> src(g.imgW, g.imgH, C, g.srcPad, g.srcShift);
      Img<D> dst(g.imgW, g.imgH, C, g.dstPad, g.dstShift);
      src.randomize(ValueRng());
      dst.randomize(ValueRng());
      src.fill([] { return Draw<S>(); });
      std::vector<uint8_t> want = dst.bytes();
      for (int y = g.roi.y; y < g.roi.y + g.roi.height; ++y)
        for (int x = g.roi.x; x < g.roi.x + g.roi.width; ++x)
          for (int k = 0; k < NV; ++k) Poke(want, dst.index(x, y, k), ref(src.at(x, y, k)));
      ASSERT_EQ(pxlStsNoErr, call(src.data(), src.step(), dst.data(), dst.step(), g.roi));
      ASSERT_EQ("", Diff(dst, dst.bytes(), want))
          << what << ", level " << level << ", width " << g.roi.width;
    }
  });
}

template <typename S, typename D, int C, int NV>
void RunPlain(PxlStatus (*fn)(const S*, int, D*, int, PxliRect)) {
  Check<S, D, C, NV>(Geometries(), fn, RefPlain<S, D>, "plain");
  Img<S> src(4, 4, C);
  Img<D> dst(4, 4, C);
  const PxliRect roi{0, 0, 4, 4};
  ExpectRefused(
      pxlStsNullPtrErr, [&] { return fn(nullptr, src.step(), dst.data(), dst.step(), roi); },
      "null source", dst);
  ExpectRefused(
      pxlStsNullPtrErr, [&] { return fn(src.data(), src.step(), nullptr, dst.step(), roi); },
      "null destination", dst);
  for (const PxliRect& bad : BadSizes())
    ExpectRefused(
        pxlStsSizeErr, [&] { return fn(src.data(), src.step(), dst.data(), dst.step(), bad); },
        "bad size", dst);
}

template <typename S, typename D, int C, int NV>
void RunScaled(PxlStatus (*fn)(const S*, int, D*, int, PxliRect, PxlRoundMode, int)) {
  std::vector<Geometry> some;
  const std::vector<Geometry> all = Geometries();
  for (size_t i = 0; i < all.size(); i += 4) some.push_back(all[i]);
  some.push_back(all.back());  // rows without gaps
  for (int mode : {pxlRndZero, pxlRndNear, pxlRndFinancial})
    for (int sf : {-20, -15, -1, 0, 1, 7, 31, 40}) {
      Check<S, D, C, NV>(
          some,
          [&](const S* s, int ss, D* d, int ds, PxliRect roi) {
            return fn(s, ss, d, ds, roi, static_cast<PxlRoundMode>(mode), sf);
          },
          [&](S v) { return RefScaled<S, D>(v, mode, sf); },
          "mode " + std::to_string(mode) + ", factor " + std::to_string(sf));
    }
  Img<S> src(4, 4, C);
  Img<D> dst(4, 4, C);
  const PxliRect roi{0, 0, 4, 4};
  const auto bad = static_cast<PxlRoundMode>(3);
  ExpectRefused(
      pxlStsNullPtrErr,
      [&] { return fn(nullptr, src.step(), dst.data(), dst.step(), roi, bad, 0); },
      "null source before the mode", dst);
  ExpectRefused(
      pxlStsNullPtrErr,
      [&] { return fn(src.data(), src.step(), nullptr, dst.step(), roi, pxlRndNear, 0); },
      "null destination", dst);
  for (const PxliRect& b : BadSizes())
    ExpectRefused(
        pxlStsSizeErr,
        [&] { return fn(src.data(), src.step(), dst.data(), dst.step(), b, bad, 0); },
        "bad size before the mode", dst);
  for (int m : {3, -1, 100})
    ExpectRefused(
        pxlStsRoundModeNotSupportedErr,
        [&] {
          return fn(src.data(), src.step(), dst.data(), dst.step(), roi,
                    static_cast<PxlRoundMode>(m), 0);
        },
        "mode " + std::to_string(m), dst);
}

#define PXL_TEST_Convert(S, D, L) RunPlain<Pxl##S, Pxl##D, PXL_CH_##L, PXL_NV_##L>
#define PXL_TEST_ConvertSfs(S, D, L) RunScaled<Pxl##S, Pxl##D, PXL_CH_##L, PXL_NV_##L>
#define PXL_TEST_ConvertRs() RunPlain<Pxl16s, Pxl16u, 1, 1>

const MemberCase kConvertCases[] = {
#include "support/member_cases.h"
// the rows, as cases
#include "primitives/convert.def"
};

class ConvertMember : public testing::TestWithParam<MemberCase> {};
TEST_P(ConvertMember, MatchesReferenceAtEveryLevelAndRefusesBadArguments) { GetParam().run(); }
INSTANTIATE_TEST_SUITE_P(Grid, ConvertMember, testing::ValuesIn(kConvertCases), CaseName);

TEST(Convert, RoundingModesOnHalves) {
  const Pxl32f in[6] = {2.5f, 3.5f, -2.5f, -3.5f, 2.7f, -2.7f};
  const Pxl16s want[3][6] = {{2, 3, -2, -3, 2, -2}, {2, 4, -2, -4, 3, -3}, {3, 4, -3, -4, 3, -3}};
  for (int mode = 0; mode < 3; ++mode) {
    Pxl16s out[6];
    ASSERT_EQ(pxlStsNoErr, Convert_32f16s_C1RSfs(in, 24, out, 12, {0, 0, 6, 1},
                                                 static_cast<PxlRoundMode>(mode), 0));
    for (int i = 0; i < 6; ++i) EXPECT_EQ(want[mode][i], out[i]) << mode << " " << in[i];
  }
}

TEST(Convert, ThirtyTwoBitFactorsAreBounded) {
  // 2^31 - 1 over 2^31 (a factor of 40 acts as 31) rounds to 1; at 0 the
  // value only saturates.
  const Pxl32s v[2] = {2147483647, -70000};
  Pxl16s out[2];
  ASSERT_EQ(pxlStsNoErr, Convert_32s16s_C1RSfs(v, 8, out, 4, {0, 0, 2, 1}, pxlRndNear, 40));
  EXPECT_EQ(1, out[0]);
  EXPECT_EQ(0, out[1]);
  ASSERT_EQ(pxlStsNoErr, Convert_32s16s_C1RSfs(v, 8, out, 4, {0, 0, 2, 1}, pxlRndNear, 0));
  EXPECT_EQ(32767, out[0]);
  EXPECT_EQ(-32768, out[1]);
}

}  // namespace
