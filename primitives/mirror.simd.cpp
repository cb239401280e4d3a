// Kernels of Mirror: the rows, the pixels of each row, or both, in reverse
// order.
//
// Reversing a row reads a vector from one end and stores it, its pixels
// reversed, at the other: pixels of 1, 2, 4, 8 and 16 bytes a vector at a
// time (16 bytes, 32 from AVX2 on), other sizes and the rest of a row one
// pixel at a time.  In place, pixels are exchanged in pairs, two vectors at a
// time while the two never overlap.
#include "core/simd.h"
#include "primitives/layout.h"
#include "primitives/rows.h"

#define PXL_THIS_UNIT_mirror PXL_PROBE
#define PXL_ROWS_KERNELS
#include "core/member_rows.h"

PXL_LEVEL_BEGIN

namespace {

using namespace rows;

constexpr int kTopBottom = 0;
constexpr int kLeftRight = 1;
constexpr int kBoth = 2;

#if PXL_LEVEL >= 4
using Vec = __m256i;
constexpr int kVecBytes = 32;
PXL_INLINE Vec Load(const uint8_t* p) {
  return _mm256_loadu_si256(reinterpret_cast<const Vec*>(p));
}
PXL_INLINE void Store(uint8_t* p, Vec v) { _mm256_storeu_si256(reinterpret_cast<Vec*>(p), v); }
// The pixels of a vector in reverse order.
template <int PB>
PXL_INLINE Vec Reverse(Vec v) {
  if (PB == 1 || PB == 2) {
    const __m256i within =
        PB == 1 ? _mm256_setr_epi8(15, 14, 13, 12, 11, 10, 9, 8, 7, 6, 5, 4, 3, 2, 1, 0, 15, 14, 13,
                                   12, 11, 10, 9, 8, 7, 6, 5, 4, 3, 2, 1, 0)
                : _mm256_setr_epi8(14, 15, 12, 13, 10, 11, 8, 9, 6, 7, 4, 5, 2, 3, 0, 1, 14, 15, 12,
                                   13, 10, 11, 8, 9, 6, 7, 4, 5, 2, 3, 0, 1);
    return _mm256_permute4x64_epi64(_mm256_shuffle_epi8(v, within), 0x4E);
  }
  if (PB == 4) return _mm256_permutevar8x32_epi32(v, _mm256_setr_epi32(7, 6, 5, 4, 3, 2, 1, 0));
  if (PB == 8) return _mm256_permute4x64_epi64(v, 0x1B);
  return _mm256_permute2x128_si256(v, v, 0x01);
}
#else
using Vec = __m128i;
constexpr int kVecBytes = 16;
PXL_INLINE Vec Load(const uint8_t* p) { return _mm_loadu_si128(reinterpret_cast<const Vec*>(p)); }
PXL_INLINE void Store(uint8_t* p, Vec v) { _mm_storeu_si128(reinterpret_cast<Vec*>(p), v); }
template <int PB>
PXL_INLINE Vec Reverse(Vec v) {
  if (PB == 16) return v;
  if (PB == 8) return _mm_shuffle_epi32(v, 0x4E);
  v = _mm_shuffle_epi32(v, 0x1B);
  if (PB == 4) return v;
  v = _mm_shufflehi_epi16(_mm_shufflelo_epi16(v, 0xB1), 0xB1);
  if (PB == 2) return v;
  return _mm_or_si128(_mm_slli_epi16(v, 8), _mm_srli_epi16(v, 8));
}
#endif

template <int PB>
constexpr bool kWhole = PB == 1 || PB == 2 || PB == 4 || PB == 8 || PB == 16;

template <int PB>
PXL_INLINE uint8_t* Px(uint8_t* row, int x) {
  return row + static_cast<intptr_t>(x) * PB;
}
template <int PB>
PXL_INLINE const uint8_t* Px(const uint8_t* row, int x) {
  return row + static_cast<intptr_t>(x) * PB;
}

// d[x] = s[w - 1 - x] for the w pixels of a row.
template <int PB>
PXL_NOINLINE void ReverseRow(const uint8_t* s, uint8_t* d, int w) {
  int x = 0;
  if (kWhole<PB>) {
    constexpr int K = kVecBytes / PB;
    for (; x + K <= w; x += K) Store(Px<PB>(d, x), Reverse<PB>(Load(Px<PB>(s, w - x - K))));
  }
  for (; x < w; ++x) __builtin_memcpy(Px<PB>(d, x), Px<PB>(s, w - 1 - x), PB);
}

// Exchanges a[x] and b[w - 1 - x] for x below n; a and b are rows of w
// pixels, the same row when n is w / 2.
template <int PB>
PXL_NOINLINE void ExchangeReversed(uint8_t* a, uint8_t* b, int w, int n) {
  int x = 0;
  if (kWhole<PB>) {
    constexpr int K = kVecBytes / PB;
    // With x + K <= n <= w / 2 for one row, the two vectors never overlap.
    for (; x + K <= n; x += K) {
      const Vec va = Load(Px<PB>(a, x)), vb = Load(Px<PB>(b, w - x - K));
      Store(Px<PB>(a, x), Reverse<PB>(vb));
      Store(Px<PB>(b, w - x - K), Reverse<PB>(va));
    }
  }
  for (; x < n; ++x) {
    uint8_t t[PB];
    __builtin_memcpy(t, Px<PB>(a, x), PB);
    __builtin_memcpy(Px<PB>(a, x), Px<PB>(b, w - 1 - x), PB);
    __builtin_memcpy(Px<PB>(b, w - 1 - x), t, PB);
  }
}

PXL_NOINLINE inline void ExchangeBytes(uint8_t* a, uint8_t* b, size_t n) {
  size_t i = 0;
  for (; i + kVecBytes <= n; i += kVecBytes) {
    const Vec va = Load(a + i), vb = Load(b + i);
    Store(a + i, vb);
    Store(b + i, va);
  }
  for (; i < n; ++i) {
    const uint8_t t = a[i];
    a[i] = b[i];
    b[i] = t;
  }
}

template <int PB>
PxlStatus MirrorCopy(const void* src, int ss, void* dst, int ds, int width, int height, int flip) {
  if (PxlStatus st = Check(width, height, src, dst)) return st;
  if (flip != kTopBottom && flip != kLeftRight && flip != kBoth) return pxlStsMirrorFlipErr;
  const uint8_t* s = static_cast<const uint8_t*>(src);
  uint8_t* d = static_cast<uint8_t*>(dst);
  for (int y = 0; y < height; ++y) {
    const uint8_t* from = Row(s, ss, flip == kLeftRight ? y : height - 1 - y);
    if (flip == kTopBottom)
      __builtin_memcpy(Row(d, ds, y), from, static_cast<size_t>(width) * PB);
    else
      ReverseRow<PB>(from, Row(d, ds, y), width);
  }
  return pxlStsNoErr;
}

template <int PB>
PxlStatus MirrorInPlace(void* image, int step, int width, int height, int flip) {
  if (PxlStatus st = Check(width, height, image)) return st;
  if (flip != kTopBottom && flip != kLeftRight && flip != kBoth) return pxlStsMirrorFlipErr;
  uint8_t* p = static_cast<uint8_t*>(image);
  if (flip == kLeftRight) {
    for (int y = 0; y < height; ++y)
      ExchangeReversed<PB>(Row(p, step, y), Row(p, step, y), width, width / 2);
    return pxlStsNoErr;
  }
  for (int y = 0; y < height / 2; ++y) {
    uint8_t* a = Row(p, step, y);
    uint8_t* b = Row(p, step, height - 1 - y);
    if (flip == kTopBottom)
      ExchangeBytes(a, b, static_cast<size_t>(width) * PB);
    else
      ExchangeReversed<PB>(a, b, width, width);
  }
  if (flip == kBoth && height % 2) {
    uint8_t* mid = Row(p, step, height / 2);
    ExchangeReversed<PB>(mid, mid, width, width / 2);
  }
  return pxlStsNoErr;
}

}  // namespace

#include "primitives/mirror.def"

PXL_LEVEL_END
