// Running a kernel at every processor level this machine supports.
#ifndef PXL_TESTS_SUPPORT_LEVELS_H
#define PXL_TESTS_SUPPORT_LEVELS_H

#include <functional>

#include "core/cpu.h"
#include "core/dispatch.h"

namespace pxltest {

// Calls body(level) with the jump index forced to each level from 0 to the
// highest this machine runs, then restores the index.
inline void ForEachLevel(const std::function<void(int)>& body) {
  const int top = pxl::test::MaxSupportedLevel();
  const int32_t saved = pxl::test::ForceLevel(0);
  for (int level = 0; level <= top; ++level) {
    pxl::test::ForceLevel(level);
    body(level);
  }
  pxl::test::ForceLevel(saved);
}

}  // namespace pxltest

#endif
