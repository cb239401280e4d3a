#!/usr/bin/env bash
# Builds the library and the demo host program, then runs the demo on its
# generated photo; before.png and after.png land in out/.  Arguments are
# passed to the demo (try --help, or a PNG file from scripts/fetch-samples.sh).
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
"$root/scripts/setup.sh"
cmake -S "$root" -B "$root/build" -G Ninja -DCMAKE_BUILD_TYPE=Release >/dev/null
cmake --build "$root/build" -j 2 --target pxl_demo
if [ $# -eq 0 ]; then
  set -- --out "$root/out"
fi
exec "$root/build/examples/pxl_demo" "$@"
