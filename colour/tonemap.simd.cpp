// The four-float runner and the rational tone curve that runs on it.
//
// The runner takes a formula in two forms that compute the same operations:
// on four floats at once and on one.  A row of one or three elements a pixel
// is a run of width x elements: the four-float form takes width x elements / 4
// groups and the one-float form the rest.  A row of four elements a pixel
// takes the four-float form once a pixel; where the fourth element is alpha
// (layout 0), lanes 0 to 2 of the result are written and the source's fourth
// element is copied.
#include "core/simd.h"

PXL_LEVEL_BEGIN

namespace {

template <typename Formula>
PXL_INLINE void RunFour(const float* src, int srcStep, float* dst, int dstStep, int width,
                        int height, int layout) {
  for (int y = 0; y < height; ++y) {
    const float* s = AddBytes(src, static_cast<intptr_t>(srcStep) * y);
    float* d = AddBytes(dst, static_cast<intptr_t>(dstStep) * y);
    if (layout == 0) {
      for (int x = 0; x < width; ++x) {
        float r[4];
        _mm_storeu_ps(r, Formula::Four(_mm_loadu_ps(s + 4 * x)));
        const float alpha = s[4 * x + 3];
        d[4 * x] = r[0];
        d[4 * x + 1] = r[1];
        d[4 * x + 2] = r[2];
        d[4 * x + 3] = alpha;
      }
    } else if (layout == 4) {
      for (int x = 0; x < width; ++x)
        _mm_storeu_ps(d + 4 * x, Formula::Four(_mm_loadu_ps(s + 4 * x)));
    } else {
      const int n = width * layout;
      int x = 0;
      for (; x + 4 <= n; x += 4) _mm_storeu_ps(d + x, Formula::Four(_mm_loadu_ps(s + x)));
      for (; x < n; ++x) d[x] = Formula::One(s[x]);
    }
  }
}

// ((x * A - B) * x) / ((C - x * D) * x - E), in single precision, in that order.
struct Uncharted2 {
  static constexpr float A = -2517.09f, B = 529.711f, C = 0.69f, D = 2586.37f, E = 921.068f;
  static PXL_INLINE __m128 Four(__m128 x) {
    const __m128 num = _mm_mul_ps(_mm_sub_ps(_mm_mul_ps(x, _mm_set1_ps(A)), _mm_set1_ps(B)), x);
    const __m128 den = _mm_sub_ps(
        _mm_mul_ps(_mm_sub_ps(_mm_set1_ps(C), _mm_mul_ps(x, _mm_set1_ps(D))), x), _mm_set1_ps(E));
    return _mm_div_ps(num, den);
  }
  static PXL_INLINE float One(float x) { return ((x * A - B) * x) / ((C - x * D) * x - E); }
};

}  // namespace

void uncharted2Rows(const float* src, int srcStep, float* dst, int dstStep, int width, int height,
                    int layout) {
  RunFour<Uncharted2>(src, srcStep, dst, dstStep, width, height, layout);
}

PXL_LEVEL_END
