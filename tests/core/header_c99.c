/* The public header as a C99 host sees it: compiles with -std=c99
 * -pedantic-errors, links against the shared library, and calls it. */
#include <pxl/pxl.h>
#include <stdio.h>

int main(void) {
  PxlStatus st = Init();
  Pxl64u mask = 0;
  int threads = 0, step = 0;
  PxliRect roi = {0, 0, 2, 2};
  Pxl32f* img;
  Pxl32f* map;
  int x, y, failures = 0;

  if (st != pxlStsNoErr && st != pxlStsNonIntelCpu) {
    printf("Init: %d\n", (int)st);
    ++failures;
  }
  if (GetCpuFeatures(&mask) != pxlStsNoErr || !(mask & PXL_CPU_SSE2)) ++failures;
  if (GetNumThreads(&threads) != pxlStsNoOperation || threads != 1) ++failures;

  img = (Pxl32f*)Malloc(2, 2, PXL_FMT_32F_C4, &step);
  map = (Pxl32f*)Malloc(2, 2, PXL_FMT_32F_C1, &step);
  if (!img || !map) return 1;
  for (y = 0; y < 2; ++y)
    for (x = 0; x < 2; ++x) {
      Pxl32f* p = (Pxl32f*)((char*)img + y * 64) + 4 * x;
      p[0] = p[1] = p[2] = 0.25f;
      p[3] = 0.5f;
      ((Pxl32f*)((char*)map + y * 64))[x] = 2.0f;
    }
  if (AdjustBrightness_32f_AC4IR(img, 64, roi, map, 64) != pxlStsNoErr) ++failures;
  if (img[0] != 0.5f || img[3] != 0.5f) ++failures;
  Free(img);
  Free(map);
  printf("%s\n", failures ? "FAILED" : "ok");
  return failures != 0;
}
