// Convert on 4K images against OpenCV's convertTo and memcpy of the
// destination's bytes.
#include "peers.h"

namespace {

using namespace pxlbench;

void Memcpy_32MiB_4K_32f(benchmark::State& state) {
  MemcpyPeer(state, size_t(kWidth) * kHeight * 4);
}

void Convert_8u32f_C1R(benchmark::State& state) {
  Image4K src(1), dst(4, 2);
  for (auto _ : state) {
    ::Convert_8u32f_C1R(src.data, src.step, dst.as<Pxl32f>(), dst.step, Roi4K());
    benchmark::ClobberMemory();
  }
  state.SetLabel("peer:OpenCV_convertTo_8UC1_32F");
}

void OpenCV_convertTo_8UC1_32F(benchmark::State& state) {
  OpenCvSingleThreaded();
  Image4K src(1), dst(4, 2);
  cv::Mat s = src.mat(CV_8UC1), d = dst.mat(CV_32FC1);
  for (auto _ : state) {
    s.convertTo(d, CV_32F);
    benchmark::ClobberMemory();
  }
}

void Convert_8u32f_C1R_vs_memcpy(benchmark::State& state) {
  Convert_8u32f_C1R(state);
  state.SetLabel("peer:Memcpy_32MiB_4K_32f");
}

// Values in 0 .. 255 with fractions, so that rounding has work to do.
void FillFloats(Image4K& img) {
  float* f = img.as<float>();
  for (size_t i = 0; i < img.size() / 4; ++i) f[i] = static_cast<float>(i % 2560) * 0.1f;
}

void Convert_32f8u_C1RSfs(benchmark::State& state) {
  Image4K src(4), dst(1, 2);
  FillFloats(src);
  for (auto _ : state) {
    ::Convert_32f8u_C1RSfs(src.as<Pxl32f>(), src.step, dst.data, dst.step, Roi4K(), pxlRndNear, 0);
    benchmark::ClobberMemory();
  }
  state.SetLabel("peer:OpenCV_convertTo_32FC1_8U");
}

void OpenCV_convertTo_32FC1_8U(benchmark::State& state) {
  OpenCvSingleThreaded();
  Image4K src(4), dst(1, 2);
  FillFloats(src);
  cv::Mat s = src.mat(CV_32FC1), d = dst.mat(CV_8UC1);
  for (auto _ : state) {
    s.convertTo(d, CV_8U);
    benchmark::ClobberMemory();
  }
}

void Convert_16u32f_C1R(benchmark::State& state) {
  Image4K src(2), dst(4, 2);
  for (auto _ : state) {
    ::Convert_16u32f_C1R(src.as<Pxl16u>(), src.step, dst.as<Pxl32f>(), dst.step, Roi4K());
    benchmark::ClobberMemory();
  }
  state.SetLabel("peer:OpenCV_convertTo_16UC1_32F");
}

void OpenCV_convertTo_16UC1_32F(benchmark::State& state) {
  OpenCvSingleThreaded();
  Image4K src(2), dst(4, 2);
  cv::Mat s = src.mat(CV_16UC1), d = dst.mat(CV_32FC1);
  for (auto _ : state) {
    s.convertTo(d, CV_32F);
    benchmark::ClobberMemory();
  }
}

}  // namespace

PXL_BENCH(Memcpy_32MiB_4K_32f);
PXL_BENCH(Convert_8u32f_C1R);
PXL_BENCH(OpenCV_convertTo_8UC1_32F);
PXL_BENCH(Convert_8u32f_C1R_vs_memcpy);
PXL_BENCH(Convert_32f8u_C1RSfs);
PXL_BENCH(OpenCV_convertTo_32FC1_8U);
PXL_BENCH(Convert_16u32f_C1R);
PXL_BENCH(OpenCV_convertTo_16UC1_32F);
