// Copy on 4K images against OpenCV (copyTo, split) and memcpy.
#include "peers.h"

namespace {

using namespace pxlbench;

void Memcpy_8MiB_4K_8u(benchmark::State& state) { MemcpyPeer(state, size_t(kWidth) * kHeight); }

void Copy_8u_C1R(benchmark::State& state) {
  Image4K src(1), dst(1, 2);
  for (auto _ : state) {
    Copy_8u_C1R(src.data, src.step, dst.data, dst.step, Roi4K());
    benchmark::ClobberMemory();
  }
  state.SetLabel("peer:OpenCV_copyTo_8UC1");
}

void OpenCV_copyTo_8UC1(benchmark::State& state) {
  OpenCvSingleThreaded();
  Image4K src(1), dst(1, 2);
  cv::Mat s = src.mat(CV_8UC1), d = dst.mat(CV_8UC1);
  for (auto _ : state) {
    s.copyTo(d);
    benchmark::ClobberMemory();
  }
}

// The same copy against memcpy of the same bytes.
void Copy_8u_C1R_vs_memcpy(benchmark::State& state) {
  Copy_8u_C1R(state);
  state.SetLabel("peer:Memcpy_8MiB_4K_8u");
}

void Copy_8u_C3P3R(benchmark::State& state) {
  Image4K src(3), p0(1, 2), p1(1, 3), p2(1, 4);
  Pxl8u* planes[3] = {p0.data, p1.data, p2.data};
  for (auto _ : state) {
    Copy_8u_C3P3R(src.data, src.step, planes, p0.step, Roi4K());
    benchmark::ClobberMemory();
  }
  state.SetLabel("peer:OpenCV_split_8UC3");
}

void OpenCV_split_8UC3(benchmark::State& state) {
  OpenCvSingleThreaded();
  Image4K src(3), p0(1, 2), p1(1, 3), p2(1, 4);
  cv::Mat s = src.mat(CV_8UC3);
  cv::Mat planes[3] = {p0.mat(CV_8UC1), p1.mat(CV_8UC1), p2.mat(CV_8UC1)};
  for (auto _ : state) {
    cv::split(s, planes);
    benchmark::ClobberMemory();
  }
}

}  // namespace

PXL_BENCH(Memcpy_8MiB_4K_8u);
PXL_BENCH(Copy_8u_C1R);
PXL_BENCH(OpenCV_copyTo_8UC1);
PXL_BENCH(Copy_8u_C1R_vs_memcpy);
PXL_BENCH(Copy_8u_C3P3R);
PXL_BENCH(OpenCV_split_8UC3);
