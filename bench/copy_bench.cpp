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

namespace {

using namespace pxlbench;

void Copy_8u_P3C3R(benchmark::State& state) {
  Image4K dst(3), p0(1, 2), p1(1, 3), p2(1, 4);
  const Pxl8u* planes[3] = {p0.data, p1.data, p2.data};
  for (auto _ : state) {
    Copy_8u_P3C3R(planes, p0.step, dst.data, dst.step, Roi4K());
    benchmark::ClobberMemory();
  }
  state.SetLabel("peer:OpenCV_merge_8UC3");
}

void OpenCV_merge_8UC3(benchmark::State& state) {
  OpenCvSingleThreaded();
  Image4K dst(3), p0(1, 2), p1(1, 3), p2(1, 4);
  cv::Mat d = dst.mat(CV_8UC3);
  const cv::Mat planes[3] = {p0.mat(CV_8UC1), p1.mat(CV_8UC1), p2.mat(CV_8UC1)};
  for (auto _ : state) {
    cv::merge(planes, 3, d);
    benchmark::ClobberMemory();
  }
}

void Copy_32f_C3P3R(benchmark::State& state) {
  Image4K src(12), p0(4, 2), p1(4, 3), p2(4, 4);
  Pxl32f* planes[3] = {p0.as<Pxl32f>(), p1.as<Pxl32f>(), p2.as<Pxl32f>()};
  for (auto _ : state) {
    Copy_32f_C3P3R(src.as<Pxl32f>(), src.step, planes, p0.step, Roi4K());
    benchmark::ClobberMemory();
  }
  state.SetLabel("peer:OpenCV_split_32FC3");
}

void OpenCV_split_32FC3(benchmark::State& state) {
  OpenCvSingleThreaded();
  Image4K src(12), p0(4, 2), p1(4, 3), p2(4, 4);
  cv::Mat s = src.mat(CV_32FC3);
  cv::Mat planes[3] = {p0.mat(CV_32FC1), p1.mat(CV_32FC1), p2.mat(CV_32FC1)};
  for (auto _ : state) {
    cv::split(s, planes);
    benchmark::ClobberMemory();
  }
}

void Copy_8u_C4C3R(benchmark::State& state) {
  Image4K src(4), dst(3);
  for (auto _ : state) {
    Copy_8u_C4C3R(src.data, src.step, dst.data, dst.step, Roi4K());
    benchmark::ClobberMemory();
  }
  state.SetLabel("peer:OpenCV_mixChannels_8UC4_8UC3");
}

void OpenCV_mixChannels_8UC4_8UC3(benchmark::State& state) {
  OpenCvSingleThreaded();
  Image4K src(4), dst(3);
  cv::Mat s = src.mat(CV_8UC4), d = dst.mat(CV_8UC3);
  const int pairs[] = {0, 0, 1, 1, 2, 2};
  for (auto _ : state) {
    cv::mixChannels(&s, 1, &d, 1, pairs, 3);
    benchmark::ClobberMemory();
  }
}

}  // namespace

PXL_BENCH(Copy_8u_P3C3R);
PXL_BENCH(OpenCV_merge_8UC3);
PXL_BENCH(Copy_32f_C3P3R);
PXL_BENCH(OpenCV_split_32FC3);
PXL_BENCH(Copy_8u_C4C3R);
PXL_BENCH(OpenCV_mixChannels_8UC4_8UC3);
