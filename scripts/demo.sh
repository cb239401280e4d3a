#!/usr/bin/env bash
# Builds the library and the gallery, then runs every photo algorithm on a
# generated landscape, on the photographs that scripts/fetch-samples.sh takes
# out of Debian's scikit-image package, and on any PNG or JPEG files named
# here.  Writes out/index.html with the pictures before and after.
#
#   scripts/demo.sh                    the landscape and the sample photographs
#   scripts/demo.sh photo.jpg ...      and these files too
#   scripts/demo.sh --help             the gallery's options (--out DIR, --repeat N, ...)
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
"$root/scripts/setup.sh"
cmake -S "$root" -B "$root/build" -G Ninja -DCMAKE_BUILD_TYPE=Release >/dev/null
cmake --build "$root/build" -j 2 --target pxl_gallery
# The gallery runs without the photographs if they cannot be fetched.
"$root/scripts/fetch-samples.sh" || echo "note: no sample photographs; the gallery runs on the landscape alone"
"$root/build/examples/pxl_gallery" --out "$root/out" --samples "$root/samples" "$@"
