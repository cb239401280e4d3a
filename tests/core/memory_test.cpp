// Image memory: steps, limits, alignment, the stored heap address, and the
// allocation-failure hook that staged exports are tested with.
#include "core/memory.h"

#include <gtest/gtest.h>

#include <cstring>

#include "pxl/pxl.h"
#include "support/levels.h"

namespace {

int BytesPerPixel(int format) {
  static const int channels[] = {1, 2, 3, 4, 4};
  static const int bytes[] = {1, 2, 2, 4, 4, 8, 8};
  return channels[(format - 1) / 7] * bytes[(format - 1) % 7];
}

TEST(ImageMemory, StepsRoundRowsUpTo64Bytes) {
  int step = -1;
  for (auto [width, want] : {std::pair{1, 64}, std::pair{64, 64}, std::pair{65, 128}}) {
    Pxl8u* p = Malloc_8u_C1(width, 3, &step);
    ASSERT_NE(nullptr, p);
    EXPECT_EQ(want, step) << width;
    Free(p);
  }
  void* p = Malloc(100, 2, 19, &step);  // C3 32f: 1200 bytes a row
  ASSERT_NE(nullptr, p);
  EXPECT_EQ(1216, step);
  Free(p);
}

TEST(ImageMemory, NamedFormatCodesHaveTheirPixelSizes) {
  // 64 pixels a row: the step is exactly 64 times the pixel size.
  // clang-format off
  const std::pair<int, int> kNamed[] = {
      {PXL_FMT_8U_C1, 1},     {PXL_FMT_16U_C1, 2},    {PXL_FMT_16S_C1, 2},
      {PXL_FMT_32S_C1, 4},    {PXL_FMT_32F_C1, 4},    {PXL_FMT_32SC_C1, 8},
      {PXL_FMT_32FC_C1, 8},   {PXL_FMT_8U_C2, 2},     {PXL_FMT_16U_C2, 4},
      {PXL_FMT_16S_C2, 4},    {PXL_FMT_32S_C2, 8},    {PXL_FMT_32F_C2, 8},
      {PXL_FMT_32SC_C2, 16},  {PXL_FMT_32FC_C2, 16},  {PXL_FMT_8U_C3, 3},
      {PXL_FMT_16U_C3, 6},    {PXL_FMT_16S_C3, 6},    {PXL_FMT_32S_C3, 12},
      {PXL_FMT_32F_C3, 12},   {PXL_FMT_32SC_C3, 24},  {PXL_FMT_32FC_C3, 24},
      {PXL_FMT_8U_C4, 4},     {PXL_FMT_16U_C4, 8},    {PXL_FMT_16S_C4, 8},
      {PXL_FMT_32S_C4, 16},   {PXL_FMT_32F_C4, 16},   {PXL_FMT_32SC_C4, 32},
      {PXL_FMT_32FC_C4, 32},  {PXL_FMT_8U_AC4, 4},    {PXL_FMT_16U_AC4, 8},
      {PXL_FMT_16S_AC4, 8},   {PXL_FMT_32S_AC4, 16},  {PXL_FMT_32F_AC4, 16},
      {PXL_FMT_32SC_AC4, 32}, {PXL_FMT_32FC_AC4, 32},
  };
  // clang-format on
  int code = 0;
  for (auto [format, bytes] : kNamed) {
    EXPECT_EQ(++code, format) << "the names run through 1..35 in order";
    int step = 0;
    void* p = Malloc(64, 1, format, &step);
    ASSERT_NE(nullptr, p) << format;
    EXPECT_EQ(64 * bytes, step) << format;
    Free(p);
  }
  EXPECT_EQ(35, code);
}

TEST(ImageMemory, EveryFormatIsAlignedAndWritable) {
  for (int format = 1; format <= 35; ++format) {
    for (int width : {1, 7, 33}) {
      int step = 0;
      auto* p = static_cast<uint8_t*>(Malloc(width, 5, format, &step));
      ASSERT_NE(nullptr, p) << format;
      EXPECT_EQ(0u, reinterpret_cast<uintptr_t>(p) % 64) << format;
      EXPECT_EQ(0, step % 64);
      EXPECT_GE(step, width * BytesPerPixel(format));
      EXPECT_LT(step, width * BytesPerPixel(format) + 64);
      std::memset(p, 0x5A, static_cast<size_t>(step) * 5);  // the whole image is ours
      // The heap block starts at most 72 bytes in front, its address just before p.
      const uintptr_t block = reinterpret_cast<uintptr_t>(reinterpret_cast<void**>(p)[-1]);
      EXPECT_LE(reinterpret_cast<uintptr_t>(p) - block, 72u);
      EXPECT_GE(reinterpret_cast<uintptr_t>(p) - block, 8u);
      Free(p);
    }
  }
  // Codes of equal pixel size give equal steps: AC4 is C4.
  int a = 0, b = 0;
  Free(Malloc(10, 1, 26, &a));
  Free(Malloc(10, 1, 33, &b));
  EXPECT_EQ(a, b);
}

TEST(ImageMemory, RefusalsAndWhatTheyLeaveInTheStep) {
  int step = 1234;
  EXPECT_EQ(nullptr, Malloc(10, 10, 0, &step));
  EXPECT_EQ(nullptr, Malloc(10, 10, 36, &step));
  EXPECT_EQ(nullptr, Malloc(10, 10, -1, &step));
  EXPECT_EQ(1234, step);  // an unknown format leaves the step alone

  for (auto [w, h] : {std::pair{0, 5}, std::pair{5, 0}, std::pair{-3, 5}}) {
    step = 1234;
    EXPECT_EQ(nullptr, Malloc(w, h, 1, &step));
    EXPECT_EQ(0, step);
  }
  EXPECT_EQ(nullptr, Malloc(10, 10, 1, nullptr));
  EXPECT_EQ(nullptr, Malloc_8u_C1(10, 10, nullptr));

  // A row above 0x7FFFFFFF bytes: step 0.
  step = 1234;
  EXPECT_EQ(nullptr, Malloc(0x4000000, 1, 35, &step));  // 32 bytes a pixel: 2^31
  EXPECT_EQ(0, step);
  // A total above 0x7FFFFFFF: the step stays written.
  step = 1234;
  EXPECT_EQ(nullptr, Malloc_8u_C1(64, 0x2000000, &step));
  EXPECT_EQ(64, step);
  // 0x7FFFFFC0 passes the image check and fails in the buffer allocator,
  // whose 72 extra bytes no longer fit.
  step = 1234;
  EXPECT_EQ(nullptr, Malloc_8u_C1(64, 0x1FFFFFF, &step));
  EXPECT_EQ(64, step);

  Free(nullptr);
}

TEST(ImageMemory, BufferAllocatorLimits) {
  EXPECT_EQ(nullptr, pxlBufferAlloc(0));
  EXPECT_EQ(nullptr, pxlBufferAlloc(-64));
  // The largest request whose 72 extra bytes still fit a signed 32-bit size
  // is granted (the heap reserves it without touching it); one more is not.
  void* largest = pxlBufferAlloc(0x7FFFFFFF - 72);
  ASSERT_NE(nullptr, largest);
  static_cast<volatile char*>(largest)[0x7FFFFFFF - 73] = 1;
  pxlBufferFree(largest);
  EXPECT_EQ(nullptr, pxlBufferAlloc(0x7FFFFFFF - 71));
  EXPECT_EQ(nullptr, pxlBufferAlloc(0x7FFFFFB8));
  EXPECT_EQ(nullptr, pxlBufferAlloc(0x7FFFFFFF));
  void* p = pxlBufferAlloc(1);
  ASSERT_NE(nullptr, p);
  EXPECT_EQ(0u, reinterpret_cast<uintptr_t>(p) % 64);
  pxlBufferFree(p);
  pxlBufferFree(nullptr);
}

TEST(ImageMemory, FailureHookAndLiveCount) {
  const long live = pxl::test::LiveBuffers();
  void* a = pxlBufferAlloc(100);
  EXPECT_EQ(live + 1, pxl::test::LiveBuffers());

  pxl::test::FailAllocation(1);  // the second allocation from now fails
  void* b = pxlBufferAlloc(100);
  int step = 0;
  void* c = Malloc(4, 4, 26, &step);
  void* d = pxlBufferAlloc(100);
  EXPECT_NE(nullptr, b);
  EXPECT_EQ(nullptr, c);
  EXPECT_EQ(64, step);
  EXPECT_NE(nullptr, d);
  pxlBufferFree(a);
  pxlBufferFree(b);
  Free(d);
  EXPECT_EQ(live, pxl::test::LiveBuffers());
}

TEST(ImageMemory, SameAtEveryLevel) {
  pxltest::ForEachLevel([](int level) {
    for (int format = 1; format <= 35; ++format) {
      int step = 0;
      void* p = Malloc(37, 2, format, &step);
      ASSERT_NE(nullptr, p) << "level " << level;
      EXPECT_EQ((37 * BytesPerPixel(format) + 63) / 64 * 64, step) << "level " << level;
      Free(p);
    }
  });
}

}  // namespace
