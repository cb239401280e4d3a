// Kernels of the SwapChannels family and the unchecked loops behind Swizzle.
// From level 1, a byte shuffle built from the order moves the channels of
// all the whole pixels in 16 bytes at once (32 bytes of four-channel pixels
// from level 4); the rest of a row goes pixel by pixel.
#include "core/simd.h"
#include "primitives/channels.h"
#include "primitives/rows.h"

#define PXL_THIS_UNIT_swap_channels PXL_PROBE
#define PXL_ROWS_KERNELS
#include "core/member_rows.h"

PXL_LEVEL_BEGIN

using rows::Check;
using rows::Row;

namespace {

template <int E>
struct Element;
template <>
struct Element<1> {
  using type = uint8_t;
};
template <>
struct Element<2> {
  using type = uint16_t;
};
template <>
struct Element<4> {
  using type = uint32_t;
};

// Destination channel c < NV of each pixel of C elements of E bytes takes
// source channel order[c]; with NV < C the fourth channel is left as it was.
// src may equal dst.
template <int E, int C, int NV>
PXL_NOINLINE void Reorder(const void* src, int srcStep, void* dst, int dstStep, int width,
                          int height, const int* order) {
  using T = typename Element<E>::type;
  constexpr int P = E * C;  // bytes a pixel
  int o[NV];
  for (int c = 0; c < NV; ++c) o[c] = order[c];
#if PXL_LEVEL >= 1
  // Byte b of 16 takes byte shuffle[b]; the bytes after the last whole pixel
  // keep their own value, and the next group or the tail rewrites them.
  constexpr int n = 16 / P;
  alignas(16) int8_t shuffle[16], keep[16];
  for (int b = 0; b < 16; ++b) {
    const int i = b / P, c = b % P / E, j = b % E;
    const bool moved = b < n * P && c < NV;
    shuffle[b] = static_cast<int8_t>(moved ? i * P + o[c < NV ? c : 0] * E + j : b);
    keep[b] = static_cast<int8_t>(b < n * P && c >= NV ? -1 : 0);
  }
  const __m128i m = _mm_load_si128(reinterpret_cast<const __m128i*>(shuffle));
  const __m128i k = _mm_load_si128(reinterpret_cast<const __m128i*>(keep));
#endif
  const int64_t rowBytes = int64_t{P} * width;
  for (int y = 0; y < height; ++y) {
    const uint8_t* s = static_cast<const uint8_t*>(src) + int64_t{srcStep} * y;
    uint8_t* d = static_cast<uint8_t*>(dst) + int64_t{dstStep} * y;
    int64_t b = 0;  // bytes done
#if PXL_LEVEL >= 4
    if (P * n == 16) {
      const __m256i m2 = _mm256_broadcastsi128_si256(m), k2 = _mm256_broadcastsi128_si256(k);
      for (; b + 32 <= rowBytes; b += 32) {
        const __m256i v =
            _mm256_shuffle_epi8(_mm256_loadu_si256(reinterpret_cast<const __m256i*>(s + b)), m2);
        const __m256i r =
            NV < C ? _mm256_blendv_epi8(
                         v, _mm256_loadu_si256(reinterpret_cast<const __m256i*>(d + b)), k2)
                   : v;
        _mm256_storeu_si256(reinterpret_cast<__m256i*>(d + b), r);
      }
    }
#endif
#if PXL_LEVEL >= 1
    for (; b + 16 <= rowBytes; b += n * P) {
      const __m128i v =
          _mm_shuffle_epi8(_mm_loadu_si128(reinterpret_cast<const __m128i*>(s + b)), m);
      const __m128i r =
          NV < C ? _mm_blendv_epi8(v, _mm_loadu_si128(reinterpret_cast<const __m128i*>(d + b)), k)
                 : v;
      _mm_storeu_si128(reinterpret_cast<__m128i*>(d + b), r);
    }
#endif
    for (; b < rowBytes; b += P) {
      T t[NV];
      for (int c = 0; c < NV; ++c) __builtin_memcpy(&t[c], s + b + E * o[c], E);
      for (int c = 0; c < NV; ++c) __builtin_memcpy(d + b + E * c, &t[c], E);
    }
  }
}

template <int E, int C, int NV>
PxlStatus SwapChannels(const void* src, int srcStep, void* dst, int dstStep, int width, int height,
                       const int* order) {
  if (PxlStatus st = Check(width, height, src, dst, order)) return st;
  for (int c = 0; c < NV; ++c)
    if (order[c] < 0 || order[c] >= NV) return pxlStsChannelOrderErr;
  Reorder<E, C, NV>(src, srcStep, dst, dstStep, width, height, order);
  return pxlStsNoErr;
}

}  // namespace

#define PXL_REORDER_KERNEL(E, N)                                                            \
  void PXL_REORDER(E, N)(const void* pSrc, int srcStep, void* pDst, int dstStep, int width, \
                         int height, const int* order) {                                    \
    Reorder<E, N, N>(pSrc, srcStep, pDst, dstStep, width, height, order);                   \
  }
PXL_REORDER_KERNEL(1, 3)
PXL_REORDER_KERNEL(1, 4)
PXL_REORDER_KERNEL(2, 3)
PXL_REORDER_KERNEL(2, 4)
PXL_REORDER_KERNEL(4, 3)
PXL_REORDER_KERNEL(4, 4)
#undef PXL_REORDER_KERNEL

#include "primitives/swap_channels.def"

PXL_LEVEL_END
