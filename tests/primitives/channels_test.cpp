// SwapChannels and Swizzle against a scalar reference at every processor
// level, out of place and in place, on regions inside larger guarded images;
// the refusals of SwapChannels and the empty regions of Swizzle.
#include "primitives/channels.h"

#include <gtest/gtest.h>

#include "support/grid.h"

namespace {

using namespace pxltest;

std::mt19937& Rng() {
  static std::mt19937 rng(11);
  return rng;
}

// Orders of n entries: permutations, repeats and the identity.
std::vector<std::vector<int>> Orders(int n) {
  if (n == 3) return {{2, 1, 0}, {0, 1, 2}, {1, 2, 0}, {2, 0, 1}, {0, 2, 1}, {0, 0, 0}, {2, 1, 2}};
  return {{3, 2, 1, 0}, {0, 1, 2, 3}, {1, 0, 3, 2}, {2, 3, 0, 1}, {3, 3, 3, 3}, {0, 2, 1, 3}};
}

// C elements a pixel, the first NV reordered; `call(src, dst, roi, order)`
// with src == dst in place.
template <typename T, int C, int NV>
void RunReorder(bool inPlace,
                const std::function<PxlStatus(Img<T>&, Img<T>&, PxliRect, const int*)>& call) {
  for (const std::vector<int>& order : Orders(NV)) {
    ForEachLevel([&](int level) {
      for (const Geometry& g : Geometries()) {
        Img<T> src(g.imgW, g.imgH, C, g.srcPad, g.srcShift),
            dst(g.imgW, g.imgH, C, g.dstPad, g.dstShift);
        src.randomize(Rng());
        dst.randomize(Rng());
        Img<T>& out = inPlace ? src : dst;
        std::vector<uint8_t> want = out.bytes();
        for (int y = g.roi.y; y < g.roi.y + g.roi.height; ++y)
          for (int x = g.roi.x; x < g.roi.x + g.roi.width; ++x)
            for (int c = 0; c < NV; ++c) Poke(want, out.index(x, y, c), src.at(x, y, order[c]));
        ASSERT_EQ(pxlStsNoErr, call(src, out, g.roi, order.data()));
        ASSERT_EQ("", Diff(out, out.bytes(), want))
            << "level " << level << ", width " << g.roi.width << ", order " << order[0] << order[1]
            << order[2];
      }
    });
  }
}

template <typename T, int C, int NV>
void RunSwap(PxlStatus (*fn)(const T*, int, T*, int, PxliRect, const int*)) {
  RunReorder<T, C, NV>(false, [&](Img<T>& s, Img<T>& d, PxliRect r, const int* o) {
    return fn(s.data(), s.step(), d.data(), d.step(), r, o);
  });
  Img<T> src(4, 4, C), dst(4, 4, C);
  const int good[4] = {0, 1, 2, 0};
  const PxliRect roi{0, 0, 4, 4};
  const auto call = [&](const T* s, T* d, PxliRect r, const int* o) {
    return [=] { return fn(s, src.step(), d, dst.step(), r, o); };
  };
  ExpectRefused(pxlStsNullPtrErr, call(nullptr, dst.data(), roi, good), "null source", dst);
  ExpectRefused(pxlStsNullPtrErr, call(src.data(), nullptr, roi, good), "null destination", dst);
  ExpectRefused(pxlStsNullPtrErr, call(src.data(), dst.data(), roi, nullptr), "null order", dst);
  for (const PxliRect& bad : BadSizes())
    ExpectRefused(pxlStsSizeErr, call(src.data(), dst.data(), bad, good), "bad size", dst);
  for (int c = 0; c < NV; ++c)
    for (int wrong : {-1, NV, 1 << 30}) {
      int order[4] = {0, 1, 2, 0};
      order[c] = wrong;
      ExpectRefused(pxlStsChannelOrderErr, call(src.data(), dst.data(), roi, order), "bad order",
                    dst);
      ExpectRefused(pxlStsSizeErr, call(src.data(), dst.data(), {0, 0, 0, 1}, order),
                    "size before order", dst);
    }
}

template <typename T, int C, int NV>
void RunSwapInPlace(PxlStatus (*fn)(T*, int, PxliRect, const int*)) {
  RunReorder<T, C, NV>(true, [&](Img<T>&, Img<T>& d, PxliRect r, const int* o) {
    return fn(d.data(), d.step(), r, o);
  });
  Img<T> img(4, 4, C);
  const int bad[4] = {0, NV, 1, 0};
  ExpectRefused(
      pxlStsNullPtrErr,
      [&] {
        return fn(nullptr, img.step(), {0, 0, 4, 4}, bad);
      },
      "null image", img);
  ExpectRefused(
      pxlStsChannelOrderErr,
      [&] {
        return fn(img.data(), img.step(), {0, 0, 4, 4}, bad);
      },
      "bad order", img);
}

template <typename T, int C>
void RunSwizzle(PxlStatus (*fn)(const T*, int, T*, int, PxliRect, const int*)) {
  RunReorder<T, C, C>(false, [&](Img<T>& s, Img<T>& d, PxliRect r, const int* o) {
    return fn(s.data(), s.step(), d.data(), d.step(), r, o);
  });
  const int order[4] = {1, 0, 2, 0};
  for (const PxliRect& empty : BadSizes())  // nothing checked, nothing touched
    EXPECT_EQ(pxlStsNoErr, fn(nullptr, 0, nullptr, 0, empty, order));
}

template <typename T, int C>
void RunSwizzleInPlace(PxlStatus (*fn)(T*, int, PxliRect, const int*)) {
  RunReorder<T, C, C>(true, [&](Img<T>&, Img<T>& d, PxliRect r, const int* o) {
    return fn(d.data(), d.step(), r, o);
  });
  const int order[4] = {1, 0, 2, 0};
  for (const PxliRect& empty : BadSizes()) EXPECT_EQ(pxlStsNoErr, fn(nullptr, 0, empty, order));
}

#define PXL_TEST_Swap(T, L) RunSwap<Pxl##T, PXL_CH_##L, PXL_NV_##L>
#define PXL_TEST_SwapInPlace(T, L) RunSwapInPlace<Pxl##T, PXL_CH_##L, PXL_NV_##L>
#define PXL_TEST_Swizzle(T, L) RunSwizzle<Pxl##T, PXL_CH_##L>
#define PXL_TEST_SwizzleInPlace(T, L) RunSwizzleInPlace<Pxl##T, PXL_CH_##L>

const MemberCase kChannelCases[] = {
#include "support/member_cases.h"
// the rows, as cases
#include "primitives/swap_channels.def"
#include "primitives/swizzle.def"
};

class ChannelsMember : public testing::TestWithParam<MemberCase> {};
TEST_P(ChannelsMember, MatchesReferenceAtEveryLevel) { GetParam().run(); }
INSTANTIATE_TEST_SUITE_P(Grid, ChannelsMember, testing::ValuesIn(kChannelCases), CaseName);

}  // namespace
