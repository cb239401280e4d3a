// The basic adjustments at every processor level this machine runs, on a
// 512x256 float RGBA image (2 MiB, cache-resident), so that the levels'
// compute speeds show rather than memory bandwidth.  Each is a ratio against
// memcpy of the same bytes.
#include <benchmark/benchmark.h>

#include <cstring>
#include <string>
#include <vector>

#include "core/cpu.h"
#include "pxl/pxl.h"

namespace {

constexpr int kW = 512, kH = 256;

struct Small {
  std::vector<float> image = std::vector<float>(kW * kH * 4, 0.5f);
  std::vector<float> copy = std::vector<float>(kW * kH * 4);
  std::vector<float> map = std::vector<float>(kW * kH, 1.0f);
  static constexpr int step = kW * 16, mapStep = kW * 4;
  static constexpr PxliRect roi{0, 0, kW, kH};
};

Small& Data() {
  static Small s;
  return s;
}

void Memcpy_512x256_RGBA32f(benchmark::State& state) {
  Small& d = Data();
  for (auto _ : state) {
    std::memcpy(d.copy.data(), d.image.data(), d.image.size() * 4);
    benchmark::ClobberMemory();
  }
}

template <typename Fn>
void AtLevel(benchmark::State& state, int level, Fn fn) {
  Small& d = Data();
  const int32_t saved = pxl::test::ForceLevel(level);
  for (auto _ : state) {
    fn(d);
    benchmark::ClobberMemory();
  }
  pxl::test::ForceLevel(saved);
  state.SetLabel("peer:Memcpy_512x256_RGBA32f");
}

void RegisterAll() {
  struct Op {
    const char* name;
    void (*run)(Small&);
  };
  static const Op ops[] = {
      {"AdjustBrightness_32f_AC4IR",
       [](Small& d) {
         AdjustBrightness_32f_AC4IR(d.image.data(), d.step, d.roi, d.map.data(), d.mapStep);
       }},
      {"AdjustSaturation_32f_AC4IR",
       [](Small& d) {
         AdjustSaturation_32f_AC4IR(d.image.data(), d.step, d.roi, d.map.data(), d.mapStep);
       }},
      {"AdjustExposureLin_32f_C4IMR",
       [](Small& d) {
         AdjustExposureLin_32f_C4IMR(d.image.data(), d.step, d.roi, 0.0f, d.map.data(), d.mapStep,
                                     -4.0f, 0.0f);
       }},
      {"AdjustExposureLin_32f_C4IR_aligned",
       [](Small& d) { AdjustExposureLin_32f_C4IR(d.image.data(), d.step, d.roi, 0.0f); }},
      {"AdjustExposureLin_32f_C4IR_unaligned",
       [](Small& d) {
         AdjustExposureLin_32f_C4IR(d.image.data() + 1, d.step, PxliRect{0, 0, kW - 1, kH}, 0.0f);
       }},
  };
  benchmark::RegisterBenchmark("Memcpy_512x256_RGBA32f", Memcpy_512x256_RGBA32f);
  for (const Op& op : ops)
    for (int level = 0; level <= pxl::test::MaxSupportedLevel(); ++level)
      benchmark::RegisterBenchmark(
          (std::string(op.name) + "/level:" + std::to_string(level)).c_str(),
          [op, level](benchmark::State& s) { AtLevel(s, level, op.run); });
}

const bool registered = (RegisterAll(), true);

}  // namespace
