/* A host as small as it gets: start the library, fill a picture, copy a
 * region of it, and check the bytes.  Built against an installed pxl (CMake
 * package, pkg-config) and against pxl's source tree (subproject). */
#include <pxl/pxl.h>
#include <stdio.h>
#include <string.h>

int main(void) {
  enum { W = 5, H = 4 };
  Pxl8u src[H][W * 3], dst[H][W * 3];
  const Pxl8u value[3] = {10, 20, 30};
  PxliRect all = {0, 0, W, H}, inner = {1, 1, 3, 2};
  int threads = 0, x, y, c;
  PxlStatus st = Init();

  if (st < 0) {
    printf("Init: %d\n", (int)st);
    return 1;
  }
  if (GetNumThreads(&threads) != pxlStsNoOperation || threads != 1) {
    printf("GetNumThreads: %d\n", threads);
    return 1;
  }
  memset(dst, 0, sizeof dst);
  if (Set_8u_C3R(value, &src[0][0], W * 3, all) != pxlStsNoErr ||
      Copy_8u_C3R(&src[0][0], W * 3, &dst[0][0], W * 3, inner) != pxlStsNoErr) {
    printf("Set/Copy failed\n");
    return 1;
  }
  for (y = 0; y < H; ++y)
    for (x = 0; x < W; ++x)
      for (c = 0; c < 3; ++c) {
        int in = x >= 1 && x < 4 && y >= 1 && y < 3;
        if (dst[y][x * 3 + c] != (in ? value[c] : 0)) {
          printf("wrong byte at (%d, %d) channel %d: %d\n", x, y, c, dst[y][x * 3 + c]);
          return 1;
        }
      }
  /* A failing call reports a status and writes nothing. */
  if (Copy_8u_C3R(NULL, W * 3, &dst[0][0], W * 3, all) != pxlStsNullPtrErr) {
    printf("a null source was not refused\n");
    return 1;
  }
  printf("pxl host: ok\n");
  return 0;
}
