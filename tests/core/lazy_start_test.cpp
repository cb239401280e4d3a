// The first kernel call of a process, with no Init before it, goes through
// the lazy start-up and still sees its integer and float arguments intact.
// Runs as a process of its own so that nothing has started the library.
#include <gtest/gtest.h>

#include <cmath>
#include <thread>

#include "core/cpu.h"
#include "core/dispatch.h"
#include "pxl/pxl.h"

TEST(LazyStart, FirstCallBehavesAsIfInitHadRun) {
  ASSERT_EQ(-1, pxl::JumpIndex()) << "something started the library before the test";

  alignas(16) float first[2][4] = {{0.2f, 0.4f, 0.6f, 0.8f}, {0.1f, 0.3f, 0.5f, 0.7f}};
  alignas(16) float again[2][4] = {{0.2f, 0.4f, 0.6f, 0.8f}, {0.1f, 0.3f, 0.5f, 0.7f}};
  const float map[2] = {0.25f, -0.5f};
  // Floats in registers on both sides of the integer arguments.
  EXPECT_EQ(pxlStsNoErr, AdjustExposureLin_32f_C4IMR(&first[0][0], 16, PxliRect{0, 0, 2, 1}, 0.5f,
                                                     map, 8, -0.3f, 0.6f));
  EXPECT_EQ(pxl::test::MaxSupportedLevel(), pxl::JumpIndex());

  AdjustExposureLin_32f_C4IMR(&again[0][0], 16, PxliRect{0, 0, 2, 1}, 0.5f, map, 8, -0.3f, 0.6f);
  for (int x = 0; x < 2; ++x)
    for (int c = 0; c < 4; ++c) EXPECT_EQ(again[x][c], first[x][c]);

  // The bounds took effect: 0.75 is cut to 0.6, 0 stays 0.
  const float m0 = powf(2.0f, 0.6f * 1.666f);
  EXPECT_FLOAT_EQ(0.2f * m0 / (0.8f + 0.2f * m0), first[0][0]);
  const float m1 = powf(2.0f, 0.0f);
  EXPECT_FLOAT_EQ(0.1f * m1 / (0.9f + 0.1f * m1), first[1][0]);
}

TEST(LazyStart, ThreadsRacingThroughStartUpAgree) {
  // Both threads may find the index at -1 and start the library; they store
  // the same level and each call completes with its own arguments.
  pxl::test::ForceLevel(-1);
  alignas(16) float a[4] = {0.5f, 0.5f, 0.5f, 1.0f}, b[4] = {0.25f, 0.25f, 0.25f, 1.0f};
  const float twice = 2.0f, half = 0.5f;
  std::thread t1([&] { AdjustBrightness_32f_C4IR(a, 16, PxliRect{0, 0, 1, 1}, &twice, 4); });
  std::thread t2([&] { AdjustBrightness_32f_C4IR(b, 16, PxliRect{0, 0, 1, 1}, &half, 4); });
  t1.join();
  t2.join();
  EXPECT_EQ(pxl::test::MaxSupportedLevel(), pxl::JumpIndex());
  EXPECT_EQ(1.0f, a[0]);
  EXPECT_EQ(2.0f, a[3]);
  EXPECT_EQ(0.125f, b[0]);
}
