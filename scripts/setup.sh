#!/usr/bin/env bash
# Installs the Debian packages that building, testing, benchmarking, the
# example programs and the reference need, if any is missing.  The library
# itself needs only a C++17 compiler and its standard library.
#
#   libpng-dev, libjpeg-dev   picture files for the example programs
#   chromium, python3         the test that opens the gallery page in a browser
#   doxygen                   the reference for host developers
#   libopencv-core-dev        the peer the primitives' benchmarks are measured against
#   python3-numpy, python3-cffi, python3-pytest, python3-dask
#                             the Python package (python/) and its tests
set -euo pipefail

packages=(g++ cmake ninja-build binutils libgtest-dev libbenchmark-dev libpng-dev libjpeg-dev
          pkg-config python3 chromium doxygen libopencv-core-dev
          python3-numpy python3-cffi python3-pytest python3-dask)
missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
if [ ${#missing[@]} -gt 0 ]; then
  echo "installing: ${missing[*]}"
  sudo=""
  [ "$(id -u)" -eq 0 ] || sudo=sudo
  $sudo apt-get update -q
  DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -q --no-install-recommends "${missing[@]}"
fi
