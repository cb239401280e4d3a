// Every member of the Set family against a scalar reference at every
// processor level, on regions inside larger guarded images; the refusals;
// and the one-row and streaming paths of Set_8u_C1R.
#include "primitives/set.h"

#include <gtest/gtest.h>

#include "core/cpu.h"
#include "core/streaming.h"
#include "support/grid.h"

namespace {

using namespace pxltest;

std::mt19937& Rng() {
  static std::mt19937 rng(7);
  return rng;
}

template <typename T>
T RandomValue() {
  T v;
  uint8_t b[sizeof(T)];
  for (uint8_t& x : b) x = static_cast<uint8_t>(Rng()());
  std::memcpy(&v, b, sizeof v);
  return v;
}

// Runs `call(dst, mask, roi)` on every geometry at every level; pixel (x, y)
// of the region is expected to get values[k] in channel first + k for k <
// n, where the mask (if any) is not 0.
template <typename T, int C>
void RunFill(int first, int n, bool masked, const T* values,
             const std::function<PxlStatus(Img<T>&, Img<Pxl8u>&, PxliRect)>& call) {
  ForEachLevel([&](int level) {
    for (const Geometry& g : Geometries()) {
      Img<T> dst(g.imgW, g.imgH, C, g.dstPad, g.dstShift);
      Img<Pxl8u> mask(g.imgW, g.imgH, 1, g.srcPad, g.srcShift);
      dst.randomize(Rng());
      mask.fill([] { return Rng()() % 3 ? Pxl8u(Rng()()) : Pxl8u(0); });
      std::vector<uint8_t> want = dst.bytes();
      for (int y = g.roi.y; y < g.roi.y + g.roi.height; ++y)
        for (int x = g.roi.x; x < g.roi.x + g.roi.width; ++x)
          if (!masked || mask.at(x, y))
            for (int k = 0; k < n; ++k) Poke(want, dst.index(x, y, first + k), values[k]);
      ASSERT_EQ(pxlStsNoErr, call(dst, mask, g.roi));
      ASSERT_EQ("", Diff(dst, dst.bytes(), want)) << "level " << level << ", width " << g.roi.width;
    }
  });
}

// The refusals every Set kernel shares: a null destination, then each bad
// size, with nothing written.
template <typename T, int C>
void RunRefusals(const std::function<PxlStatus(T*, const Pxl8u*, PxliRect)>& call) {
  Img<T> dst(4, 4, C);
  Img<Pxl8u> mask(4, 4, 1);
  ExpectRefused(
      pxlStsNullPtrErr,
      [&] {
        return call(nullptr, mask.data(), {0, 0, 4, 4});
      },
      "null destination", dst);
  ExpectRefused(
      pxlStsNullPtrErr,
      [&] {
        return call(nullptr, mask.data(), {0, 0, 0, 0});
      },
      "pointers before sizes", dst);
  for (const PxliRect& bad : BadSizes())
    ExpectRefused(
        pxlStsSizeErr, [&] { return call(dst.data(), mask.data(), bad); }, "bad size", dst);
}

template <typename T>
void RunSetC1(PxlStatus (*fn)(T, T*, int, PxliRect)) {
  const T v = RandomValue<T>();
  RunFill<T, 1>(0, 1, false, &v,
                [&](Img<T>& d, Img<Pxl8u>&, PxliRect r) { return fn(v, d.data(), d.step(), r); });
  RunRefusals<T, 1>([&](T* d, const Pxl8u*, PxliRect r) { return fn(v, d, 16, r); });
}

template <typename T, int C, int NV>
void RunSetPixel(PxlStatus (*fn)(const T*, T*, int, PxliRect)) {
  T v[4] = {RandomValue<T>(), RandomValue<T>(), RandomValue<T>(), RandomValue<T>()};
  RunFill<T, C>(0, NV, false, v,
                [&](Img<T>& d, Img<Pxl8u>&, PxliRect r) { return fn(v, d.data(), d.step(), r); });
  RunRefusals<T, C>([&](T* d, const Pxl8u*, PxliRect r) { return fn(v, d, 64, r); });
  Img<T> dst(4, 4, C);
  ExpectRefused(
      pxlStsNullPtrErr,
      [&] {
        return fn(nullptr, dst.data(), dst.step(), {0, 0, 4, 4});
      },
      "null values", dst);
}

// The pointer points at channel 1.
template <typename T, int C>
void RunSetChannel(PxlStatus (*fn)(T, T*, int, PxliRect)) {
  const T v = RandomValue<T>();
  RunFill<T, C>(1, 1, false, &v, [&](Img<T>& d, Img<Pxl8u>&, PxliRect r) {
    return fn(v, d.data() + 1, d.step(), r);
  });
  RunRefusals<T, C>([&](T* d, const Pxl8u*, PxliRect r) { return fn(v, d ? d + 1 : d, 64, r); });
}

template <typename T>
void RunSetMaskedC1(PxlStatus (*fn)(T, T*, int, PxliRect, const Pxl8u*, int)) {
  const T v = RandomValue<T>();
  RunFill<T, 1>(0, 1, true, &v, [&](Img<T>& d, Img<Pxl8u>& m, PxliRect r) {
    return fn(v, d.data(), d.step(), r, m.data(), m.step());
  });
  RunRefusals<T, 1>([&](T* d, const Pxl8u* m, PxliRect r) { return fn(v, d, 16, r, m, 4); });
  Img<T> dst(4, 4, 1);
  ExpectRefused(
      pxlStsNullPtrErr,
      [&] {
        return fn(v, dst.data(), dst.step(), {0, 0, 4, 4}, nullptr, 4);
      },
      "null mask", dst);
}

template <typename T, int C, int NV>
void RunSetMaskedPixel(PxlStatus (*fn)(const T*, T*, int, PxliRect, const Pxl8u*, int)) {
  T v[4] = {RandomValue<T>(), RandomValue<T>(), RandomValue<T>(), RandomValue<T>()};
  RunFill<T, C>(0, NV, true, v, [&](Img<T>& d, Img<Pxl8u>& m, PxliRect r) {
    return fn(v, d.data(), d.step(), r, m.data(), m.step());
  });
  RunRefusals<T, C>([&](T* d, const Pxl8u* m, PxliRect r) { return fn(v, d, 64, r, m, 4); });
  Img<T> dst(4, 4, C);
  Img<Pxl8u> mask(4, 4, 1);
  const PxliRect roi{0, 0, 4, 4};
  ExpectRefused(
      pxlStsNullPtrErr, [&] { return fn(v, dst.data(), dst.step(), roi, nullptr, 4); }, "null mask",
      dst);
  ExpectRefused(
      pxlStsNullPtrErr, [&] { return fn(nullptr, dst.data(), dst.step(), roi, mask.data(), 4); },
      "null values", dst);
}

#define PXL_TEST_SetC1(T) RunSetC1<Pxl##T>
#define PXL_TEST_SetPixel(T, L) RunSetPixel<Pxl##T, PXL_CH_##L, PXL_NV_##L>
#define PXL_TEST_SetChannel(T, L) RunSetChannel<Pxl##T, PXL_CH_##L>
#define PXL_TEST_SetMaskedC1(T) RunSetMaskedC1<Pxl##T>
#define PXL_TEST_SetMaskedPixel(T, L) RunSetMaskedPixel<Pxl##T, PXL_CH_##L, PXL_NV_##L>

const MemberCase kSetCases[] = {
#include "support/member_cases.h"
// the rows, as cases
#include "primitives/set.def"
};

class SetMember : public testing::TestWithParam<MemberCase> {};
TEST_P(SetMember, MatchesReferenceAtEveryLevelAndRefusesBadArguments) { GetParam().run(); }
INSTANTIATE_TEST_SUITE_P(Grid, SetMember, testing::ValuesIn(kSetCases), CaseName);

TEST(Set, OneRowWhenWidthEqualsStepAndStreamingForLargeFills) {
  // Rows without gaps, and fills above 0x80000 pixels with the largest cache
  // reported small enough to stream; the head and tail around the 16-byte
  // aligned body are written with ordinary stores.
  struct Case {
    int width, height, step, shift;
    bool cacheKnown;
  };
  const Case cases[] = {{37, 5, 37, 1, false},
                        {1000, 600, 1000, 3, true},
                        {1000, 600, 1003, 5, true},
                        {1000, 600, 1000, 0, false},
                        {525, 1000, 530, 9, true}};
  for (const Case& c : cases) {
    pxl::test::SetLargestCacheAnswer(c.cacheKnown ? pxlStsNoErr : pxlStsNotSupportedCpu,
                                     c.cacheKnown ? 65536 : 0);
    ForEachLevel([&](int level) {
      GuardedBuffer buf(static_cast<size_t>(c.step) * c.height, c.shift);
      std::vector<uint8_t> want = buf.raw();
      for (int y = 0; y < c.height; ++y)
        std::memset(want.data() + buf.payloadOffset() + static_cast<size_t>(y) * c.step, 0x3C,
                    c.width);
      ASSERT_EQ(pxlStsNoErr, Set_8u_C1R(0x3C, buf.data(), c.step, {0, 0, c.width, c.height}));
      EXPECT_TRUE(want == buf.raw()) << c.width << "x" << c.height << " level " << level;
    });
  }
  pxl::test::SetLargestCacheAnswer(1, -1);  // ask the processor again
}

TEST(Set, StreamingDecision) {
  pxl::test::SetLargestCacheAnswer(pxlStsNoErr, 0x100000);
  EXPECT_FALSE(pxl::StreamLargeFill(0x80000));  // not above 0x80000
  EXPECT_FALSE(pxl::StreamLargeFill(0xFFFFF));  // below the cache
  EXPECT_TRUE(pxl::StreamLargeFill(0x100000));  // the cache is not above the fill
  pxl::test::SetLargestCacheAnswer(pxlStsNotSupportedCpu, 16);
  EXPECT_FALSE(pxl::StreamLargeFill(0x10000000));  // a failed query: ordinary stores
  pxl::test::SetLargestCacheAnswer(1, -1);
}

}  // namespace
