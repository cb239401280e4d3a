// Transpose, Mirror and the replicate border on 4K images against OpenCV
// (transpose, flip, copyMakeBorder), single-threaded.
#include "peers.h"

namespace {

using namespace pxlbench;

// A 2160 x 3840 image of bytes: the transposed 4K frame.
struct Tall {
  Tall() : step((kHeight + 63) & ~63), bytes(static_cast<size_t>(step) * kWidth) {}
  int step;
  std::vector<uint8_t> bytes;
};

void Transpose_8u_C1R(benchmark::State& state) {
  Image4K src(1);
  Tall dst;
  for (auto _ : state) {
    ::Transpose_8u_C1R(src.data, src.step, dst.bytes.data(), dst.step, Roi4K());
    benchmark::ClobberMemory();
  }
  state.SetLabel("peer:OpenCV_transpose_8UC1");
}

void OpenCV_transpose_8UC1(benchmark::State& state) {
  OpenCvSingleThreaded();
  Image4K src(1);
  Tall dst;
  cv::Mat s = src.mat(CV_8UC1), d(kWidth, kHeight, CV_8UC1, dst.bytes.data(), dst.step);
  for (auto _ : state) {
    cv::transpose(s, d);
    benchmark::ClobberMemory();
  }
}

void Mirror_8u_C4R(benchmark::State& state) {
  Image4K src(4), dst(4, 2);
  for (auto _ : state) {
    ::Mirror_8u_C4R(src.data, src.step, dst.data, dst.step, Roi4K(), pxlFlipLeftRight);
    benchmark::ClobberMemory();
  }
  state.SetLabel("peer:OpenCV_flip_8UC4");
}

void OpenCV_flip_8UC4(benchmark::State& state) {
  OpenCvSingleThreaded();
  Image4K src(4), dst(4, 2);
  cv::Mat s = src.mat(CV_8UC4), d = dst.mat(CV_8UC4);
  for (auto _ : state) {
    cv::flip(s, d, 1);
    benchmark::ClobberMemory();
  }
}

// 16 pixels of border on every side around a 4K source.
constexpr int kBorder = 16;

struct Framed {
  Framed() : step(((kWidth + 2 * kBorder) * 3 + 63) & ~63) {
    bytes.resize(static_cast<size_t>(step) * (kHeight + 2 * kBorder));
  }
  int step;
  std::vector<uint8_t> bytes;
};

void CopyReplicateBorder_8u_C3R(benchmark::State& state) {
  Image4K src(3);
  Framed dst;
  for (auto _ : state) {
    ::CopyReplicateBorder_8u_C3R(src.data, src.step, {kWidth, kHeight}, dst.bytes.data(), dst.step,
                                 {kWidth + 2 * kBorder, kHeight + 2 * kBorder}, kBorder, kBorder);
    benchmark::ClobberMemory();
  }
  state.SetLabel("peer:OpenCV_copyMakeBorder_8UC3");
}

void OpenCV_copyMakeBorder_8UC3(benchmark::State& state) {
  OpenCvSingleThreaded();
  Image4K src(3);
  Framed dst;
  cv::Mat s = src.mat(CV_8UC3);
  cv::Mat d(kHeight + 2 * kBorder, kWidth + 2 * kBorder, CV_8UC3, dst.bytes.data(), dst.step);
  for (auto _ : state) {
    cv::copyMakeBorder(s, d, kBorder, kBorder, kBorder, kBorder, cv::BORDER_REPLICATE);
    benchmark::ClobberMemory();
  }
}

}  // namespace

PXL_BENCH(Transpose_8u_C1R);
PXL_BENCH(OpenCV_transpose_8UC1);
PXL_BENCH(Mirror_8u_C4R);
PXL_BENCH(OpenCV_flip_8UC4);
PXL_BENCH(CopyReplicateBorder_8u_C3R);
PXL_BENCH(OpenCV_copyMakeBorder_8UC3);
