// Every Scale and ScaleC member against references of the documented maps,
// at every processor level, on guarded images with the values where range
// maps go wrong; the refusals in their order.
#include "primitives/scale.h"

#include <gtest/gtest.h>

#include <cfloat>
#include <cmath>

#include "support/grid.h"
#include "support/values.h"

namespace {

using namespace pxltest;

template <typename D>
D SaturatedNearest(long double y) {
  if (std::isnan(y)) return 0;
  y = std::nearbyint(y);
  if (y < static_cast<long double>(std::numeric_limits<D>::lowest()))
    return std::numeric_limits<D>::lowest();
  if (y > static_cast<long double>(std::numeric_limits<D>::max()))
    return std::numeric_limits<D>::max();
  return static_cast<D>(y);
}

// The source's full range onto the destination's, rounded to nearest.
template <typename S, typename D>
D RangeRef(S v) {
  const long double ls = std::numeric_limits<S>::lowest(), hs = std::numeric_limits<S>::max();
  const long double ld = std::numeric_limits<D>::lowest(), hd = std::numeric_limits<D>::max();
  return SaturatedNearest<D>((v - ls) * (hd - ld) / (hs - ls) + ld);
}

template <typename T>
constexpr double Top() {
  return static_cast<double>(std::numeric_limits<T>::max());
}

template <typename S, typename D>
D FloatRef(S v, float vMin, float vMax) {
  if constexpr (std::is_same<D, float>::value) {
    const double m = Top<S>();
    return static_cast<float>((double{vMin} * (m - v) + double{vMax} * v) / m);
  } else {
    return SaturatedNearest<D>((double{v} - vMin) * Top<D>() / (double{vMax} - vMin));
  }
}

template <typename S, typename D>
D LinearRef(S v, double m, double a) {
  const double y = static_cast<double>(v) * m + a;
  if constexpr (std::is_same<D, float>::value) {
    if (std::isfinite(y) && std::fabs(y) > FLT_MAX) return y > 0 ? FLT_MAX : -FLT_MAX;
    return static_cast<float>(y);
  } else {
    return SaturatedNearest<D>(y);
  }
}

template <typename S, typename D, int C, int NV, typename Call, typename Ref>
void Check(bool inPlace, Call call, Ref ref, const std::string& what) {
  ForEachLevel([&](int level) {
    for (const Geometry& g : Geometries()) {
      Img<S> src(g.imgW, g.imgH, C, g.srcPad, g.srcShift);
      Img<D> out(g.imgW, g.imgH, C, g.dstPad, g.dstShift);
      src.randomize(ValueRng());
      out.randomize(ValueRng());
      src.fill([] { return Draw<S>(); });
      Img<D>* chosen = &out;
      if constexpr (std::is_same<S, D>::value) chosen = inPlace ? &src : &out;
      Img<D>& dst = *chosen;
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

// The refusals every member shares: pointers, then sizes.
template <typename S, typename D, int C, typename Call>
void CheckRefusals(bool inPlace, Call call) {
  Img<S> src(4, 4, C);
  Img<D> dst(4, 4, C);
  const PxliRect roi{0, 0, 4, 4};
  ExpectRefused(
      pxlStsNullPtrErr, [&] { return call(nullptr, 16, dst.data(), dst.step(), roi); },
      "null source", dst);
  if (!inPlace)
    ExpectRefused(
        pxlStsNullPtrErr, [&] { return call(src.data(), src.step(), nullptr, 16, roi); },
        "null destination", dst);
  for (const PxliRect& bad : BadSizes())
    ExpectRefused(
        pxlStsSizeErr, [&] { return call(src.data(), src.step(), dst.data(), dst.step(), bad); },
        "bad size", dst);
}

template <typename S, typename D, int C, int NV>
void RunRange(PxlStatus (*fn)(const S*, int, D*, int, PxliRect)) {
  Check<S, D, C, NV>(false, fn, RangeRef<S, D>, "range");
  CheckRefusals<S, D, C>(false, fn);
}

// L: the member's own layout; the C3 and C4 forms between 16u and 32f are
// checked as they are documented, element by element.
template <typename S, typename D, int C, int NV>
void RunFloat(PxlStatus (*fn)(const S*, int, D*, int, PxliRect, Pxl32f, Pxl32f)) {
  for (auto [lo, hi] : {std::pair{0.0f, 1.0f}, std::pair{-2.5f, 7.0f}, std::pair{1e-3f, 3e4f}}) {
    const auto call = [&, lo = lo, hi = hi](const S* s, int ss, D* d, int ds, PxliRect r) {
      return fn(s, ss, d, ds, r, lo, hi);
    };
    Check<S, D, C, NV>(
        false, call, [&](S v) { return FloatRef<S, D>(v, lo, hi); },
        "range " + std::to_string(lo) + " .. " + std::to_string(hi));
  }
  CheckRefusals<S, D, C>(false, [&](const S* s, int ss, D* d, int ds, PxliRect r) {
    return fn(s, ss, d, ds, r, 0.0f, 1.0f);
  });
  Img<S> src(4, 4, C);
  Img<D> dst(4, 4, C);
  const float nan = std::numeric_limits<float>::quiet_NaN();
  for (auto [lo, hi] :
       {std::pair{1.0f, 1.0f}, std::pair{2.0f, 1.0f}, std::pair{nan, 1.0f}, std::pair{0.0f, nan}})
    ExpectRefused(
        pxlStsScaleRangeErr,
        [&, lo = lo, hi = hi] {
          return fn(src.data(), src.step(), dst.data(), dst.step(), {0, 0, 4, 4}, lo, hi);
        },
        "range " + std::to_string(lo) + " .. " + std::to_string(hi), dst);
  ExpectRefused(
      pxlStsNullPtrErr,
      [&] {
        return fn(nullptr, 16, dst.data(), 16, {0, 0, 4, 4}, 2.0f, 1.0f);
      },
      "pointers before the range", dst);
  ExpectRefused(
      pxlStsSizeErr,
      [&] {
        return fn(src.data(), src.step(), dst.data(), dst.step(), {0, 0, 0, 4}, 2.0f, 1.0f);
      },
      "size before the range", dst);
}

constexpr std::pair<double, double> kLinear[] = {
    {1.0, 0.0}, {0.5, 10.25}, {-3.0, 1e5}, {1e-3, -0.5}, {257.0, 0.5}};

template <typename S, typename D, int C, int NV>
void RunLinear(PxlStatus (*fn)(const S*, int, Pxl64f, Pxl64f, D*, int, PxliRect)) {
  for (auto [m, a] : kLinear)
    Check<S, D, C, NV>(
        false,
        [&, m = m, a = a](const S* s, int ss, D* d, int ds, PxliRect r) {
          return fn(s, ss, m, a, d, ds, r);
        },
        [&, m = m, a = a](S v) { return LinearRef<S, D>(v, m, a); }, "mVal " + std::to_string(m));
  CheckRefusals<S, D, C>(false, [&](const S* s, int ss, D* d, int ds, PxliRect r) {
    return fn(s, ss, 2.0, 1.0, d, ds, r);
  });
}

template <typename T, int C, int NV>
void RunLinearInPlace(PxlStatus (*fn)(Pxl64f, Pxl64f, T*, int, PxliRect)) {
  for (auto [m, a] : kLinear)
    Check<T, T, C, NV>(
        true, [&, m = m, a = a](T* s, int ss, T*, int, PxliRect r) { return fn(m, a, s, ss, r); },
        [&, m = m, a = a](T v) { return LinearRef<T, T>(v, m, a); }, "mVal " + std::to_string(m));
  CheckRefusals<T, T, C>(true,
                         [&](T* s, int ss, T*, int, PxliRect r) { return fn(2.0, 1.0, s, ss, r); });
}

#define PXL_TEST_ScaleRange(S, D, L) RunRange<Pxl##S, Pxl##D, PXL_CH_##L, PXL_NV_##L>
#define PXL_TEST_ScaleFloat(S, D, L) RunFloat<Pxl##S, Pxl##D, PXL_CH_##L, PXL_NV_##L>
#define PXL_TEST_ScaleFloatRow(S, D, L) RunFloat<Pxl##S, Pxl##D, PXL_CH_##L, PXL_NV_##L>
#define PXL_TEST_ScaleC(S, D, L) RunLinear<Pxl##S, Pxl##D, PXL_CH_##L, PXL_NV_##L>
#define PXL_TEST_ScaleCInPlace(T, L) RunLinearInPlace<Pxl##T, PXL_CH_##L, PXL_NV_##L>

const MemberCase kScaleCases[] = {
#include "support/member_cases.h"
// the rows, as cases
#include "primitives/scale.def"
#include "primitives/scale_c.def"
};

class ScaleMember : public testing::TestWithParam<MemberCase> {};
TEST_P(ScaleMember, MatchesReferenceAtEveryLevelAndRefusesBadArguments) { GetParam().run(); }
INSTANTIATE_TEST_SUITE_P(Grid, ScaleMember, testing::ValuesIn(kScaleCases), CaseName);

TEST(Scale, EndsMapToEnds) {
  const Pxl8u v[2] = {0, 255};
  Pxl32f f[2];
  ASSERT_EQ(pxlStsNoErr, Scale_8u32f_C1R(v, 2, f, 8, {0, 0, 2, 1}, -0.3f, 0.7f));
  EXPECT_EQ(-0.3f, f[0]);
  EXPECT_EQ(0.7f, f[1]);
  Pxl8u back[2];
  ASSERT_EQ(pxlStsNoErr, Scale_32f8u_C1R(f, 8, back, 2, {0, 0, 2, 1}, -0.3f, 0.7f));
  EXPECT_EQ(0, back[0]);
  EXPECT_EQ(255, back[1]);
}

TEST(Scale, SixteenBitColourFormsAreOneLongRow) {
  // The C3 form moves x by three elements and converts width x 3 of them:
  // the same as the C1 form on the widened region.
  Pxl16u px[12];
  for (int i = 0; i < 12; ++i) px[i] = static_cast<Pxl16u>(i * 5000);
  Pxl32f c3[12] = {}, c1[12] = {};
  ASSERT_EQ(pxlStsNoErr, Scale_16u32f_C3R(px, 24, c3, 48, {1, 0, 3, 1}, 0.0f, 1.0f));
  ASSERT_EQ(pxlStsNoErr, Scale_16u32f_C1R(px, 24, c1, 48, {3, 0, 9, 1}, 0.0f, 1.0f));
  for (int i = 0; i < 12; ++i) EXPECT_EQ(c1[i], c3[i]) << i;
}

}  // namespace
