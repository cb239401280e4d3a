// Set on 4K images against OpenCV (setTo) and memset.
#include "peers.h"

namespace {

using namespace pxlbench;

void Memset_8MiB_4K_8u(benchmark::State& state) {
  Image4K dst(1);
  for (auto _ : state) {
    std::memset(dst.data, 7, dst.size());
    benchmark::ClobberMemory();
  }
}

void Set_8u_C1R(benchmark::State& state) {
  Image4K dst(1);
  for (auto _ : state) {
    Set_8u_C1R(7, dst.data, dst.step, Roi4K());
    benchmark::ClobberMemory();
  }
  state.SetLabel("peer:OpenCV_setTo_8UC1");
}

void OpenCV_setTo_8UC1(benchmark::State& state) {
  OpenCvSingleThreaded();
  Image4K dst(1);
  cv::Mat d = dst.mat(CV_8UC1);
  for (auto _ : state) {
    d.setTo(cv::Scalar(7));
    benchmark::ClobberMemory();
  }
}

void Set_8u_C1R_vs_memset(benchmark::State& state) {
  Set_8u_C1R(state);
  state.SetLabel("peer:Memset_8MiB_4K_8u");
}

void Set_8u_C3R(benchmark::State& state) {
  Image4K dst(3);
  const Pxl8u value[3] = {1, 2, 3};
  for (auto _ : state) {
    Set_8u_C3R(value, dst.data, dst.step, Roi4K());
    benchmark::ClobberMemory();
  }
  state.SetLabel("peer:OpenCV_setTo_8UC3");
}

void OpenCV_setTo_8UC3(benchmark::State& state) {
  OpenCvSingleThreaded();
  Image4K dst(3);
  cv::Mat d = dst.mat(CV_8UC3);
  for (auto _ : state) {
    d.setTo(cv::Scalar(1, 2, 3));
    benchmark::ClobberMemory();
  }
}

}  // namespace

PXL_BENCH(Memset_8MiB_4K_8u);
PXL_BENCH(Set_8u_C1R);
PXL_BENCH(OpenCV_setTo_8UC1);
PXL_BENCH(Set_8u_C1R_vs_memset);
PXL_BENCH(Set_8u_C3R);
PXL_BENCH(OpenCV_setTo_8UC3);
