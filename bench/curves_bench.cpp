// The sRGB-to-linear curve on a 4K float RGBA image against memcpy of the
// same bytes.
#include "peers.h"

namespace {

using namespace pxlbench;

void Memcpy_127MiB_4K_32f_C4(benchmark::State& state) {
  MemcpyPeer(state, size_t(kWidth) * kHeight * 16);
}

void SRGBToRGB_32f_C4R(benchmark::State& state) {
  Image4K src(16), dst(16, 2);
  // Values in 0 to 1, as the curve expects.
  float* s = src.as<float>();
  for (size_t i = 0; i < src.size() / 4; ++i) s[i] = static_cast<float>(i % 4093) / 4092.0f;
  for (auto _ : state) {
    ::SRGBToRGB_32f_C4R(src.as<Pxl32f>(), src.step, dst.as<Pxl32f>(), dst.step, Roi4K());
    benchmark::ClobberMemory();
  }
  state.SetLabel("peer:Memcpy_127MiB_4K_32f_C4");
}

}  // namespace

PXL_BENCH(Memcpy_127MiB_4K_32f_C4);
PXL_BENCH(SRGBToRGB_32f_C4R);
