// Test images with guard bytes: a byte buffer with a guard zone in front of
// and behind the pixels, filled with a pattern, so that a test can check
// that an export wrote nothing outside the bytes it may write.
#ifndef PXL_TESTS_SUPPORT_IMAGE_H
#define PXL_TESTS_SUPPORT_IMAGE_H

#include <cstdint>
#include <cstring>
#include <random>
#include <string>
#include <vector>

#include "pxl/pxl_types.h"

namespace pxltest {

class GuardedBuffer {
 public:
  static constexpr size_t kGuard = 256;

  // `bytes` of payload starting `misalign` bytes past a 64-byte boundary.
  GuardedBuffer(size_t bytes, size_t misalign = 0) : bytes_(bytes), misalign_(misalign) {
    storage_.resize(bytes + 2 * kGuard + 128);
    const uintptr_t base = reinterpret_cast<uintptr_t>(storage_.data()) + kGuard;
    offset_ =
        ((base + 63) & ~uintptr_t{63}) - reinterpret_cast<uintptr_t>(storage_.data()) + misalign;
    for (size_t i = 0; i < storage_.size(); ++i) storage_[i] = static_cast<uint8_t>(0xA5 ^ i);
  }

  uint8_t* data() { return storage_.data() + offset_; }
  const uint8_t* data() const { return storage_.data() + offset_; }
  size_t size() const { return bytes_; }

  template <typename T>
  T* as() {
    return reinterpret_cast<T*>(data());
  }

  // The whole storage, guards included, for before/after comparisons.
  const std::vector<uint8_t>& raw() const { return storage_; }
  size_t payloadOffset() const { return offset_; }

 private:
  size_t bytes_, misalign_;
  size_t offset_ = 0;
  std::vector<uint8_t> storage_;
};

// A float image of `channels` floats a pixel with a padded byte step.
struct FloatImage {
  int width, height, channels, step;
  GuardedBuffer buf;

  FloatImage(int w, int h, int ch, int padBytes = 0, size_t misalign = 0)
      : width(w),
        height(h),
        channels(ch),
        step(w * ch * 4 + padBytes),
        buf(static_cast<size_t>(step) * h, misalign) {}

  float* data() { return buf.as<float>(); }
  float* row(int y) { return reinterpret_cast<float*>(buf.data() + static_cast<size_t>(y) * step); }
  float get(int x, int y, int c) {
    float v;
    std::memcpy(&v, buf.data() + static_cast<size_t>(y) * step + (x * channels + c) * 4, 4);
    return v;
  }
  void set(int x, int y, int c, float v) {
    std::memcpy(buf.data() + static_cast<size_t>(y) * step + (x * channels + c) * 4, &v, 4);
  }
  // Fills every pixel (not the padding) with uniform values in [lo, hi].
  void fill(std::mt19937& rng, float lo, float hi) {
    std::uniform_real_distribution<float> d(lo, hi);
    for (int y = 0; y < height; ++y)
      for (int x = 0; x < width; ++x)
        for (int c = 0; c < channels; ++c) set(x, y, c, d(rng));
  }
};

// True when every byte that differs between `before` and `after` lies inside
// the region's pixels of an image of the given step and pixel size; else
// false, with the first stray byte described in *where.
bool ChangesInsideRegion(const GuardedBuffer& before, const GuardedBuffer& after, int step,
                         int pixelBytes, PxliRect roi, std::string* where);

// Bitwise equality of floats (so that NaNs compare and -0 differs from 0).
inline bool SameBits(float a, float b) { return std::memcmp(&a, &b, 4) == 0; }

}  // namespace pxltest

#endif
