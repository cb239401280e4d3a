// Every border copy against a reference built pixel by pixel from the rules
// (constant value, clamped edge, reflection without repeating the edge), at
// every processor level, on guarded images; and the checks in their order,
// with nothing written.
#include <gtest/gtest.h>

#include "primitives/layout.h"
#include "support/grid.h"

namespace {

using namespace pxltest;

constexpr int kConst = 0;
constexpr int kReplicate = 1;
constexpr int kMirror = 2;

std::mt19937& Rng() {
  static std::mt19937 rng(77);
  return rng;
}

// The source index a border position takes, written from the rules rather
// than from the kernel: clamp, or walk back and forth between the edges.
int SourceIndex(int kind, int i, int n) {
  if (kind == kReplicate) return i < 0 ? 0 : (i >= n ? n - 1 : i);
  if (n == 1) return 0;
  int pos = 0, dir = 1;  // walk from 0 to i, bouncing off both edges
  const int steps = i < 0 ? -i : i;
  dir = i < 0 ? -1 : 1;
  for (int s = 0; s < steps; ++s) {
    if (pos + dir < 0 || pos + dir >= n) dir = -dir;
    pos += dir;
  }
  return pos;
}

struct Frame {
  int sw, sh, top, left, right, bottom;
};

std::vector<Frame> Frames() {
  return {{3, 2, 1, 1, 1, 1},    {1, 1, 2, 3, 2, 1},  {1, 5, 0, 2, 2, 0}, {5, 1, 2, 0, 0, 2},
          {4, 3, 0, 0, 0, 0},    {2, 3, 5, 7, 6, 4},  {7, 4, 2, 2, 3, 1}, {3, 3, 9, 8, 10, 7},
          {17, 3, 1, 16, 16, 1}, {33, 2, 3, 1, 2, 0}, {40, 6, 2, 0, 5, 3}};
}

template <typename T, int C, int Kind, bool InPlace, typename Fn>
void RunBorder(Fn fn) {
  T value[C];
  for (int k = 0; k < C; ++k) value[k] = static_cast<T>(11 * k + 7);
  const auto call = [&](const T* s, int ss, PxliSize srcSize, T* d, int ds, PxliSize dstSize,
                        int top, int left, const T* v) -> PxlStatus {
    if constexpr (InPlace) {
      if constexpr (Kind != kConst)
        return fn(const_cast<T*>(s), ss, srcSize, dstSize, top, left);
      else if constexpr (C == 1)
        return fn(const_cast<T*>(s), ss, srcSize, dstSize, top, left, v[0]);
      else
        return fn(const_cast<T*>(s), ss, srcSize, dstSize, top, left, v);
    } else {
      (void)d;
      if constexpr (Kind != kConst)
        return fn(s, ss, srcSize, d, ds, dstSize, top, left);
      else if constexpr (C == 1)
        return fn(s, ss, srcSize, d, ds, dstSize, top, left, v[0]);
      else
        return fn(s, ss, srcSize, d, ds, dstSize, top, left, v);
    }
  };

  ForEachLevel([&](int level) {
    int i = 0;
    for (const Frame& f : Frames()) {
      const int dw = f.left + f.sw + f.right, dh = f.top + f.sh + f.bottom;
      Img<T> src(f.sw, f.sh, C, i % 3, i % 2), dst(dw, dh, C, (i + 1) % 3, (i / 2) % 3);
      ++i;
      src.randomize(Rng());
      dst.randomize(Rng());
      // In place, the source is what lies in the destination at (left, top).
      Img<T>& from = InPlace ? dst : src;
      const int fx = InPlace ? f.left : 0, fy = InPlace ? f.top : 0;
      std::vector<uint8_t> want = dst.bytes();
      for (int y = 0; y < dh; ++y)
        for (int x = 0; x < dw; ++x) {
          const bool inside = x >= f.left && x < f.left + f.sw && y >= f.top && y < f.top + f.sh;
          for (int k = 0; k < C; ++k) {
            T v;
            if (Kind == kConst && !inside)
              v = value[k];
            else
              v = from.at(fx + SourceIndex(Kind, x - f.left, f.sw),
                          fy + SourceIndex(Kind, y - f.top, f.sh), k);
            Poke(want, dst.index(x, y, k), v);
          }
        }
      const std::vector<uint8_t> srcBefore = src.bytes();
      T* s = InPlace ? &dst.at(f.left, f.top) : src.data();
      const int ss = InPlace ? dst.step() : src.step();
      ASSERT_EQ(pxlStsNoErr,
                call(s, ss, {f.sw, f.sh}, dst.data(), dst.step(), {dw, dh}, f.top, f.left, value));
      ASSERT_EQ("", Diff(dst, dst.bytes(), want))
          << "level " << level << ", source " << f.sw << "x" << f.sh << ", top " << f.top
          << ", left " << f.left;
      if (!InPlace) {
        ASSERT_TRUE(srcBefore == src.bytes());
      }
    }
  });

  // Refusals, in the order pointers, steps, sizes; nothing written.
  Img<T> src(4, 3, C), dst(6, 5, C);
  T* s = InPlace ? &dst.at(1, 1) : src.data();
  const int ss = InPlace ? dst.step() : src.step();
  const PxliSize sz{4, 3}, dz{6, 5};
  const auto refused = [&](PxlStatus want, const std::string& what, const T* sp, int sstep,
                           PxliSize srcSize, T* dp, int dstep, PxliSize dstSize, int top, int left,
                           const T* v) {
    ExpectRefused(
        want, [&] { return call(sp, sstep, srcSize, dp, dstep, dstSize, top, left, v); }, what,
        dst);
  };
  refused(pxlStsNullPtrErr, "null source", nullptr, ss, sz, dst.data(), dst.step(), dz, 1, 1,
          value);
  if (!InPlace)
    refused(pxlStsNullPtrErr, "null destination", s, ss, sz, nullptr, dst.step(), dz, 1, 1, value);
  if (Kind == kConst && C > 1)
    refused(pxlStsNullPtrErr, "null value", s, ss, sz, dst.data(), dst.step(), dz, 1, 1, nullptr);
  refused(pxlStsNullPtrErr, "pointers before steps", nullptr, 0, sz, dst.data(), 0, dz, 1, 1,
          value);
  refused(pxlStsStepErr, "zero source step", s, 0, sz, dst.data(), dst.step(), dz, 1, 1, value);
  refused(pxlStsStepErr, "negative source step", s, -ss, sz, dst.data(), dst.step(), dz, 1, 1,
          value);
  if (!InPlace)
    refused(pxlStsStepErr, "zero destination step", s, ss, sz, dst.data(), 0, dz, 1, 1, value);
  refused(pxlStsStepErr, "steps before sizes", s, 0, {0, 0}, dst.data(), dst.step(), dz, 1, 1,
          value);
  const struct {
    PxliSize src, dst;
    int top, left;
  } bad[] = {{{0, 3}, dz, 1, 1},
             {{4, 0}, dz, 1, 1},
             {sz, {0, 5}, 0, 0},
             {sz, {6, 0}, 0, 0},
             {sz, dz, -1, 1},
             {sz, dz, 1, -1},
             {sz, dz, 1, 3},
             {sz, dz, 3, 1},
             {{6, 3}, dz, 0, 1},
             {{4, 5}, dz, 1, 0},
             {{-4, 3}, dz, 1, 1},
             {sz, {6, -5}, 1, 1},
             {{4, 3}, dz, 1, 0x7FFFFFFE}};
  for (const auto& b : bad)
    refused(pxlStsSizeErr,
            "size " + std::to_string(b.src.width) + "x" + std::to_string(b.src.height) + " in " +
                std::to_string(b.dst.width) + "x" + std::to_string(b.dst.height) + " at " +
                std::to_string(b.left) + "," + std::to_string(b.top),
            s, ss, b.src, dst.data(), dst.step(), b.dst, b.top, b.left, value);
}

#define PXL_TEST_BorderConst(T, L) RunBorder<Pxl##T, PXL_CH_##L, kConst, false>
#define PXL_TEST_BorderEdge(T, L, K) RunBorder<Pxl##T, PXL_CH_##L, K, false>
#define PXL_TEST_BorderConstInPlace(T, L) RunBorder<Pxl##T, PXL_CH_##L, kConst, true>
#define PXL_TEST_BorderEdgeInPlace(T, L, K) RunBorder<Pxl##T, PXL_CH_##L, K, true>

const MemberCase kBorderCases[] = {
#include "support/member_cases.h"
// the rows, as cases
#include "primitives/border.def"
};

class BorderMember : public testing::TestWithParam<MemberCase> {};
TEST_P(BorderMember, MatchesReferenceAtEveryLevelAndRefusesBadArguments) { GetParam().run(); }
INSTANTIATE_TEST_SUITE_P(Grid, BorderMember, testing::ValuesIn(kBorderCases), CaseName);

TEST(Border, WholeSourceWithoutBordersIsACopy) {
  Img<Pxl8u> src(5, 4, 1), dst(5, 4, 1);
  src.randomize(Rng());
  dst.randomize(Rng());
  ASSERT_EQ(pxlStsNoErr, CopyConstBorder_8u_C1R(src.data(), src.step(), {5, 4}, dst.data(),
                                                dst.step(), {5, 4}, 0, 0, 9));
  for (int y = 0; y < 4; ++y)
    for (int x = 0; x < 5; ++x) EXPECT_EQ(src.at(x, y), dst.at(x, y));
}

TEST(Border, MirrorDoesNotRepeatTheEdge) {
  // One row a, b, c, d with three pixels of border on each side:
  // d c b | a b c d | c b a.
  const Pxl8u src[4] = {1, 2, 3, 4};
  Pxl8u dst[10] = {};
  ASSERT_EQ(pxlStsNoErr, CopyMirrorBorder_8u_C1R(src, 4, {4, 1}, dst, 10, {10, 1}, 0, 3));
  const Pxl8u want[10] = {4, 3, 2, 1, 2, 3, 4, 3, 2, 1};
  for (int i = 0; i < 10; ++i) EXPECT_EQ(want[i], dst[i]) << i;
}

}  // namespace
