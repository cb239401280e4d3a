// Every Mirror member, for each flip, against the reversed indices, at every
// processor level, on guarded images, out of place and in place; and the
// refusals in the order pointers, size, flip.
#include <gtest/gtest.h>

#include "primitives/layout.h"
#include "support/grid.h"

namespace {

using namespace pxltest;

std::mt19937& Rng() {
  static std::mt19937 rng(13);
  return rng;
}

// The usual geometries, with heights of one to five rows (odd and even).
std::vector<Geometry> MirrorGeometries() {
  std::vector<Geometry> g = Geometries();
  for (size_t i = 0; i < g.size(); ++i) {
    g[i].roi.height = 1 + static_cast<int>(i % 5);
    g[i].imgH = g[i].roi.y + g[i].roi.height + 1;
  }
  return g;
}

constexpr PxlFlip kFlips[] = {pxlFlipTopBottom, pxlFlipLeftRight, pxlFlipBoth};

// The source pixel (x, y) of the region that destination pixel (x, y) takes.
void Flipped(PxlFlip flip, const PxliRect& r, int x, int y, int* sx, int* sy) {
  *sx = flip == pxlFlipTopBottom ? x : r.width - 1 - x;
  *sy = flip == pxlFlipLeftRight ? y : r.height - 1 - y;
}

template <typename T, int C, bool InPlace, typename Fn>
void RunMirror(Fn fn) {
  const auto call = [&](Img<T>& src, Img<T>& dst, PxliRect roi, PxlFlip flip) -> PxlStatus {
    if constexpr (InPlace) {
      (void)src;
      return fn(dst.data(), dst.step(), roi, flip);
    } else {
      return fn(src.data(), src.step(), dst.data(), dst.step(), roi, flip);
    }
  };
  ForEachLevel([&](int level) {
    for (const Geometry& g : MirrorGeometries())
      for (PxlFlip flip : kFlips) {
        Img<T> src(g.imgW, g.imgH, C, g.srcPad, g.srcShift),
            dst(g.imgW, g.imgH, C, g.dstPad, g.dstShift);
        src.randomize(Rng());
        dst.randomize(Rng());
        Img<T>& from = InPlace ? dst : src;
        std::vector<uint8_t> want = dst.bytes();
        for (int y = 0; y < g.roi.height; ++y)
          for (int x = 0; x < g.roi.width; ++x) {
            int sx, sy;
            Flipped(flip, g.roi, x, y, &sx, &sy);
            for (int k = 0; k < C; ++k)
              Poke(want, dst.index(g.roi.x + x, g.roi.y + y, k),
                   from.at(g.roi.x + sx, g.roi.y + sy, k));
          }
        const std::vector<uint8_t> srcBefore = src.bytes();
        ASSERT_EQ(pxlStsNoErr, call(src, dst, g.roi, flip));
        ASSERT_EQ("", Diff(dst, dst.bytes(), want))
            << "level " << level << ", flip " << flip << ", region " << g.roi.width << "x"
            << g.roi.height;
        if (!InPlace) {
        ASSERT_TRUE(srcBefore == src.bytes());
      }
      }
  });

  Img<T> src(4, 4, C), dst(4, 4, C);
  const PxliRect roi{0, 0, 4, 4};
  for (int bad : {3, -1, 100})
    ExpectRefused(
        pxlStsMirrorFlipErr, [&] { return call(src, dst, roi, static_cast<PxlFlip>(bad)); },
        "flip " + std::to_string(bad), dst);
  ExpectRefused(
      pxlStsNullPtrErr,
      [&] {
        if constexpr (InPlace)
          return fn(nullptr, dst.step(), roi, static_cast<PxlFlip>(7));
        else
          return fn(nullptr, src.step(), dst.data(), dst.step(), roi, pxlFlipBoth);
      },
      "null source, before the flip", dst);
  if (!InPlace)
    ExpectRefused(
        pxlStsNullPtrErr,
        [&] {
          if constexpr (InPlace)
            return pxlStsNoErr;
          else
            return fn(src.data(), src.step(), nullptr, dst.step(), roi, pxlFlipBoth);
        },
        "null destination", dst);
  for (const PxliRect& bad : BadSizes())
    ExpectRefused(
        pxlStsSizeErr, [&] { return call(src, dst, bad, static_cast<PxlFlip>(7)); },
        "bad size, before the flip", dst);
}

#define PXL_TEST_Mirror(T, L) RunMirror<Pxl##T, PXL_CH_##L, false>
#define PXL_TEST_MirrorInPlace(T, L) RunMirror<Pxl##T, PXL_CH_##L, true>

const MemberCase kMirrorCases[] = {
#include "support/member_cases.h"
// the rows, as cases
#include "primitives/mirror.def"
};

class MirrorMember : public testing::TestWithParam<MemberCase> {};
TEST_P(MirrorMember, MatchesReversedIndicesAtEveryLevelAndRefusesBadArguments) { GetParam().run(); }
INSTANTIATE_TEST_SUITE_P(Grid, MirrorMember, testing::ValuesIn(kMirrorCases), CaseName);

}  // namespace
