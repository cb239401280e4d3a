// What the primitive benchmarks share: 3840x2160 images allocated once, and
// the peers a run is compared with (memcpy of the same bytes; OpenCV's core
// module, single-threaded, through its public API).
#ifndef PXL_BENCH_PEERS_H
#define PXL_BENCH_PEERS_H

#include <benchmark/benchmark.h>

#include <cstdint>
#include <cstring>
#include <opencv2/core.hpp>
#include <vector>

#include "pxl/pxl.h"

namespace pxlbench {

constexpr int kWidth = 3840;
constexpr int kHeight = 2160;

// A 4K image of `pixelBytes` bytes a pixel, rows 64-byte aligned, filled
// with a repeatable pattern.
struct Image4K {
  explicit Image4K(int pixelBytes, uint8_t seed = 1) {
    step = (kWidth * pixelBytes + 63) & ~63;
    bytes.resize(static_cast<size_t>(step) * kHeight + 64);
    const uintptr_t a = reinterpret_cast<uintptr_t>(bytes.data());
    data = bytes.data() + ((64 - a % 64) % 64);
    for (size_t i = 0; i < static_cast<size_t>(step) * kHeight; ++i)
      data[i] = static_cast<uint8_t>(i * 31 + seed);
  }
  template <typename T>
  T* as() {
    return reinterpret_cast<T*>(data);
  }
  // The same pixels as an OpenCV matrix header (no copy).
  cv::Mat mat(int type) { return cv::Mat(kHeight, kWidth, type, data, static_cast<size_t>(step)); }
  size_t size() const { return static_cast<size_t>(step) * kHeight; }

  std::vector<uint8_t> bytes;
  uint8_t* data;
  int step;
};

inline PxliRect Roi4K() { return PxliRect{0, 0, kWidth, kHeight}; }

// Runs OpenCV on the calling thread only.
inline void OpenCvSingleThreaded() {
  static const bool once = [] {
    cv::setNumThreads(1);
    return true;
  }();
  (void)once;
}

// memcpy of `bytes` bytes, the peer of per-pixel passes over as many bytes.
inline void MemcpyPeer(benchmark::State& state, size_t bytes) {
  std::vector<uint8_t> a(bytes, 1), b(bytes, 2);
  for (auto _ : state) {
    std::memcpy(b.data(), a.data(), bytes);
    benchmark::ClobberMemory();
  }
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * static_cast<int64_t>(bytes));
}

}  // namespace pxlbench

// A benchmark in milliseconds of wall time, the unit every ratio uses.
#define PXL_BENCH(fn) BENCHMARK(fn)->Unit(benchmark::kMillisecond)->UseRealTime()

#endif
