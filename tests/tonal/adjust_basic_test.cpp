// Basic adjustments: each export against a scalar reference of its formula,
// bit for bit, over regions with offsets, padded steps and misaligned rows;
// guard bytes around the image; the same bytes at every processor level.
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <functional>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include "pxl/pxl.h"
#include "support/image.h"
#include "support/levels.h"

namespace {

using pxltest::FloatImage;
using pxltest::GuardedBuffer;
using pxltest::SameBits;

// ---- scalar references, written from the formulas ---------------------------

float Luma(const float* p) { return (p[0] * 0.299f + p[1] * 0.587f) + p[2] * 0.114f; }

float Clamp01(float v) {
  const float hi = v > 0.0f ? v : 0.0f;  // the maximum first: NaN gives 0
  return hi < 1.0f ? hi : 1.0f;
}

void RefSaturation(const float* p, float s, float* out) {
  const float y = Luma(p);
  for (int c = 0; c < 3; ++c) out[c] = (p[c] - y) * s + y;
  out[3] = p[3];
}

void RefContrast(const float* p, float c, float* out) {
  for (int i = 0; i < 3; ++i) out[i] = (p[i] - 0.5f) * c + 0.5f;
  out[3] = p[3];
}

void RefBrightnessAC4(const float* p, float g, float* out) {
  for (int c = 0; c < 3; ++c) out[c] = p[c] * g;
  out[3] = p[3];
}

void RefBrightnessC4(const float* p, float g, float* out) {
  for (int c = 0; c < 4; ++c) out[c] = p[c] * g;
}

struct ExposureArgs {
  float value, minValue, maxValue;
};

void RefExposureMap(const float* p, float w, const ExposureArgs& a, float* out) {
  float e = a.value + w;
  if (e >= a.minValue)
    e = e < a.maxValue ? e : a.maxValue;
  else
    e = a.minValue;
  const float m = powf(2.0f, e * 1.666f);
  for (int c = 0; c < 4; ++c) {
    const float t = p[c] * m;
    out[c] = t / ((1.0f - p[c]) + t);
  }
}

void RefExposureAligned(const float* p, float v, float* out) {
  const float m = powf(2.0f, v * 1.666f);
  const float t = v * 0.25f + 1.25f;
  float c = 0.0f;
  if (t >= 0.0f) c = t < 1.0f ? t : 1.0f;
  const float d = 1.0f - c;
  const float k = static_cast<float>(static_cast<double>(d) * 0.15 + 1.0);
  for (int i = 0; i < 4; ++i) {
    const float q = p[i] * m;
    out[i] = Clamp01((q * k) / ((k - p[i]) + q));
  }
}

void RefExposureLuma(const float* p, float v, float* out) {
  const float m = powf(2.0f, v);
  const float l = (p[1] * 0.7154f + p[0] * 0.2125f) + p[2] * 0.0721f;
  const float t = m * l;
  const float s = t / (((t + 1.0f) - l) * (l + 0.000001f));
  for (int i = 0; i < 4; ++i) out[i] = Clamp01(p[i] * s);
}

// ---- the six exports as cases -------------------------------------------------

struct Case {
  const char* name;
  bool usesMap;
  // Runs the export on the whole-image bases.
  std::function<PxlStatus(float*, int, PxliRect, const float*, int)> run;
  // Reference for one pixel; `aligned` is the 16-byte alignment of the
  // region's first pixel.
  std::function<void(const float*, float, bool aligned, float*)> ref;
};

const ExposureArgs kExposure{0.35f, -0.9f, 1.2f};
constexpr float kUniformValue = -1.7f;

std::vector<Case> Cases() {
  return {
      {"AdjustSaturation_32f_AC4IR", true, AdjustSaturation_32f_AC4IR,
       [](const float* p, float m, bool, float* o) { RefSaturation(p, m, o); }},
      {"AdjustContrast_32f_AC4IR", true, AdjustContrast_32f_AC4IR,
       [](const float* p, float m, bool, float* o) { RefContrast(p, m, o); }},
      {"AdjustBrightness_32f_AC4IR", true, AdjustBrightness_32f_AC4IR,
       [](const float* p, float m, bool, float* o) { RefBrightnessAC4(p, m, o); }},
      {"AdjustBrightness_32f_C4IR", true, AdjustBrightness_32f_C4IR,
       [](const float* p, float m, bool, float* o) { RefBrightnessC4(p, m, o); }},
      {"AdjustExposureLin_32f_C4IMR", true,
       [](float* p, int s, PxliRect r, const float* m, int ms) {
         return AdjustExposureLin_32f_C4IMR(p, s, r, kExposure.value, m, ms, kExposure.minValue,
                                            kExposure.maxValue);
       },
       [](const float* p, float m, bool, float* o) { RefExposureMap(p, m, kExposure, o); }},
      {"AdjustExposureLin_32f_C4IR", false,
       [](float* p, int s, PxliRect r, const float*, int) {
         return AdjustExposureLin_32f_C4IR(p, s, r, kUniformValue);
       },
       [](const float* p, float, bool aligned, float* o) {
         if (aligned)
           RefExposureAligned(p, kUniformValue, o);
         else
           RefExposureLuma(p, kUniformValue, o);
       }},
  };
}

struct Geometry {
  int width, height;  // of the whole image
  PxliRect roi;
  int padBytes;     // added to the image step
  size_t misalign;  // of the image base
  int mapPadBytes;
};

// Values in and a little beyond the nominal range, with exact specials.
void FillPixels(FloatImage& img, std::mt19937& rng) {
  img.fill(rng, -0.25f, 1.25f);
  const float specials[] = {0.0f, 1.0f, 0.5f, -0.0f, 0.25f};
  std::uniform_int_distribution<int> pick(0, 9);
  for (int y = 0; y < img.height; ++y)
    for (int x = 0; x < img.width; ++x)
      for (int c = 0; c < 4; ++c)
        if (pick(rng) == 0) img.set(x, y, c, specials[(x + y + c) % 5]);
}

void CheckCase(const Case& k, const Geometry& g, unsigned seed) {
  SCOPED_TRACE(std::string(k.name) + " image " + std::to_string(g.width) + "x" +
               std::to_string(g.height) + " roi (" + std::to_string(g.roi.x) + "," +
               std::to_string(g.roi.y) + "," + std::to_string(g.roi.width) + "," +
               std::to_string(g.roi.height) + ") pad " + std::to_string(g.padBytes) + " misalign " +
               std::to_string(g.misalign));
  std::mt19937 rng(seed);
  FloatImage img(g.width, g.height, 4, g.padBytes, g.misalign);
  FillPixels(img, rng);
  FloatImage map(g.width, g.height, 1, g.mapPadBytes);
  map.fill(rng, -1.5f, 2.5f);
  const GuardedBuffer before = img.buf;
  const GuardedBuffer mapBefore = map.buf;

  ASSERT_EQ(pxlStsNoErr, k.run(img.data(), img.step, g.roi, map.data(), map.step));

  std::string where;
  EXPECT_TRUE(pxltest::ChangesInsideRegion(before, img.buf, img.step, 16, g.roi, &where)) << where;
  EXPECT_EQ(mapBefore.raw(), map.buf.raw()) << "the map was written";

  const uintptr_t first = reinterpret_cast<uintptr_t>(img.data()) +
                          static_cast<uintptr_t>(g.roi.y) * img.step + g.roi.x * 16u;
  const bool aligned = (first & 15) == 0;
  FloatImage input(g.width, g.height, 4, g.padBytes, g.misalign);
  std::memcpy(input.buf.data(), before.data(), before.size());
  int bad = 0;
  for (int y = g.roi.y; y < g.roi.y + g.roi.height && bad < 5; ++y) {
    for (int x = g.roi.x; x < g.roi.x + g.roi.width && bad < 5; ++x) {
      float in[4], want[4];
      for (int c = 0; c < 4; ++c) in[c] = input.get(x, y, c);
      k.ref(in, k.usesMap ? map.get(x, y, 0) : 0.0f, aligned, want);
      for (int c = 0; c < 4; ++c) {
        if (!SameBits(img.get(x, y, c), want[c])) {
          ADD_FAILURE() << "pixel (" << x << "," << y << ") lane " << c << ": got "
                        << img.get(x, y, c) << ", want " << want[c] << " from " << in[c];
          ++bad;
        }
      }
    }
  }
}

TEST(BasicAdjustments, MatchScalarReferenceInsideRegionOnly) {
  const Geometry geometries[] = {
      {1, 1, {0, 0, 1, 1}, 0, 0, 0},
      {17, 5, {0, 0, 17, 5}, 0, 0, 0},
      {23, 9, {3, 2, 15, 6}, 48, 0, 12},  // offsets, padded steps
      {40, 7, {1, 1, 37, 5}, 20, 4, 4},   // rows not 16-byte aligned
      {9, 6, {2, 3, 7, 3}, 4, 8, 0},      // odd-sized pad, misaligned base
      {33, 4, {0, 1, 33, 2}, 16, 12, 8},
      {300, 2, {5, 0, 290, 2}, 0, 4, 0},  // rows longer than a kernel's stretch
  };
  unsigned seed = 1;
  for (const Case& k : Cases())
    for (const Geometry& g : geometries) CheckCase(k, g, seed++);
}

TEST(BasicAdjustments, SameBytesAtEveryLevel) {
  for (const Case& k : Cases()) {
    SCOPED_TRACE(k.name);
    for (int width = 1; width <= 33; ++width) {
      for (size_t misalign : {size_t{0}, size_t{4}, size_t{3}}) {
        // Byte steps that need not be a multiple of a float, nor of a pixel.
        const int pad = (width % 3) * 4 + 4 + static_cast<int>(misalign % 4);
        const PxliRect roi{1, 1, width, 2};
        std::mt19937 rng(width * 7 + static_cast<unsigned>(misalign));
        FloatImage input(width + 2, 4, 4, pad, misalign);
        FillPixels(input, rng);
        FloatImage map(width + 2, 4, 1, 8 + static_cast<int>(misalign % 4), misalign);
        map.fill(rng, -2.0f, 3.0f);

        std::vector<uint8_t> lowest;
        pxltest::ForEachLevel([&](int level) {
          FloatImage img = input;
          ASSERT_EQ(pxlStsNoErr, k.run(img.data(), img.step, roi, map.data(), map.step));
          if (level == 0)
            lowest = img.buf.raw();
          else
            ASSERT_EQ(lowest, img.buf.raw())
                << "level " << level << ", width " << width << ", misalign " << misalign;
        });
      }
    }
  }
}

TEST(BasicAdjustments, EmptyRegionsTouchNothing) {
  for (const Case& k : Cases()) {
    SCOPED_TRACE(k.name);
    FloatImage img(4, 3, 4);
    FloatImage map(4, 3, 1);
    const GuardedBuffer before = img.buf;
    for (PxliRect roi : {PxliRect{0, 0, 0, 3}, PxliRect{0, 0, 4, 0}, PxliRect{1, 1, -2, 2},
                         PxliRect{1, 1, 2, -1}}) {
      EXPECT_EQ(pxlStsNoErr, k.run(img.data(), img.step, roi, map.data(), map.step));
      EXPECT_EQ(before.raw(), img.buf.raw());
    }
    // Nothing is validated and nothing is dereferenced.
    EXPECT_EQ(pxlStsNoErr, k.run(nullptr, 64, PxliRect{0, 0, 5, 0}, nullptr, 16));
    EXPECT_EQ(pxlStsNoErr, k.run(nullptr, 64, PxliRect{0, 0, 0, 5}, nullptr, 16));
  }
}

TEST(BasicAdjustments, NegativeStepsWalkRowsBottomUp) {
  // The same picture stored top-down and bottom-up (row 0 last in memory,
  // negative steps for image and map) gives the same pixels, region offset
  // included.
  const int w = 5, h = 4;
  const PxliRect roi{1, 1, 3, 2};
  for (const Case& k : Cases()) {
    SCOPED_TRACE(k.name);
    std::mt19937 rng(7);
    FloatImage down(w, h, 4), up(w, h, 4);
    FloatImage map(w, h, 1), mapUp(w, h, 1);
    FillPixels(down, rng);
    map.fill(rng, -1.5f, 2.5f);
    for (int y = 0; y < h; ++y) {
      std::memcpy(up.row(h - 1 - y), down.row(y), 16 * w);
      std::memcpy(mapUp.row(h - 1 - y), map.row(y), 4 * w);
    }
    ASSERT_EQ(pxlStsNoErr, k.run(down.data(), down.step, roi, map.data(), map.step));
    ASSERT_EQ(pxlStsNoErr, k.run(up.row(h - 1), -up.step, roi, mapUp.row(h - 1), -mapUp.step));
    for (int y = 0; y < h; ++y)
      EXPECT_EQ(0, std::memcmp(up.row(h - 1 - y), down.row(y), 16 * w)) << "row " << y;
  }
}

// ---- behaviours worth pinning down one by one ------------------------------

struct Pixel {
  alignas(16) float v[4];
};
const PxliRect kOne{0, 0, 1, 1};

TEST(BasicAdjustments, MapDrivenEdgeCases) {
  const float zero = 0.0f, two = 2.0f;
  // A gain of 0 gives black; AC4 keeps alpha, C4 zeroes it too.
  Pixel b{{0.3f, 0.6f, 0.9f, 0.42f}}, c = b;
  AdjustBrightness_32f_AC4IR(b.v, 16, kOne, &zero, 4);
  AdjustBrightness_32f_C4IR(c.v, 16, kOne, &zero, 4);
  EXPECT_EQ(0.0f, b.v[0] + b.v[1] + b.v[2]);
  EXPECT_EQ(0.42f, b.v[3]);
  EXPECT_EQ(0.0f, c.v[3]);

  // Saturation 2 on pure red leaves the nominal range: no clamping.
  Pixel s{{1.0f, 0.0f, 0.0f, 0.7f}};
  AdjustSaturation_32f_AC4IR(s.v, 16, kOne, &two, 4);
  EXPECT_NEAR(1.701f, s.v[0], 1e-6f);
  EXPECT_NEAR(-0.299f, s.v[1], 1e-6f);
  EXPECT_NEAR(-0.299f, s.v[2], 1e-6f);

  // Mid-grey is the contrast pivot for any factor.
  for (float k : {0.0f, 0.3f, 7.5f, -2.0f}) {
    Pixel g{{0.5f, 0.5f, 0.5f, 1.0f}};
    AdjustContrast_32f_AC4IR(g.v, 16, kOne, &k, 4);
    EXPECT_EQ(0.5f, g.v[0]);
  }

  // Alpha comes back bit for bit, even a negative NaN.
  Pixel n{{0.2f, 0.4f, 0.6f, -std::numeric_limits<float>::quiet_NaN()}};
  const Pixel before = n;
  AdjustSaturation_32f_AC4IR(n.v, 16, kOne, &two, 4);
  AdjustContrast_32f_AC4IR(n.v, 16, kOne, &two, 4);
  AdjustBrightness_32f_AC4IR(n.v, 16, kOne, &two, 4);
  EXPECT_TRUE(SameBits(before.v[3], n.v[3]));
}

TEST(BasicAdjustments, ExposureMapBoundsWin) {
  const float zero = 0.0f, nan = std::numeric_limits<float>::quiet_NaN();
  Pixel p{{0.1f, 0.5f, 0.9f, 1.0f}};
  AdjustExposureLin_32f_C4IMR(p.v, 16, kOne, 0.0f, &zero, 4, -1.0f, 1.0f);
  for (int c = 0; c < 4; ++c) EXPECT_NEAR((Pixel{{0.1f, 0.5f, 0.9f, 1.0f}}).v[c], p.v[c], 1e-6f);

  // Bounds (1, 2) lift exposure 0 to 1; a NaN map value gives the lower bound.
  Pixel a{{0.25f, 0.5f, 0.0f, 0.0f}}, b = a;
  AdjustExposureLin_32f_C4IMR(a.v, 16, kOne, 0.0f, &zero, 4, 1.0f, 2.0f);
  AdjustExposureLin_32f_C4IMR(b.v, 16, kOne, 5.0f, &nan, 4, 1.0f, 2.0f);
  const float m = powf(2.0f, 1.666f);
  EXPECT_FLOAT_EQ(0.5f * m / (0.5f + 0.5f * m), a.v[1]);
  EXPECT_EQ(0.0f, a.v[2]);
  for (int c = 0; c < 4; ++c) EXPECT_TRUE(SameBits(a.v[c], b.v[c]));

  // Bounds the wrong way round make a step at minValue: at or above it the
  // exposure is maxValue, below it minValue (the header's example).
  for (auto [value, want] : {std::pair{0.2f, 0.6405f}, std::pair{0.5f, 0.3595f},
                             std::pair{-3.0f, 0.6405f}, std::pair{3.0f, 0.3595f}}) {
    Pixel g{{0.5f, 0.5f, 0.5f, 1.0f}};
    AdjustExposureLin_32f_C4IMR(g.v, 16, kOne, value, &zero, 4, 0.5f, -0.5f);
    EXPECT_NEAR(want, g.v[0], 5e-5f) << value;
    EXPECT_EQ(1.0f, g.v[3]);
  }
}

TEST(BasicAdjustments, UniformExposureCurveDependsOnFirstPixelAlignment) {
  // The first pixel starts on a 16-byte boundary, the second 4 bytes past one.
  alignas(16) float buf[12] = {0.5f, 0.5f, 0.5f, 1.0f, 0, 0.5f, 0.5f, 0.5f, 1.0f};
  AdjustExposureLin_32f_C4IR(buf, 16, kOne, 1.0f);
  AdjustExposureLin_32f_C4IR(buf + 5, 16, kOne, 1.0f);
  const float m = powf(2.0f, 1.666f);
  EXPECT_FLOAT_EQ(m * 0.5f / (0.5f + m * 0.5f), buf[0]);  // about 0.760
  EXPECT_EQ(1.0f, buf[3]);
  EXPECT_NEAR(0.6667f, buf[5], 1e-3f);
  EXPECT_EQ(1.0f, buf[8]);  // alpha scaled by s > 1, then clamped

  // The colour example of the header.
  alignas(16) float colour[12] = {0.8f, 0.4f, 0.2f, 1.0f, 0, 0.8f, 0.4f, 0.2f, 1.0f};
  AdjustExposureLin_32f_C4IR(colour, 16, kOne, 1.0f);
  AdjustExposureLin_32f_C4IR(colour + 5, 16, kOne, 1.0f);
  const float aligned[4] = {0.9270f, 0.6790f, 0.4424f, 1.0f};
  const float luma[4] = {1.0f, 0.5440f, 0.2720f, 1.0f};
  for (int c = 0; c < 4; ++c) {
    EXPECT_NEAR(aligned[c], colour[c], 5e-5f) << c;
    EXPECT_NEAR(luma[c], colour[5 + c], 5e-5f) << c;
  }

  // Black on the luma curve gives s = 0: alpha goes to 0 as well.
  float black[5] = {0, 0, 0, 0, 1.0f};
  AdjustExposureLin_32f_C4IR(black + 1, 16, kOne, 2.0f);
  EXPECT_EQ(0.0f, black[4]);

  // The shoulder: k = 1 from -1 up, 1.15 from -5 down.
  for (float v : {-1.0f, -5.0f, -9.0f}) {
    Pixel p{{0.4f, 0.4f, 0.4f, 0.4f}};
    float want[4];
    RefExposureAligned(p.v, v, want);
    AdjustExposureLin_32f_C4IR(p.v, 16, kOne, v);
    EXPECT_TRUE(SameBits(want[0], p.v[0])) << v;
  }
  const float grey[4] = {0.4f, 0.4f, 0.4f, 0.4f};
  float at1[4];
  RefExposureAligned(grey, -1.0f, at1);
  const float m1 = powf(2.0f, -1.666f);
  EXPECT_FLOAT_EQ(0.4f * m1 / (0.6f + 0.4f * m1), at1[0]);
}

TEST(BasicAdjustments, UniformExposureDecidesOnceForAllRows) {
  // Base 4 bytes past a boundary, step 20: row 3 starts aligned, yet every
  // row takes the luma curve chosen from row 0.
  FloatImage img(1, 4, 4, 4, 4);
  for (int y = 0; y < 4; ++y)
    for (int c = 0; c < 4; ++c) img.set(0, y, c, c == 3 ? 1.0f : 0.5f);
  ASSERT_EQ(0u, (reinterpret_cast<uintptr_t>(img.row(3))) & 15);
  AdjustExposureLin_32f_C4IR(img.data(), img.step, PxliRect{0, 0, 1, 4}, 1.0f);
  float want[4];
  const float in[4] = {0.5f, 0.5f, 0.5f, 1.0f};
  RefExposureLuma(in, 1.0f, want);
  for (int y = 0; y < 4; ++y) EXPECT_TRUE(SameBits(want[0], img.get(0, y, 0))) << "row " << y;
}

TEST(BasicAdjustments, UniformExposureSendsNaNToZeroOnBothCurves) {
  // Clamp01 takes the maximum with 0 first, and the maximum of NaN and 0 is
  // 0: a NaN lane comes out as 0 on the aligned curve, and a NaN colour
  // makes the luminance NaN, so the luma curve zeroes the whole pixel.
  const float nan = std::numeric_limits<float>::quiet_NaN();
  pxltest::ForEachLevel([&](int level) {
    alignas(16) float buf[16] = {nan, 0.5f, -nan, 1.0f, 0, 0.5f, nan, 0.25f, 1.0f};
    AdjustExposureLin_32f_C4IR(buf, 16, kOne, 0.5f);
    EXPECT_EQ(0.0f, buf[0]) << "level " << level;
    EXPECT_EQ(0.0f, buf[2]) << "level " << level;
    EXPECT_LT(0.5f, buf[1]) << "level " << level;
    AdjustExposureLin_32f_C4IR(buf + 5, 16, kOne, 0.5f);
    for (int c = 0; c < 4; ++c) EXPECT_TRUE(SameBits(0.0f, buf[5 + c])) << "level " << level;
  });
}

TEST(BasicAdjustments, UniformExposureShoulderIsRoundedOnceFromDouble) {
  // Between -5 and -1 the shoulder k is d * 0.15 + 1 in double, rounded once;
  // the same sum in single precision differs in the last bit for many values,
  // which the pixels show.
  int shown = 0;
  for (int i = 0; i <= 19997; ++i) {
    // A step of no short binary form, so that d carries a full mantissa.
    const float v = -5.0f + 4.0f * static_cast<float>(i) / 19997.0f;
    alignas(16) float p[4] = {0.37f, 0.61f, 0.93f, 0.05f};
    float want[4];
    RefExposureAligned(p, v, want);
    AdjustExposureLin_32f_C4IR(p, 16, kOne, v);
    for (int c = 0; c < 4; ++c)
      ASSERT_TRUE(SameBits(want[c], p[c])) << "value " << v << " lane " << c;
    const float t = v * 0.25f + 1.25f;
    const float d = 1.0f - (t >= 0.0f ? (t < 1.0f ? t : 1.0f) : 0.0f);
    shown += static_cast<float>(static_cast<double>(d) * 0.15 + 1.0) != d * 0.15f + 1.0f;
  }
  EXPECT_LT(100, shown) << "the sweep no longer tells the two precisions apart";
}

}  // namespace
