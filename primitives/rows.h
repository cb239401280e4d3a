// Building blocks of the primitive kernels: argument checks and whole rows of
// bytes.  Included by kernel units after core/simd.h; everything lands in the
// unit's level namespace.
#ifndef PXL_PRIMITIVES_ROWS_H
#define PXL_PRIMITIVES_ROWS_H

#include "core/simd.h"

#define PXL_NOINLINE __attribute__((noinline))

PXL_LEVEL_BEGIN
namespace rows {

// The checks every pass-through kernel makes before it writes: pointers
// first (pxlStsNullPtrErr), then the size (pxlStsSizeErr).
template <typename... P>
PXL_INLINE PxlStatus Check(int width, int height, const P*... pointers) {
  if (!((pointers != nullptr) && ...)) return pxlStsNullPtrErr;
  if (width < 1 || height < 1) return pxlStsSizeErr;
  return pxlStsNoErr;
}

// A plane array and each of its N planes must be given.
template <int N, typename T>
PXL_INLINE bool PlanesGiven(T* const* planes) {
  if (!planes) return false;
  for (int i = 0; i < N; ++i)
    if (!planes[i]) return false;
  return true;
}

template <typename T>
PXL_INLINE T* Row(T* base, int step, int y) {
  return AddBytes(base, static_cast<intptr_t>(step) * y);
}

// Stores a vector at p; with NT, a non-temporal store, p aligned to the
// vector's size.  A kernel that streams ends with _mm_sfence().
template <bool NT>
PXL_INLINE void Put(void* p, __m128i v) {
  if (NT)
    _mm_stream_si128(static_cast<__m128i*>(p), v);
  else
    _mm_storeu_si128(static_cast<__m128i*>(p), v);
}
#if PXL_LEVEL >= 3
template <bool NT>
PXL_INLINE void Put(void* p, __m256i v) {
  if (NT)
    _mm256_stream_si256(static_cast<__m256i*>(p), v);
  else
    _mm256_storeu_si256(static_cast<__m256i*>(p), v);
}
#endif
#if PXL_LEVEL >= 5
template <bool NT>
PXL_INLINE void Put(void* p, __m512i v) {
  if (NT)
    _mm512_stream_si512(static_cast<__m512i*>(p), v);
  else
    _mm512_storeu_si512(p, v);
}
#endif

// Bytes from p to the next 64-byte boundary: what a streaming row writes
// with ordinary stores before its aligned part.
PXL_INLINE size_t ToLine(const void* p) { return (64 - reinterpret_cast<uintptr_t>(p) % 64) % 64; }

// The value an opaque alpha channel holds in each element type.
template <typename T>
constexpr T Opaque();
template <>
constexpr uint8_t Opaque<uint8_t>() {
  return 255;
}
template <>
constexpr uint16_t Opaque<uint16_t>() {
  return 65535;
}
template <>
constexpr int16_t Opaque<int16_t>() {
  return 32767;
}
template <>
constexpr int32_t Opaque<int32_t>() {
  return 2147483647;
}
template <>
constexpr float Opaque<float>() {
  return 1.0f;
}

// Copies n bytes from s to d, the 64-byte lines of d that it covers whole
// with non-temporal stores and the bytes before and after them with
// ordinary ones.  The caller ends with _mm_sfence().
PXL_NOINLINE inline void StreamCopy(uint8_t* d, const uint8_t* s, size_t n) {
  size_t i = ToLine(d);
  if (i >= n) {
    __builtin_memcpy(d, s, n);
    return;
  }
  __builtin_memcpy(d, s, i);
  for (; i + 64 <= n; i += 64) {
#if PXL_LEVEL >= 5
    Put<true>(d + i, _mm512_loadu_si512(s + i));
#elif PXL_LEVEL >= 3
    for (int h = 0; h < 64; h += 32)
      Put<true>(d + i + h, _mm256_loadu_si256(reinterpret_cast<const __m256i*>(s + i + h)));
#else
    for (int h = 0; h < 64; h += 16)
      Put<true>(d + i + h, _mm_loadu_si128(reinterpret_cast<const __m128i*>(s + i + h)));
#endif
  }
  __builtin_memcpy(d + i, s + i, n - i);
}

// Copies rows of `rowBytes` bytes; rows that follow each other without a gap
// in both images are copied as one block.  With `stream`, through
// StreamCopy.
PXL_NOINLINE inline void CopyRows(const void* src, int srcStep, void* dst, int dstStep,
                                  size_t rowBytes, int height, bool stream = false) {
  const uint8_t* s = static_cast<const uint8_t*>(src);
  uint8_t* d = static_cast<uint8_t*>(dst);
  int rows = height;
  if (srcStep == dstStep && static_cast<size_t>(srcStep) == rowBytes) {
    rowBytes *= static_cast<size_t>(height);
    rows = 1;
  }
  for (int y = 0; y < rows; ++y) {
    if (stream)
      StreamCopy(d, s, rowBytes);
    else
      __builtin_memcpy(d, s, rowBytes);
    s += srcStep;
    d += dstStep;
  }
  if (stream) _mm_sfence();
}

// A row produced in pieces of at most `Bytes` bytes into a buffer in the
// first cache and streamed from there: make(buffer, first, count) writes
// elements first .. first + count - 1 of the row (count <= Chunk<T>()) to
// the buffer, which then goes to d + first through StreamCopy.  For kernels
// that write every byte of their destination rows.
template <typename T, int PixelElems>
constexpr int ChunkPixels() {
  return 4096 / (PixelElems * static_cast<int>(sizeof(T)));
}
template <typename T, int PixelElems, typename Make>
PXL_INLINE void StreamRow(T* d, int width, Make make) {
  constexpr int K = ChunkPixels<T, PixelElems>();
  alignas(64) T buffer[K * PixelElems];
  for (int x = 0; x < width; x += K) {
    const int n = width - x < K ? width - x : K;
    make(buffer, x, n);
    StreamCopy(reinterpret_cast<uint8_t*>(d + PixelElems * x),
               reinterpret_cast<const uint8_t*>(buffer), sizeof(T) * PixelElems * n);
  }
}

// Byte b of a group of `Bytes` bytes, starting on a pixel of four E-byte
// elements, belongs to one of the first three elements.
template <int E>
constexpr bool InFirstThree(int b) {
  return b % (4 * E) < 3 * E;
}

// Copies the first three elements of each of `pixels` four-element pixels
// (E bytes an element) from s to d and leaves d's fourth elements as they
// were.  Below level 5 a group of pixels is read from d, blended and written
// back whole, so the fourth elements are rewritten with their own values;
// level 5 stores through a byte mask and does not touch them.
template <int E>
PXL_NOINLINE void MergeFirstThree(const uint8_t* s, uint8_t* d, size_t pixels) {
  constexpr size_t P = 4 * E;
  size_t i = 0;
#if PXL_LEVEL >= 5
  constexpr uint64_t mask = [] {
    uint64_t m = 0;
    for (int b = 0; b < 64; ++b)
      if (InFirstThree<E>(b)) m |= uint64_t{1} << b;
    return m;
  }();
  constexpr size_t n = 64 / P;
  for (; i + n <= pixels; i += n)
    _mm512_mask_storeu_epi8(d + i * P, mask, _mm512_loadu_si512(s + i * P));
  if (i < pixels) {
    const size_t bytes = (pixels - i) * P;
    const uint64_t live = (uint64_t{1} << bytes) - 1;  // bytes < 64
    _mm512_mask_storeu_epi8(d + i * P, mask & live, _mm512_maskz_loadu_epi8(live, s + i * P));
  }
  return;
#elif PXL_LEVEL >= 3
  constexpr size_t n = 32 / P;
  alignas(32) static constexpr struct Mask {
    int8_t b[32];
    constexpr Mask() : b() {
      for (int k = 0; k < 32; ++k) b[k] = InFirstThree<E>(k) ? -1 : 0;
    }
  } kMask{};
  const __m256 m = _mm256_load_ps(reinterpret_cast<const float*>(kMask.b));
  for (; i + n <= pixels; i += n) {
    const __m256 a = _mm256_loadu_ps(reinterpret_cast<const float*>(s + i * P));
    const __m256 b = _mm256_loadu_ps(reinterpret_cast<const float*>(d + i * P));
    _mm256_storeu_ps(reinterpret_cast<float*>(d + i * P),
                     _mm256_or_ps(_mm256_and_ps(m, a), _mm256_andnot_ps(m, b)));
  }
#else
  constexpr size_t unit = P > 16 ? P : 16;  // bytes a group: whole pixels, whole vectors
  constexpr size_t n = unit / P;
  alignas(16) static constexpr struct Mask {
    int8_t b[unit];
    constexpr Mask() : b() {
      for (size_t k = 0; k < unit; ++k) b[k] = InFirstThree<E>(static_cast<int>(k)) ? -1 : 0;
    }
  } kMask{};
  for (; i + n <= pixels; i += n) {
    for (size_t v = 0; v < unit; v += 16) {
      const __m128i m = _mm_load_si128(reinterpret_cast<const __m128i*>(kMask.b + v));
      const __m128i a = _mm_loadu_si128(reinterpret_cast<const __m128i*>(s + i * P + v));
      const __m128i b = _mm_loadu_si128(reinterpret_cast<const __m128i*>(d + i * P + v));
      _mm_storeu_si128(reinterpret_cast<__m128i*>(d + i * P + v),
                       _mm_or_si128(_mm_and_si128(m, a), _mm_andnot_si128(m, b)));
    }
  }
#endif
#if PXL_LEVEL < 5
  for (; i < pixels; ++i) __builtin_memcpy(d + i * P, s + i * P, 3 * E);
#endif
}

// MergeFirstThree over rows.
template <int E>
PXL_INLINE void MergeRows(const void* src, int srcStep, void* dst, int dstStep, int width,
                          int height) {
  const uint8_t* s = static_cast<const uint8_t*>(src);
  uint8_t* d = static_cast<uint8_t*>(dst);
  for (int y = 0; y < height; ++y) {
    MergeFirstThree<E>(s, d, static_cast<size_t>(width));
    s += srcStep;
    d += dstStep;
  }
}

}  // namespace rows
PXL_LEVEL_END

#endif
