// Every Transpose member against the definition dst(y, x) = src(x, y), with
// the one region applied unexchanged to both images, at every processor
// level, on guarded images; in-place squares; the refusals.
#include <gtest/gtest.h>

#include "primitives/layout.h"
#include "support/grid.h"

namespace {

using namespace pxltest;

std::mt19937& Rng() {
  static std::mt19937 rng(31);
  return rng;
}

// Regions around and across the 16-pixel blocks and 64-byte tiles.
std::vector<PxliRect> Regions() {
  return {{0, 0, 1, 1},    {3, 5, 4, 3},    {3, 5, 16, 16}, {1, 2, 17, 33}, {0, 0, 64, 64},
          {2, 1, 65, 130}, {5, 3, 130, 65}, {0, 4, 200, 3}, {7, 0, 3, 200}, {1, 1, 31, 9}};
}

template <typename T, int C>
void RunTranspose(PxlStatus (*fn)(const T*, int, T*, int, PxliRect)) {
  ForEachLevel([&](int level) {
    int i = 0;
    for (const PxliRect& r : Regions()) {
      Img<T> src(r.x + r.width + 2, r.y + r.height + 1, C, i % 3, i % 2);
      Img<T> dst(r.x + r.height + 1, r.y + r.width + 2, C, (i + 1) % 4, (i / 2) % 3);
      ++i;
      src.randomize(Rng());
      dst.randomize(Rng());
      std::vector<uint8_t> want = dst.bytes();
      for (int y = 0; y < r.height; ++y)
        for (int x = 0; x < r.width; ++x)
          for (int k = 0; k < C; ++k)
            Poke(want, dst.index(r.x + y, r.y + x, k), src.at(r.x + x, r.y + y, k));
      const std::vector<uint8_t> srcBefore = src.bytes();
      ASSERT_EQ(pxlStsNoErr, fn(src.data(), src.step(), dst.data(), dst.step(), r));
      ASSERT_EQ("", Diff(dst, dst.bytes(), want))
          << "level " << level << ", region " << r.width << "x" << r.height;
      ASSERT_TRUE(srcBefore == src.bytes());
    }
  });
  Img<T> src(4, 4, C), dst(4, 4, C);
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

template <typename T, int C>
void RunTransposeInPlace(PxlStatus (*fn)(T*, int, PxliRect)) {
  ForEachLevel([&](int level) {
    int i = 0;
    for (int n : {1, 2, 3, 7, 16, 17, 64, 65, 100}) {
      const PxliRect r{i % 3, (i + 1) % 2, n, n};
      Img<T> img(r.x + n + 1, r.y + n + 2, C, i % 4, i % 3);
      ++i;
      img.randomize(Rng());
      std::vector<uint8_t> want = img.bytes();
      for (int y = 0; y < n; ++y)
        for (int x = 0; x < n; ++x)
          for (int k = 0; k < C; ++k)
            Poke(want, img.index(r.x + y, r.y + x, k), img.at(r.x + x, r.y + y, k));
      ASSERT_EQ(pxlStsNoErr, fn(img.data(), img.step(), r));
      ASSERT_EQ("", Diff(img, img.bytes(), want)) << "level " << level << ", side " << n;
    }
  });
  Img<T> img(5, 5, C);
  ExpectRefused(
      pxlStsNullPtrErr,
      [&] {
        return fn(nullptr, img.step(), {0, 0, 4, 4});
      },
      "null", img);
  ExpectRefused(
      pxlStsNullPtrErr,
      [&] {
        return fn(nullptr, img.step(), {0, 0, 4, 3});
      },
      "pointer before shape", img);
  for (const PxliRect& bad : BadSizes())
    ExpectRefused(
        pxlStsSizeErr, [&] { return fn(img.data(), img.step(), bad); }, "bad size", img);
  for (const PxliRect& notSquare : {PxliRect{0, 0, 4, 3}, PxliRect{0, 0, 1, 5}})
    ExpectRefused(
        pxlStsSizeErr, [&] { return fn(img.data(), img.step(), notSquare); }, "not square", img);
}

#define PXL_TEST_Transpose(T, L) RunTranspose<Pxl##T, PXL_CH_##L>
#define PXL_TEST_TransposeInPlace(T, L) RunTransposeInPlace<Pxl##T, PXL_CH_##L>

const MemberCase kTransposeCases[] = {
#include "support/member_cases.h"
// the rows, as cases
#include "primitives/transpose.def"
};

class TransposeMember : public testing::TestWithParam<MemberCase> {};
TEST_P(TransposeMember, MatchesDefinitionAtEveryLevelAndRefusesBadArguments) { GetParam().run(); }
INSTANTIATE_TEST_SUITE_P(Grid, TransposeMember, testing::ValuesIn(kTransposeCases), CaseName);

TEST(Transpose, RegionAtThreeFiveReadsAndWritesAtThreeFive) {
  // A 2 x 1 region at (3, 5): source pixels (3, 5) and (4, 5) go to
  // destination pixels (3, 5) and (3, 6) - not to (5, 3).
  Pxl8u src[8 * 8], dst[8 * 8] = {};
  for (int i = 0; i < 64; ++i) src[i] = static_cast<Pxl8u>(i);
  ASSERT_EQ(pxlStsNoErr, Transpose_8u_C1R(src, 8, dst, 8, {3, 5, 2, 1}));
  for (int i = 0; i < 64; ++i) {
    const Pxl8u want = i == 5 * 8 + 3 ? 43 : (i == 6 * 8 + 3 ? 44 : 0);
    EXPECT_EQ(want, dst[i]) << i;
  }
}

}  // namespace
