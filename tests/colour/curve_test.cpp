// The curve, transfer and tone-curve exports against scalar references of
// their formulas, bit for bit, at every processor level, on regions inside
// guarded images; the transfer tables against the transfer functions; and
// the table edges.
#include "colour/curve.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <limits>

#include "colour/transfer_tables.h"
#include "support/grid.h"

namespace {

using namespace pxltest;

std::mt19937& Rng() {
  static std::mt19937 rng(4242);
  return rng;
}

// ---- references, written from the formulas --------------------------------------

float CurveRef(float x, const float* t, int levels, bool extra) {
  const float last = static_cast<float>(levels - 1);
  const float scale = extra ? last : last - 0.0001f;
  const float p = x * scale;
  const int i = static_cast<int>(p);
  return (t[i + 1] - t[i]) * (p - static_cast<float>(i)) + t[i];
}

template <typename T>
T CurveRefT(T x, const float* t, int levels, bool extra) {
  if constexpr (std::is_same<T, float>::value) {
    return CurveRef(x, t, levels, extra);
  } else {
    const float max = std::is_same<T, Pxl8u>::value ? 255.0f : 65535.0f;
    const float v = CurveRef(static_cast<float>(x) / max, t, levels, extra) * max;
    if (!(v > 0.0f)) return 0;
    if (v >= max) return static_cast<T>(max);
    return static_cast<T>(std::nearbyint(v));  // the default mode: nearest, ties to even
  }
}

float TonemapRef(float x) {
  const float A = -2517.09f, B = 529.711f, C = 0.69f, D = 2586.37f, E = 921.068f;
  return ((x * A - B) * x) / ((C - x * D) * x - E);
}

template <typename T>
T Draw() {
  if constexpr (std::is_same<T, float>::value) {
    static const float specials[] = {0.0f, 1.0f, 0.5f, 0.25f, 1.0f / 255, 254.5f / 255};
    const unsigned r = Rng()();
    if (r % 5 == 0) return specials[(r / 5) % 6];
    return std::uniform_real_distribution<float>(0.0f, 1.0f)(Rng());
  } else {
    return static_cast<T>(Rng()());
  }
}

// A table of `levels` entries (plus the extra one) rising from 0 to 1 with
// noise, and a NaN past its end that a correct call never reads.
struct Table {
  Table(int levels, bool extra) : levels(levels), extra(extra), v(levels + 2) {
    for (int i = 0; i < levels + 1; ++i)
      v[i] = static_cast<float>(i) / static_cast<float>(levels - 1) +
             std::uniform_real_distribution<float>(-0.01f, 0.01f)(Rng());
    v[0] = 0.0f;
    if (!extra) v[levels] = std::numeric_limits<float>::quiet_NaN();
    v[levels + 1] = std::numeric_limits<float>::quiet_NaN();
  }
  int levels;
  bool extra;
  std::vector<float> v;
};

// ---- one harness for every shape ----------------------------------------------------
// Pixels of sc elements into pixels of dc: the first nv elements through
// `f`, the fourth copied from the source when copyAlpha, the rest of the
// destination as it was.
struct Form {
  int sc, dc, nv;
  bool copyAlpha, inPlace;
};

template <typename T, typename Call, typename F>
void RunMap(const Form& form, Call call, F f) {
  ForEachLevel([&](int level) {
    for (const Geometry& g : Geometries()) {
      Img<T> src(g.imgW, g.imgH, form.sc, g.srcPad, g.srcShift),
          out(g.imgW, g.imgH, form.dc, g.dstPad, g.dstShift);
      src.randomize(Rng());
      out.randomize(Rng());
      Img<T>& dst = form.inPlace ? src : out;
      src.fill([] { return Draw<T>(); });
      std::vector<uint8_t> want = dst.bytes();
      for (int y = g.roi.y; y < g.roi.y + g.roi.height; ++y)
        for (int x = g.roi.x; x < g.roi.x + g.roi.width; ++x) {
          for (int c = 0; c < form.nv; ++c) Poke(want, dst.index(x, y, c), f(src.at(x, y, c)));
          if (form.copyAlpha) Poke(want, dst.index(x, y, 3), src.at(x, y, 3));
        }
      const std::vector<uint8_t> srcBefore = src.bytes();
      ASSERT_EQ(pxlStsNoErr, call(src.data(), src.step(), dst.data(), dst.step(), g.roi));
      ASSERT_EQ("", Diff(dst, dst.bytes(), want)) << "level " << level << ", width " << g.roi.width;
      if (!form.inPlace) {
        ASSERT_TRUE(srcBefore == src.bytes());
      }
      // An empty region writes nothing.
      const std::vector<uint8_t> before = dst.bytes();
      for (PxliRect empty : {PxliRect{0, 0, 0, 2}, PxliRect{0, 0, 2, 0}, PxliRect{1, 1, -3, 2}})
        ASSERT_EQ(pxlStsNoErr, call(src.data(), src.step(), dst.data(), dst.step(), empty));
      ASSERT_TRUE(before == dst.bytes());
    }
  });
}

// The forms of each layout token.
constexpr Form kAC4{4, 4, 3, true, false};
constexpr Form kAC4InPlace{4, 4, 3, false, true};
Form LayoutForm(int ch, int nv, bool inPlace) {
  if (nv == 3 && ch == 4) return inPlace ? kAC4InPlace : kAC4;
  return {ch, ch, ch, false, inPlace};
}

template <typename T, typename Fn>
void RunCurve(const Form& form, Fn fn) {
  for (int levels : {2, 5, 256})
    for (bool extra : {true, false})
      for (bool warm : {true, false}) {
        const Table t(levels, extra);
        RunMap<T>(
            form,
            [&](T* s, int ss, T* d, int ds, PxliRect roi) {
              if constexpr (std::is_invocable<Fn, T*, int, PxliRect, const float*, int, bool,
                                              bool>::value) {
                (void)s, (void)ss;
                return fn(d, ds, roi, t.v.data(), levels, extra, warm);
              } else {
                return fn(s, ss, d, ds, roi, t.v.data(), levels, extra, warm);
              }
            },
            [&](T x) { return CurveRefT<T>(x, t.v.data(), levels, extra); });
      }
}

template <typename T>
const float* TransferTable(bool toLinear) {
  if constexpr (std::is_same<T, float>::value)
    return toLinear ? pxl::colour::kSrgbToLinear256 : pxl::colour::kLinearToSrgb256;
  else
    return toLinear ? pxl::colour::kSrgbToLinear212 : pxl::colour::kLinearToSrgb212;
}

template <typename T, typename Fn>
void RunTransfer(const Form& form, bool toLinear, Fn fn) {
  const float* table = TransferTable<T>(toLinear);
  const int levels = std::is_same<T, float>::value ? 256 : 212;
  RunMap<T>(
      form,
      [&](T* s, int ss, T* d, int ds, PxliRect roi) {
        if constexpr (std::is_invocable<Fn, T*, int, PxliRect>::value) {
          (void)s, (void)ss;
          return fn(d, ds, roi);
        } else {
          return fn(s, ss, d, ds, roi);
        }
      },
      [&](T x) { return CurveRefT<T>(x, table, levels, true); });
}

template <typename Fn>
void RunTonemap(const Form& form, Fn fn) {
  RunMap<float>(
      form,
      [&](float* s, int ss, float* d, int ds, PxliRect roi) {
        if constexpr (std::is_invocable<Fn, float*, int, PxliRect>::value) {
          (void)s, (void)ss;
          return fn(d, ds, roi);
        } else {
          return fn(s, ss, d, ds, roi);
        }
      },
      TonemapRef);
}

#define PXL_TEST_Curve(T, L) \
  [](auto fn) { RunCurve<Pxl##T>(LayoutForm(PXL_CH_##L, PXL_NV_##L, false), fn); }
#define PXL_TEST_CurvePixels(T, S, D, A) \
  [](auto fn) { RunCurve<Pxl##T>(A ? kAC4 : Form{PXL_CH_##S, PXL_CH_##D, 3, false, false}, fn); }
#define PXL_TEST_CurveInPlace(T, L) \
  [](auto fn) { RunCurve<Pxl##T>(LayoutForm(PXL_CH_##L, PXL_NV_##L, true), fn); }
#define PXL_TEST_DIR_ToLinear true
#define PXL_TEST_DIR_ToSrgb false
#define PXL_TEST_TransferRow(T, L, Dir)                                                     \
  [](auto fn) {                                                                             \
    RunTransfer<Pxl##T>(LayoutForm(PXL_CH_##L, PXL_CH_##L, false), PXL_TEST_DIR_##Dir, fn); \
  }
#define PXL_TEST_TransferRowInPlace(T, L, Dir)                                             \
  [](auto fn) {                                                                            \
    RunTransfer<Pxl##T>(LayoutForm(PXL_CH_##L, PXL_CH_##L, true), PXL_TEST_DIR_##Dir, fn); \
  }
#define PXL_TEST_FORM_AC4R kAC4
#define PXL_TEST_FORM_C3AC4R (Form{3, 4, 3, false, false})
#define PXL_TEST_FORM_AC4C3R (Form{4, 3, 3, false, false})
#define PXL_TEST_FORM_AC4IR kAC4InPlace
#define PXL_TEST_TransferSame(T, F, Dir) \
  [](auto fn) { RunTransfer<Pxl##T>(PXL_TEST_FORM_##F, PXL_TEST_DIR_##Dir, fn); }
#define PXL_TEST_TransferSameInPlace(T, F, Dir) PXL_TEST_TransferSame(T, F, Dir)
#define PXL_TEST_Tonemap(L) \
  [](auto fn) { RunTonemap(LayoutForm(PXL_CH_##L, PXL_NV_##L, false), fn); }
#define PXL_TEST_TonemapInPlace(L) \
  [](auto fn) { RunTonemap(LayoutForm(PXL_CH_##L, PXL_NV_##L, true), fn); }

const MemberCase kColourCases[] = {
#include "support/member_cases.h"
// the rows, as cases
#include "colour/curve.def"
#include "colour/tonemap.def"
#include "colour/transfer.def"
};

class ColourMember : public testing::TestWithParam<MemberCase> {};
TEST_P(ColourMember, MatchesReferenceBitForBitAtEveryLevel) { GetParam().run(); }
INSTANTIATE_TEST_SUITE_P(Grid, ColourMember, testing::ValuesIn(kColourCases), CaseName);

// ---- the tables and the edges -------------------------------------------------------

double ToLinear(double s) { return s <= 0.04045 ? s / 12.92 : std::pow((s + 0.055) / 1.055, 2.4); }
double ToEncoded(double x) {
  return x <= 0.0031308 ? 12.92 * x : 1.055 * std::pow(x, 1.0 / 2.4) - 0.055;
}

TEST(TransferTables, EveryEntryIsTheFunctionRoundedOnce) {
  const struct {
    const float* table;
    double (*f)(double);
    int levels;
  } tables[] = {{pxl::colour::kSrgbToLinear256, ToLinear, 256},
                {pxl::colour::kLinearToSrgb256, ToEncoded, 256},
                {pxl::colour::kSrgbToLinear212, ToLinear, 212},
                {pxl::colour::kLinearToSrgb212, ToEncoded, 212}};
  for (const auto& t : tables) {
    for (int i = 0; i < t.levels; ++i)
      EXPECT_EQ(static_cast<float>(t.f(static_cast<double>(i) / (t.levels - 1))), t.table[i])
          << "entry " << i << " of " << t.levels;
    EXPECT_EQ(1.0f, t.table[t.levels]);
  }
  char text[32];
  std::snprintf(text, sizeof text, "%.6g", pxl::colour::kLinearToSrgb256[1]);
  EXPECT_STREQ("0.0498401", text);  // the coarse foot
}

TEST(Curve, OneReadsTheLastPositionOnlyWithTheExtraEntry) {
  const Table t(256, true);
  const float one = 1.0f;
  float out = 0;
  Curve_32f_C1R(&one, 4, &out, 4, {0, 0, 1, 1}, t.v.data(), 256, true, true);
  EXPECT_EQ(t.v[255], out);
  // Without it the table ends at entry 255 (NaN after it): 1.0 interpolates
  // between entries 254 and 255 and never reads past them.
  const Table short256(256, false);
  Curve_32f_C1R(&one, 4, &out, 4, {0, 0, 1, 1}, short256.v.data(), 256, false, true);
  EXPECT_FALSE(std::isnan(out));
  EXPECT_LT(out, short256.v[255] + 1e-6f);
  EXPECT_GT(out, short256.v[254] - 1e-6f);
}

TEST(Transfer, HalfInterpolatesAndDiffersFromTheFormula) {
  const float half = 0.5f;
  float out = 0;
  SRGBToRGB_32f_C1R(&half, 4, &out, 4, {0, 0, 1, 1});
  const float* t = pxl::colour::kSrgbToLinear256;
  EXPECT_GT(out, t[127]);
  EXPECT_LT(out, t[128]);
  EXPECT_NE(static_cast<float>(ToLinear(0.5)), out);
  EXPECT_NEAR(ToLinear(0.5), out, 2e-4);
}

TEST(Transfer, ColourRowsAreOneLongRowOfElements) {
  // C4 runs every element, the fourth included, through the table; AC4
  // keeps the source's fourth.
  const float px[8] = {0.2f, 0.4f, 0.6f, 0.8f, 0.1f, 0.3f, 0.5f, 0.7f};
  float c4[8], ac4[8], c1[8];
  SRGBToRGB_32f_C4R(px, 32, c4, 32, {0, 0, 2, 1});
  SRGBToRGB_32f_AC4R(px, 32, ac4, 32, {0, 0, 2, 1});
  SRGBToRGB_32f_C1R(px, 32, c1, 32, {0, 0, 8, 1});
  for (int i = 0; i < 8; ++i) {
    EXPECT_EQ(c1[i], c4[i]) << i;
    EXPECT_EQ(i % 4 == 3 ? px[i] : c1[i], ac4[i]) << i;
  }
}

TEST(Tonemap, ZeroStaysZeroAndAlphaIsKept) {
  float px[8] = {0.0f, 0.5f, 2.0f, 0.25f, -0.0f, 1.0f, 100.0f, -3.0f};
  const float alpha0 = px[3], alpha1 = px[7];
  Uncharted2Tonemap_32f_AC4IR(px, 32, {0, 0, 2, 1});
  EXPECT_EQ(0.0f, px[0]);
  EXPECT_FALSE(std::signbit(px[0]));
  EXPECT_EQ(alpha0, px[3]);
  EXPECT_EQ(alpha1, px[7]);
  EXPECT_EQ(TonemapRef(2.0f), px[2]);
}

TEST(Tonemap, FourAndOneFloatFormsAgreeOnAWideSweep) {
  // Every element of a C1 row of 4n + 3 goes through one of the two forms;
  // both must give the scalar formula's bits, negatives and large values too.
  std::vector<float> in, out(4099);
  for (int i = 0; i < 4099; ++i) in.push_back(-50.0f + 100.0f * static_cast<float>(i) / 4099.0f);
  in[7] = std::numeric_limits<float>::infinity();
  in[4097] = -1e30f;
  ForEachLevel([&](int level) {
    Uncharted2Tonemap_32f_C1R(in.data(), 0, out.data(), 0, {0, 0, 4099, 1});
    for (int i = 0; i < 4099; ++i) {
      const float want = TonemapRef(in[i]);
      ASSERT_TRUE(std::memcmp(&want, &out[i], 4) == 0 || (std::isnan(want) && std::isnan(out[i])))
          << "level " << level << ", x " << in[i];
    }
  });
}

}  // namespace
