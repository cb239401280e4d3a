// Kernels of the basic adjustments: saturation, contrast, brightness and the
// exposure curves of float RGBA images, in place.  Pixels are read, computed
// and written one at a time, rows from the top, left to right.
#include "core/simd.h"
#include "tonal/pixel.h"

PXL_LEVEL_BEGIN

namespace {

// Applies op(pixel, map value) to every pixel of the region.
template <typename Op>
PXL_INLINE void ForEachPixelWithMap(float* p, int step, const float* map, int mapStep, int width,
                                    int height, Op op) {
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x)
      px::Store(p + 4 * x, op(px::Load(p + 4 * x), px::LoadScalar(map + x)));
    p = AddBytes(p, step);
    map = AddBytes(map, mapStep);
  }
}

// Applies op(pixel) to every pixel of the region.
template <typename Op>
PXL_INLINE void ForEachPixel(float* p, int step, int width, int height, Op op) {
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) px::Store(p + 4 * x, op(px::Load(p + 4 * x)));
    p = AddBytes(p, step);
  }
}

}  // namespace

void adjustSaturationAC4(float* p, int step, const float* map, int mapStep, int width,
                         int height) {
  ForEachPixelWithMap(p, step, map, mapStep, width, height, [](__m128 v, float s) {
    const __m128 y = px::LumaDot(v);
    const __m128 r = _mm_add_ps(_mm_mul_ps(_mm_sub_ps(v, y), _mm_set1_ps(s)), y);
    return px::KeepAlpha(r, v);
  });
}

void adjustContrastAC4(float* p, int step, const float* map, int mapStep, int width,
                       int height) {
  ForEachPixelWithMap(p, step, map, mapStep, width, height, [](__m128 v, float c) {
    const __m128 half = _mm_set1_ps(0.5f);
    const __m128 r = _mm_add_ps(_mm_mul_ps(_mm_sub_ps(v, half), _mm_set1_ps(c)), half);
    return px::KeepAlpha(r, v);
  });
}

void adjustBrightnessAC4(float* p, int step, const float* map, int mapStep, int width,
                         int height) {
  ForEachPixelWithMap(p, step, map, mapStep, width, height, [](__m128 v, float g) {
    return px::KeepAlpha(_mm_mul_ps(v, _mm_set1_ps(g)), v);
  });
}

void adjustBrightnessC4(float* p, int step, const float* map, int mapStep, int width,
                        int height) {
  ForEachPixelWithMap(p, step, map, mapStep, width, height,
                      [](__m128 v, float g) { return _mm_mul_ps(v, _mm_set1_ps(g)); });
}

void adjustExposureLinMapC4(float* p, int step, const float* map, int mapStep, int width,
                            int height, float value, float minValue, float maxValue) {
  ForEachPixelWithMap(p, step, map, mapStep, width, height, [=](__m128 v, float w) {
    float e = value + w;
    // Within the bounds, the upper one wins; below the lower one, or NaN,
    // the lower one.
    e = (e >= minValue) ? (e < maxValue ? e : maxValue) : minValue;
    const __m128 m = _mm_set1_ps(powf(2.0f, e * 1.666f));
    const __m128 t = _mm_mul_ps(v, m);
    return _mm_div_ps(t, _mm_add_ps(_mm_sub_ps(_mm_set1_ps(1.0f), v), t));
  });
}

void adjustExposureLinAlignedC4(float* p, int step, int width, int height, float m, float k) {
  const __m128 vm = _mm_set1_ps(m);
  const __m128 vk = _mm_set1_ps(k);
  ForEachPixel(p, step, width, height, [=](__m128 v) {
    const __m128 q = _mm_mul_ps(v, vm);
    return px::Clamp01(_mm_div_ps(_mm_mul_ps(q, vk), _mm_add_ps(_mm_sub_ps(vk, v), q)));
  });
}

void adjustExposureLinLumaC4(float* p, int step, int width, int height, float m) {
  ForEachPixel(p, step, width, height, [=](__m128 v) {
    // L = (G * 0.7154 + R * 0.2125) + B * 0.0721, green first.
    const __m128 w = _mm_mul_ps(v, _mm_setr_ps(0.2125f, 0.7154f, 0.0721f, 0.0f));
    const float r = _mm_cvtss_f32(w);
    const float g = _mm_cvtss_f32(_mm_shuffle_ps(w, w, _MM_SHUFFLE(1, 1, 1, 1)));
    const float b = _mm_cvtss_f32(_mm_shuffle_ps(w, w, _MM_SHUFFLE(2, 2, 2, 2)));
    const float l = (g + r) + b;
    const float t = m * l;
    const float s = t / (((t + 1.0f) - l) * (l + 0.000001f));
    return px::Clamp01(_mm_mul_ps(v, _mm_set1_ps(s)));
  });
}

PXL_LEVEL_END
