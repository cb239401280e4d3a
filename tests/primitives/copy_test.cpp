// Every member of the Copy family against a scalar reference, at every
// processor level, on regions inside larger guarded images; and the
// arguments the kernels refuse, with nothing written.
#include "primitives/copy.h"

#include <gtest/gtest.h>

#include "core/cpu.h"
#include "support/grid.h"

namespace {

using namespace pxltest;

std::mt19937& Rng() {
  static std::mt19937 rng(2024);
  return rng;
}

// The fourth element that C3C4 writes.
template <typename T>
T Opaque() {
  if (std::is_same<T, Pxl8u>::value) return T(255);
  if (std::is_same<T, Pxl16u>::value) return T(65535);
  if (std::is_same<T, Pxl16s>::value) return T(32767);
  if (std::is_same<T, Pxl32s>::value) return T(2147483647);
  return T(1);
}

// Same layout, C elements a pixel of which the first NV are copied.
template <typename T, int C, int NV>
void RunSame(PxlStatus (*fn)(const T*, int, T*, int, PxliRect)) {
  ForEachLevel([&](int level) {
    for (const Geometry& g : Geometries()) {
      Img<T> src(g.imgW, g.imgH, C, g.srcPad, g.srcShift),
          dst(g.imgW, g.imgH, C, g.dstPad, g.dstShift);
      src.randomize(Rng());
      dst.randomize(Rng());
      std::vector<uint8_t> want = dst.bytes();
      for (int y = g.roi.y; y < g.roi.y + g.roi.height; ++y)
        for (int x = g.roi.x; x < g.roi.x + g.roi.width; ++x)
          for (int k = 0; k < NV; ++k) Poke(want, dst.index(x, y, k), src.at(x, y, k));
      const std::vector<uint8_t> srcBefore = src.bytes();
      ASSERT_EQ(pxlStsNoErr, fn(src.data(), src.step(), dst.data(), dst.step(), g.roi));
      ASSERT_EQ("", Diff(dst, dst.bytes(), want)) << "level " << level << ", width " << g.roi.width;
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
  ExpectRefused(
      pxlStsNullPtrErr,
      [&] {
        return fn(nullptr, 0, dst.data(), 0, {0, 0, 0, 0});
      },
      "pointers before sizes", dst);
  for (const PxliRect& bad : BadSizes())
    ExpectRefused(
        pxlStsSizeErr, [&] { return fn(src.data(), src.step(), dst.data(), dst.step(), bad); },
        "bad size", dst);
}

// N elements a pixel between pixels of SC and DC elements.  Where one
// channel moves (N == 1), a multi-channel side's pointer points at its last
// channel (source) or its second channel (destination).
template <typename T, int SC, int DC, int N, bool Fill>
void RunStrided(PxlStatus (*fn)(const T*, int, T*, int, PxliRect)) {
  const int sc = (N == 1 && SC > 1) ? SC - 1 : 0;
  const int dc = (N == 1 && DC > 1) ? 1 : 0;
  ForEachLevel([&](int level) {
    for (const Geometry& g : Geometries()) {
      Img<T> src(g.imgW, g.imgH, SC, g.srcPad, g.srcShift),
          dst(g.imgW, g.imgH, DC, g.dstPad, g.dstShift);
      src.randomize(Rng());
      dst.randomize(Rng());
      std::vector<uint8_t> want = dst.bytes();
      for (int y = g.roi.y; y < g.roi.y + g.roi.height; ++y)
        for (int x = g.roi.x; x < g.roi.x + g.roi.width; ++x) {
          for (int k = 0; k < N; ++k) Poke(want, dst.index(x, y, dc + k), src.at(x, y, sc + k));
          if (Fill) Poke(want, dst.index(x, y, 3), Opaque<T>());
        }
      ASSERT_EQ(pxlStsNoErr, fn(src.data() + sc, src.step(), dst.data() + dc, dst.step(), g.roi));
      ASSERT_EQ("", Diff(dst, dst.bytes(), want)) << "level " << level << ", width " << g.roi.width;
    }
  });
  Img<T> src(4, 4, SC), dst(4, 4, DC);
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

// Planes of one step each.
template <typename T, int NP>
struct Planes {
  std::vector<Img<T>> img;
  T* ptr[NP];
  Planes(const Geometry& g) {
    for (int k = 0; k < NP; ++k)
      img.emplace_back(g.imgW, g.imgH, 1, g.dstPad, (g.dstShift + k) % 3);
    for (int k = 0; k < NP; ++k) {
      img[k].randomize(Rng());
      ptr[k] = img[k].data();
    }
  }
};

template <typename T, int SC, int NP>
void RunToPlanes(PxlStatus (*fn)(const T*, int, T* const*, int, PxliRect)) {
  ForEachLevel([&](int level) {
    for (const Geometry& g : Geometries()) {
      Img<T> src(g.imgW, g.imgH, SC, g.srcPad, g.srcShift);
      src.randomize(Rng());
      Planes<T, NP> dst(g);
      std::vector<std::vector<uint8_t>> want;
      for (int k = 0; k < NP; ++k) {
        want.push_back(dst.img[k].bytes());
        for (int y = g.roi.y; y < g.roi.y + g.roi.height; ++y)
          for (int x = g.roi.x; x < g.roi.x + g.roi.width; ++x)
            Poke(want[k], dst.img[k].index(x, y), src.at(x, y, k));
      }
      ASSERT_EQ(pxlStsNoErr, fn(src.data(), src.step(), dst.ptr, dst.img[0].step(), g.roi));
      for (int k = 0; k < NP; ++k)
        ASSERT_EQ("", Diff(dst.img[k], dst.img[k].bytes(), want[k]))
            << "plane " << k << ", level " << level << ", width " << g.roi.width;
    }
  });
  const Geometry g{4, 4, {0, 0, 4, 4}, 0, 0, 0, 0};
  Img<T> src(4, 4, SC);
  Planes<T, NP> dst(g);
  const int step = dst.img[0].step();
  ExpectRefused(
      pxlStsNullPtrErr, [&] { return fn(nullptr, src.step(), dst.ptr, step, g.roi); },
      "null source", dst.img[0]);
  ExpectRefused(
      pxlStsNullPtrErr, [&] { return fn(src.data(), src.step(), nullptr, step, g.roi); },
      "null plane array", dst.img[0]);
  for (int k = 0; k < NP; ++k) {
    T* saved = dst.ptr[k];
    dst.ptr[k] = nullptr;
    ExpectRefused(
        pxlStsNullPtrErr, [&] { return fn(src.data(), src.step(), dst.ptr, step, g.roi); },
        "null plane", dst.img[(k + 1) % NP]);
    dst.ptr[k] = saved;
  }
  for (const PxliRect& bad : BadSizes())
    ExpectRefused(
        pxlStsSizeErr, [&] { return fn(src.data(), src.step(), dst.ptr, step, bad); }, "bad size",
        dst.img[0]);
}

template <typename T, int NP, int DC>
void RunFromPlanes(PxlStatus (*fn)(const T* const*, int, T*, int, PxliRect)) {
  ForEachLevel([&](int level) {
    for (const Geometry& g : Geometries()) {
      Planes<T, NP> src(g);
      Img<T> dst(g.imgW, g.imgH, DC, g.srcPad, g.srcShift);
      dst.randomize(Rng());
      std::vector<uint8_t> want = dst.bytes();
      for (int y = g.roi.y; y < g.roi.y + g.roi.height; ++y)
        for (int x = g.roi.x; x < g.roi.x + g.roi.width; ++x)
          for (int k = 0; k < NP; ++k) Poke(want, dst.index(x, y, k), src.img[k].at(x, y));
      ASSERT_EQ(pxlStsNoErr, fn(src.ptr, src.img[0].step(), dst.data(), dst.step(), g.roi));
      ASSERT_EQ("", Diff(dst, dst.bytes(), want)) << "level " << level << ", width " << g.roi.width;
    }
  });
  const Geometry g{4, 4, {0, 0, 4, 4}, 0, 0, 0, 0};
  Planes<T, NP> src(g);
  Img<T> dst(4, 4, DC);
  const int step = src.img[0].step();
  ExpectRefused(
      pxlStsNullPtrErr, [&] { return fn(nullptr, step, dst.data(), dst.step(), g.roi); },
      "null plane array", dst);
  src.ptr[NP - 1] = nullptr;
  ExpectRefused(
      pxlStsNullPtrErr, [&] { return fn(src.ptr, step, dst.data(), dst.step(), g.roi); },
      "null plane", dst);
  src.ptr[NP - 1] = src.img[NP - 1].data();
  ExpectRefused(
      pxlStsNullPtrErr, [&] { return fn(src.ptr, step, nullptr, dst.step(), g.roi); },
      "null destination", dst);
  for (const PxliRect& bad : BadSizes())
    ExpectRefused(
        pxlStsSizeErr, [&] { return fn(src.ptr, step, dst.data(), dst.step(), bad); }, "bad size",
        dst);
}

template <typename T, int C, int NV>
void RunMasked(PxlStatus (*fn)(const T*, int, T*, int, PxliRect, const Pxl8u*, int)) {
  ForEachLevel([&](int level) {
    for (const Geometry& g : Geometries()) {
      Img<T> src(g.imgW, g.imgH, C, g.srcPad, g.srcShift),
          dst(g.imgW, g.imgH, C, g.dstPad, g.dstShift);
      Img<Pxl8u> mask(g.imgW, g.imgH, 1, g.srcPad + 1, g.dstShift);
      src.randomize(Rng());
      dst.randomize(Rng());
      mask.fill([] { return Rng()() % 2 ? Pxl8u(Rng()()) : Pxl8u(0); });
      std::vector<uint8_t> want = dst.bytes();
      for (int y = g.roi.y; y < g.roi.y + g.roi.height; ++y)
        for (int x = g.roi.x; x < g.roi.x + g.roi.width; ++x)
          if (mask.at(x, y))
            for (int k = 0; k < NV; ++k) Poke(want, dst.index(x, y, k), src.at(x, y, k));
      ASSERT_EQ(pxlStsNoErr, fn(src.data(), src.step(), dst.data(), dst.step(), g.roi, mask.data(),
                                mask.step()));
      ASSERT_EQ("", Diff(dst, dst.bytes(), want)) << "level " << level << ", width " << g.roi.width;
    }
  });
  Img<T> src(4, 4, C), dst(4, 4, C);
  Img<Pxl8u> mask(4, 4, 1);
  mask.fill([] { return Pxl8u(1); });
  const PxliRect roi{0, 0, 4, 4};
  const auto call = [&](const T* s, T* d, const Pxl8u* m, PxliRect r) {
    return [=] { return fn(s, src.step(), d, dst.step(), r, m, mask.step()); };
  };
  ExpectRefused(pxlStsNullPtrErr, call(nullptr, dst.data(), mask.data(), roi), "null source", dst);
  ExpectRefused(pxlStsNullPtrErr, call(src.data(), nullptr, mask.data(), roi), "null destination",
                dst);
  ExpectRefused(pxlStsNullPtrErr, call(src.data(), dst.data(), nullptr, roi), "null mask", dst);
  for (const PxliRect& bad : BadSizes())
    ExpectRefused(pxlStsSizeErr, call(src.data(), dst.data(), mask.data(), bad), "bad size", dst);
}

#define PXL_TEST_CopySame(T, L) RunSame<Pxl##T, PXL_CH_##L, PXL_NV_##L>
#define PXL_TEST_CopyPair(T, S, D) RunStrided<Pxl##T, PXL_COPY_PAIR_##S##D>
#define PXL_TEST_CopyChannel(T, L) RunStrided<Pxl##T, PXL_CH_##L, PXL_CH_##L, 1, false>
#define PXL_TEST_CopyToPlanes(T, S, P) RunToPlanes<Pxl##T, PXL_CH_##S, PXL_CH_##P>
#define PXL_TEST_CopyFromPlanes(T, P, D) RunFromPlanes<Pxl##T, PXL_CH_##P, PXL_CH_##D>
#define PXL_TEST_CopyMasked(T, L) RunMasked<Pxl##T, PXL_CH_##L, PXL_NV_##L>

const MemberCase kCopyCases[] = {
#include "support/member_cases.h"
// the rows, as cases
#include "primitives/copy.def"
};

// Each member runs twice: with ordinary stores, and with every output taken
// as larger than the cache, so that the kernels that stream large outputs
// run their streaming paths on these small images too.
class CopyMember : public testing::TestWithParam<MemberCase> {};
TEST_P(CopyMember, MatchesReferenceAtEveryLevelAndRefusesBadArguments) {
  for (int64_t cache : {0, 1}) {
    pxl::test::SetStreamingCacheBytes(cache);
    GetParam().run();
  }
  pxl::test::SetStreamingCacheBytes(-1);
}
INSTANTIATE_TEST_SUITE_P(Grid, CopyMember, testing::ValuesIn(kCopyCases), CaseName);

TEST(Copy, EachImageMovesByItsOwnPixelSize) {
  // Three channels to one at x = 2: the source is read from byte 6 of its
  // row (the pointer given points at channel 0), the destination written at
  // byte 2.
  Pxl8u src[2][12], dst[2][4] = {};
  for (int i = 0; i < 24; ++i) src[i / 12][i % 12] = static_cast<Pxl8u>(i);
  ASSERT_EQ(pxlStsNoErr, Copy_8u_C3C1R(&src[0][0], 12, &dst[0][0], 4, {2, 1, 2, 1}));
  const Pxl8u want[2][4] = {{0, 0, 0, 0}, {0, 0, 18, 21}};
  EXPECT_EQ(0, std::memcmp(want, dst, sizeof dst));
}

TEST(Copy, NegativeStepsWalkUpwards) {
  // A bottom-up image: the base is the last row and the step negative.
  Pxl16u src[3][2] = {{1, 2}, {3, 4}, {5, 6}}, dst[3][2] = {};
  ASSERT_EQ(pxlStsNoErr, Copy_16u_C1R(&src[2][0], -4, &dst[0][0], 4, {0, 0, 2, 3}));
  const Pxl16u want[3][2] = {{5, 6}, {3, 4}, {1, 2}};
  EXPECT_EQ(0, std::memcmp(want, dst, sizeof dst));
}

}  // namespace

namespace {

TEST(Copy, LargeSplitsStreamTheirAlignedPart) {
  // With every output taken as larger than the cache, the split writes the
  // planes' 64-byte aligned part of each row with non-temporal stores (when
  // the planes are equally aligned) and the rest with ordinary ones.
  pxl::test::SetStreamingCacheBytes(1);
  std::mt19937 rng(5);
  pxltest::ForEachLevel([&](int level) {
    for (int width : {64, 65, 79, 127, 128, 200, 333})
      for (int shift : {0, 1, 17, 63}) {
        pxltest::Img<Pxl8u> src(width, 3, 3);
        src.randomize(rng);
        std::vector<pxltest::Img<Pxl8u>> planes;
        for (int k = 0; k < 3; ++k) planes.emplace_back(width, 3, 1, shift % 5, shift);
        Pxl8u* p[3];
        for (int k = 0; k < 3; ++k) {
          planes[k].randomize(rng);
          p[k] = planes[k].data();
        }
        std::vector<std::vector<uint8_t>> want;
        for (int k = 0; k < 3; ++k) {
          want.push_back(planes[k].bytes());
          for (int y = 0; y < 3; ++y)
            for (int x = 0; x < width; ++x)
              pxltest::Poke(want[k], planes[k].index(x, y), src.at(x, y, k));
        }
        ASSERT_EQ(pxlStsNoErr,
                  Copy_8u_C3P3R(src.data(), src.step(), p, planes[0].step(), {0, 0, width, 3}));
        for (int k = 0; k < 3; ++k)
          ASSERT_EQ("", pxltest::Diff(planes[k], planes[k].bytes(), want[k]))
              << "level " << level << ", width " << width << ", shift " << shift;
      }
  });
  pxl::test::SetStreamingCacheBytes(-1);
}

}  // namespace
