// Kernels of the basic adjustments: saturation, contrast, brightness and the
// exposure curves of float RGBA images, in place.  Rows are walked from the
// top; within a row, groups of one, two or four pixels (by level) are read,
// computed and written in turn.  Every formula works within a pixel, so the
// group width does not change a result.
#include "core/simd.h"
#include "tonal/pixel.h"

PXL_LEVEL_BEGIN

using namespace px;

void adjustSaturationAC4(float* p, int step, const float* map, int mapStep, int width, int height) {
  ForRegionWithMap(p, step, map, mapStep, width, height, [](auto v, const float* m) {
    using V = decltype(v);
    const V y = LumaDot(v);
    return KeepAlpha(Add(Mul(Sub(v, y), LoadPerPixel<V>(m)), y), v);
  });
}

void adjustContrastAC4(float* p, int step, const float* map, int mapStep, int width, int height) {
  ForRegionWithMap(p, step, map, mapStep, width, height, [](auto v, const float* m) {
    using V = decltype(v);
    const V half = Set1<V>(0.5f);
    return KeepAlpha(Add(Mul(Sub(v, half), LoadPerPixel<V>(m)), half), v);
  });
}

void adjustBrightnessAC4(float* p, int step, const float* map, int mapStep, int width, int height) {
  ForRegionWithMap(p, step, map, mapStep, width, height, [](auto v, const float* m) {
    using V = decltype(v);
    return KeepAlpha(Mul(v, LoadPerPixel<V>(m)), v);
  });
}

void adjustBrightnessC4(float* p, int step, const float* map, int mapStep, int width, int height) {
  ForRegionWithMap(p, step, map, mapStep, width, height, [](auto v, const float* m) {
    using V = decltype(v);
    return Mul(v, LoadPerPixel<V>(m));
  });
}

void adjustExposureLinMapC4(float* p, int step, const float* map, int mapStep, int width,
                            int height, float value, float minValue, float maxValue) {
  // The gains of a stretch of the row come first, one powf a pixel, so that
  // no vector register has to live across the calls; then the pixels.
  constexpr int kStretch = 256;
  float gains[kStretch];
  for (int y = 0; y < height; ++y) {
    for (int x0 = 0; x0 < width; x0 += kStretch) {
      const int n = width - x0 < kStretch ? width - x0 : kStretch;
      for (int i = 0; i < n; ++i) {
        // Within the bounds the upper one wins; below the lower one, or NaN,
        // the lower one.
        float e = value + LoadFloat(map + x0 + i);
        e = (e >= minValue) ? (e < maxValue ? e : maxValue) : minValue;
        gains[i] = powf(2.0f, e * 1.666f);
      }
      ForRow(p + 4 * x0, n, [&](auto v, int x) {
        using V = decltype(v);
        const V t = Mul(v, LoadPerPixel<V>(gains + x));
        return Div(t, Add(Sub(Set1<V>(1.0f), v), t));
      });
    }
    p = AddBytes(p, step);
    map = AddBytes(map, mapStep);
  }
}

void adjustExposureLinAlignedC4(float* p, int step, int width, int height, float m, float k) {
  ForRegion(p, step, width, height, [=](auto v) {
    using V = decltype(v);
    const V q = Mul(v, Set1<V>(m));
    const V vk = Set1<V>(k);
    return Clamp01(Div(Mul(q, vk), Add(Sub(vk, v), q)));
  });
}

void adjustExposureLinLumaC4(float* p, int step, int width, int height, float m) {
  ForRegion(p, step, width, height, [=](auto v) {
    using V = decltype(v);
    // L = (G * 0.7154 + R * 0.2125) + B * 0.0721, green first.
    const V w = Mul(v, PerLane<V>(0.2125f, 0.7154f, 0.0721f, 0.0f));
    const V l = Add(Add(Splat<1>(w), Splat<0>(w)), Splat<2>(w));
    const V t = Mul(Set1<V>(m), l);
    const V s = Div(t, Mul(Sub(Add(t, Set1<V>(1.0f)), l), Add(l, Set1<V>(0.000001f))));
    return Clamp01(Mul(v, s));
  });
}

PXL_LEVEL_END
