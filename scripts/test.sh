#!/usr/bin/env bash
# Builds everything (library with all six processor levels, tests, benchmarks,
# examples) and runs the whole test suite.
#
#   scripts/test.sh              release build in build/
#   scripts/test.sh --sanitize   AddressSanitizer + UndefinedBehaviorSanitizer build in build-asan/
#
# The sanitizer build leaves out the benchmarks, and lists the test that opens
# the gallery page in Chromium as not run (the gallery itself and its other
# tests do run there).
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
"$root/scripts/setup.sh"

dir=build
args=(-DCMAKE_BUILD_TYPE=Release -DPXL_BUILD_STATIC=ON)
if [ "${1:-}" = "--sanitize" ]; then
  dir=build-asan
  args=(-DCMAKE_BUILD_TYPE=RelWithDebInfo -DPXL_SANITIZE=ON -DPXL_BUILD_STATIC=ON -DPXL_BUILD_BENCH=OFF
        -DPXL_BUILD_EXAMPLES=ON -DPXL_BROWSER_TEST=OFF)
fi

cmake -S "$root" -B "$root/$dir" -G Ninja "${args[@]}"
cmake --build "$root/$dir" -j 2
cd "$root/$dir"
ctest --output-on-failure -j 2
