// Basic adjustments on a 3840x2160 float RGBA image, against memcpy of the
// same image bytes (the bandwidth any per-pixel pass is bound by).
#include <benchmark/benchmark.h>

#include <cstring>

#include "pxl/pxl.h"

namespace {

constexpr int kWidth = 3840;
constexpr int kHeight = 2160;

struct Frame {
  Pxl32f* image = nullptr;
  Pxl32f* map = nullptr;
  Pxl32f* copy = nullptr;
  int step = 0, mapStep = 0, copyStep = 0;

  Frame() {
    image = static_cast<Pxl32f*>(Malloc(kWidth, kHeight, 26, &step));
    copy = static_cast<Pxl32f*>(Malloc(kWidth, kHeight, 26, &copyStep));
    map = static_cast<Pxl32f*>(Malloc(kWidth, kHeight, 5, &mapStep));
    for (int y = 0; y < kHeight; ++y) {
      Pxl32f* row = reinterpret_cast<Pxl32f*>(reinterpret_cast<char*>(image) + size_t(y) * step);
      Pxl32f* m = reinterpret_cast<Pxl32f*>(reinterpret_cast<char*>(map) + size_t(y) * mapStep);
      for (int x = 0; x < kWidth; ++x) {
        const float v = float((x * 7 + y * 3) % 1000) / 1000.0f;
        row[4 * x] = v;
        row[4 * x + 1] = 1.0f - v;
        row[4 * x + 2] = v * 0.5f;
        row[4 * x + 3] = 1.0f;
        m[x] = 1.0f;  // a gain of one keeps the values steady across iterations
      }
    }
    std::memset(copy, 0, size_t(copyStep) * kHeight);
  }
  ~Frame() {
    Free(image);
    Free(copy);
    Free(map);
  }
  size_t bytes() const { return size_t(step) * kHeight; }
  PxliRect roi() const { return PxliRect{0, 0, kWidth, kHeight}; }
};

Frame& Shared() {
  static Frame frame;
  return frame;
}

void Memcpy_3840x2160_RGBA32f(benchmark::State& state) {
  Frame& f = Shared();
  for (auto _ : state) {
    std::memcpy(f.copy, f.image, f.bytes());
    benchmark::ClobberMemory();
  }
  state.SetBytesProcessed(int64_t(state.iterations()) * int64_t(f.bytes()));
}

void AdjustBrightness_32f_AC4IR(benchmark::State& state) {
  Frame& f = Shared();
  for (auto _ : state) {
    AdjustBrightness_32f_AC4IR(f.image, f.step, f.roi(), f.map, f.mapStep);
    benchmark::ClobberMemory();
  }
  state.SetBytesProcessed(int64_t(state.iterations()) * int64_t(f.bytes()));
  state.SetLabel("peer:Memcpy_3840x2160_RGBA32f");
}

void AdjustExposureLin_32f_C4IMR(benchmark::State& state) {
  Frame& f = Shared();
  for (auto _ : state) {
    // Value 0 with a map of 1 bounded to 0: exposure 0 keeps the pixels as they are.
    AdjustExposureLin_32f_C4IMR(f.image, f.step, f.roi(), 0.0f, f.map, f.mapStep, -4.0f, 0.0f);
    benchmark::ClobberMemory();
  }
  state.SetBytesProcessed(int64_t(state.iterations()) * int64_t(f.bytes()));
  state.SetLabel("peer:Memcpy_3840x2160_RGBA32f");
}

}  // namespace

BENCHMARK(Memcpy_3840x2160_RGBA32f)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(AdjustBrightness_32f_AC4IR)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(AdjustExposureLin_32f_C4IMR)->Unit(benchmark::kMillisecond)->UseRealTime();
