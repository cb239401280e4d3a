// Prints, for every registered kernel, which level's version runs at each
// jump index and which one runs on this machine.
#include <cstdio>

#include "core/cpu.h"
#include "core/dispatch.h"
#include "pxl/pxl.h"

int main() {
  const PxlStatus st = Init();
  const int level = pxl::JumpIndex();
  std::printf("Init status %d, jump index %d\n", st, level);
  std::printf("%-30s %-14s %-13s %s\n", "kernel", "unit", "levels 0..5", "runs here");
  for (int i = 0; i < pxl::g_kernelCount; ++i) {
    const pxl::KernelInfo& k = pxl::g_kernelInfo[i];
    char map[32];
    std::snprintf(map, sizeof map, "%d %d %d %d %d %d", k.versionAtLevel[0], k.versionAtLevel[1],
                  k.versionAtLevel[2], k.versionAtLevel[3], k.versionAtLevel[4],
                  k.versionAtLevel[5]);
    std::printf("%-30s %-14s %-13s l%d\n", k.name, k.unit, map, k.versionAtLevel[level]);
  }
  return 0;
}
