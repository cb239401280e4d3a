// Kernels of the curve exports: each element looked up in a float table
// with linear interpolation,
//
//   p = x * scale;  i = p truncated toward zero;
//   result = (table[i + 1] - table[i]) * (p - i) + table[i],
//
// in single precision and in that order at every level: from AVX2 on, eight
// (AVX-512: sixteen) elements at a time with two gathers, the rest one at a
// time with the same operations.  Integer elements are normalised to 0..1
// first ((float)x / 255 or / 65535) and the result is scaled back, rounded to
// nearest even by the conversion instruction and saturated; an 8u call first
// maps all 256 values into a small table and then looks pixels up in it.
#include "core/simd.h"

PXL_LEVEL_BEGIN

namespace {

PXL_INLINE float At(float x, const float* t, float scale) {
  const float p = x * scale;
  const int i = static_cast<int>(p);
  return (t[i + 1] - t[i]) * (p - static_cast<float>(i)) + t[i];
}

template <typename T>
PXL_INLINE T* Step(T* p, int step) {
  return AddBytes(p, step);
}

// Elements n0 .. n - 1 of a float row; returns where the vectors stopped.
PXL_INLINE int Vectors(const float* s, float* d, int n, const float* t, float scale) {
  int x = 0;
#if PXL_LEVEL >= 5
  const __m512 vs = _mm512_set1_ps(scale);
  for (; x + 16 <= n; x += 16) {
    const __m512 p = _mm512_mul_ps(_mm512_loadu_ps(s + x), vs);
    const __m512i i = _mm512_cvttps_epi32(p);
    const __m512 t0 = _mm512_i32gather_ps(i, t, 4);
    const __m512 t1 = _mm512_i32gather_ps(i, t + 1, 4);
    _mm512_storeu_ps(d + x, _mm512_add_ps(_mm512_mul_ps(_mm512_sub_ps(t1, t0),
                                                        _mm512_sub_ps(p, _mm512_cvtepi32_ps(i))),
                                          t0));
  }
#elif PXL_LEVEL >= 4
  const __m256 vs = _mm256_set1_ps(scale);
  for (; x + 8 <= n; x += 8) {
    const __m256 p = _mm256_mul_ps(_mm256_loadu_ps(s + x), vs);
    const __m256i i = _mm256_cvttps_epi32(p);
    const __m256 t0 = _mm256_i32gather_ps(t, i, 4);
    const __m256 t1 = _mm256_i32gather_ps(t + 1, i, 4);
    _mm256_storeu_ps(d + x, _mm256_add_ps(_mm256_mul_ps(_mm256_sub_ps(t1, t0),
                                                        _mm256_sub_ps(p, _mm256_cvtepi32_ps(i))),
                                          t0));
  }
#else
  (void)s, (void)d, (void)n, (void)t, (void)scale;
#endif
  return x;
}

// An integer element through the curve: normalised, interpolated, scaled
// back, rounded to nearest even and saturated to 0 .. Max.
template <int Max>
PXL_INLINE int IntAt(int x, const float* t, float scale) {
  float v = At(static_cast<float>(x) / static_cast<float>(Max), t, scale) * static_cast<float>(Max);
  if (!(v > 0.0f)) v = 0.0f;
  if (v > static_cast<float>(Max)) v = static_cast<float>(Max);
  return _mm_cvtss_si32(_mm_set_ss(v));
}

// The 256 results of an 8u curve.
struct ByteMap {
  uint8_t v[256];
  ByteMap(const float* t, float scale) {
    for (int x = 0; x < 256; ++x) v[x] = static_cast<uint8_t>(IntAt<255>(x, t, scale));
  }
};

}  // namespace

void curveElems32f(const float* src, int srcStep, float* dst, int dstStep, int count, int height,
                   const float* table, float scale) {
  for (int y = 0; y < height; ++y, src = Step(src, srcStep), dst = Step(dst, dstStep)) {
    for (int x = Vectors(src, dst, count, table, scale); x < count; ++x)
      dst[x] = At(src[x], table, scale);
  }
}

void curvePixels32f(const float* src, int srcStep, float* dst, int dstStep, int width, int height,
                    const float* table, float scale, int sc, int dc, int copyAlpha) {
  for (int y = 0; y < height; ++y, src = Step(src, srcStep), dst = Step(dst, dstStep)) {
    for (int x = 0; x < width; ++x) {
      const float* s = src + x * sc;
      float* d = dst + x * dc;
      const float a = copyAlpha ? s[3] : 0.0f;
      for (int c = 0; c < 3; ++c) d[c] = At(s[c], table, scale);
      if (copyAlpha) d[3] = a;
    }
  }
}

void curveElems16u(const uint16_t* src, int srcStep, uint16_t* dst, int dstStep, int count,
                   int height, const float* table, float scale) {
  for (int y = 0; y < height; ++y, src = Step(src, srcStep), dst = Step(dst, dstStep))
    for (int x = 0; x < count; ++x)
      dst[x] = static_cast<uint16_t>(IntAt<65535>(src[x], table, scale));
}

void curvePixels16u(const uint16_t* src, int srcStep, uint16_t* dst, int dstStep, int width,
                    int height, const float* table, float scale, int sc, int dc, int copyAlpha) {
  for (int y = 0; y < height; ++y, src = Step(src, srcStep), dst = Step(dst, dstStep)) {
    for (int x = 0; x < width; ++x) {
      const uint16_t* s = src + x * sc;
      uint16_t* d = dst + x * dc;
      const uint16_t a = copyAlpha ? s[3] : 0;
      for (int c = 0; c < 3; ++c) d[c] = static_cast<uint16_t>(IntAt<65535>(s[c], table, scale));
      if (copyAlpha) d[3] = a;
    }
  }
}

void curveElems8u(const uint8_t* src, int srcStep, uint8_t* dst, int dstStep, int count, int height,
                  const float* table, float scale) {
  if (count < 1 || height < 1) return;
  const ByteMap map(table, scale);
  for (int y = 0; y < height; ++y, src = Step(src, srcStep), dst = Step(dst, dstStep))
    for (int x = 0; x < count; ++x) dst[x] = map.v[src[x]];
}

void curvePixels8u(const uint8_t* src, int srcStep, uint8_t* dst, int dstStep, int width,
                   int height, const float* table, float scale, int sc, int dc, int copyAlpha) {
  if (width < 1 || height < 1) return;
  const ByteMap map(table, scale);
  for (int y = 0; y < height; ++y, src = Step(src, srcStep), dst = Step(dst, dstStep)) {
    for (int x = 0; x < width; ++x) {
      const uint8_t* s = src + x * sc;
      uint8_t* d = dst + x * dc;
      const uint8_t a = copyAlpha ? s[3] : 0;
      for (int c = 0; c < 3; ++c) d[c] = map.v[s[c]];
      if (copyAlpha) d[3] = a;
    }
  }
}

PXL_LEVEL_END
