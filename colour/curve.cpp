// Exports of the Curve, transfer and tone-curve families, and the transfer
// tables.
#include "colour/transfer_tables.h"
#include "core/dispatch.h"
#include "core/region.h"
#include "pxl/pxl_colour.h"

namespace pxl {
namespace colour {

#include "colour/transfer_tables.inc"

namespace {

// A 32-bit product that wraps, as region coordinates do.
inline int Times(int value, int channels) {
  return static_cast<int>(static_cast<uint32_t>(value) * static_cast<uint32_t>(channels));
}

// A region of pixels as a region of elements of a one-channel row.
inline PxliRect Widened(PxliRect roi, int channels) {
  roi.x = Times(roi.x, channels);
  roi.width = Times(roi.width, channels);
  return roi;
}

inline float Scale(int levels, bool hasExtraEntry) {
  const float last = static_cast<float>(levels - 1);
  return hasExtraEntry ? last : last - 0.0001f;
}

// Reads one table entry in 16, so that the first rows find the table in the
// cache; the sum goes to a volatile so that the reads stay.
void Warm(const float* table, int levels, bool hasExtraEntry) {
  const int entries = levels + (hasExtraEntry ? 1 : 0);
  float sum = 0.0f;
  for (int i = 0; i < entries; i += 16) sum += table[i];
  volatile float sink = sum;
  (void)sink;
}

template <typename T>
void Elements(const T* src, int srcStep, T* dst, int dstStep, int count, int height,
              const float* table, int levels, bool hasExtraEntry, bool warmTable) {
  if (count < 1 || height < 1) return;
  if (warmTable) Warm(table, levels, hasExtraEntry);
  const float scale = Scale(levels, hasExtraEntry);
  if constexpr (sizeof(T) == 4)
    k::curveElems32f(src, srcStep, dst, dstStep, count, height, table, scale);
  else if constexpr (sizeof(T) == 2)
    k::curveElems16u(src, srcStep, dst, dstStep, count, height, table, scale);
  else
    k::curveElems8u(src, srcStep, dst, dstStep, count, height, table, scale);
}

template <typename T>
void Pixels(const T* src, int srcStep, T* dst, int dstStep, int width, int height,
            const float* table, int levels, bool hasExtraEntry, bool warmTable, int srcChannels,
            int dstChannels, int copyAlpha) {
  if (width < 1 || height < 1) return;
  if (warmTable) Warm(table, levels, hasExtraEntry);
  const float scale = Scale(levels, hasExtraEntry);
  if constexpr (sizeof(T) == 4)
    k::curvePixels32f(src, srcStep, dst, dstStep, width, height, table, scale, srcChannels,
                      dstChannels, copyAlpha);
  else if constexpr (sizeof(T) == 2)
    k::curvePixels16u(src, srcStep, dst, dstStep, width, height, table, scale, srcChannels,
                      dstChannels, copyAlpha);
  else
    k::curvePixels8u(src, srcStep, dst, dstStep, width, height, table, scale, srcChannels,
                     dstChannels, copyAlpha);
}

}  // namespace
}  // namespace colour
}  // namespace pxl

#define PXL_ROWS_EXPORTS
#include "core/member_rows.h"

extern "C" {
#include "colour/curve.def"
#include "colour/tonemap.def"
#include "colour/transfer.def"
}
