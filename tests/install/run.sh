#!/usr/bin/env bash
# Installs pxl into a fresh prefix and builds and runs a small C host
# (host/main.c) against it in every way a host takes pxl: the CMake package,
# pkg-config, and pxl's source tree as a subproject (add_subdirectory and
# FetchContent).  The subproject builds compile the library at the baseline
# level only, and nothing else of pxl.
#
# When the build has the Python package, the installed package is imported
# too, and must use the installed library.
#
#   run.sh <pxl build dir> <pxl source dir> <work dir> <C compiler> <generator> [<python>]
set -euo pipefail
build=$1
src=$2
work=$3
cc=$4
generator=$5
python=${6:-}
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)

rm -rf "$work"
mkdir -p "$work"
prefix=$work/prefix
fail() { echo "FAIL: $*"; exit 1; }

echo "== install into $prefix"
cmake --install "$build" --prefix "$prefix" > "$work/install.log"
real=$(find "$prefix" -name 'libpxl.so.*.*.*' -type f)
[ -n "$real" ] || fail "no libpxl.so.MAJOR.MINOR.PATCH installed"
libdir=$(dirname "$real")
version=${real##*/libpxl.so.}
major=${version%%.*}
[ "$(readlink "$libdir/libpxl.so.$major")" = "libpxl.so.$version" ] || fail "libpxl.so.$major is not a link to libpxl.so.$version"
[ "$(readlink "$libdir/libpxl.so")" = "libpxl.so.$major" ] || fail "libpxl.so is not a link to libpxl.so.$major"
readelf -d "$real" | grep -q "SONAME.*\[libpxl.so.$major\]" || fail "the soname is not libpxl.so.$major"
for h in "$src"/include/pxl/*.h; do
  [ -f "$prefix/include/pxl/${h##*/}" ] || fail "header ${h##*/} not installed"
done
for f in cmake/pxl/pxlConfig.cmake cmake/pxl/pxlConfigVersion.cmake cmake/pxl/pxlTargets.cmake \
         pkgconfig/pxl.pc; do
  [ -f "$libdir/$f" ] || fail "$f not installed"
done

run_host() {  # <program> [env...]
  local out
  out=$("$@") || fail "$* exited with $?: $out"
  [ "$out" = "pxl host: ok" ] || fail "$*: $out"
  echo "   $*: $out"
}
configure_host() {  # <dir> <cmake args...>
  local dir=$1
  shift
  cmake -S "$here/host" -B "$dir" -G "$generator" -DCMAKE_C_COMPILER="$cc" "$@" \
    > "$dir.configure.log" 2>&1 || { cat "$dir.configure.log"; fail "configuring $dir"; }
}

echo "== CMake package"
configure_host "$work/package" -DPXL_HOST_WAY=package -DCMAKE_PREFIX_PATH="$prefix"
cmake --build "$work/package" > "$work/package.build.log" 2>&1 || { cat "$work/package.build.log"; fail "building against the package"; }
run_host "$work/package/pxl_host"
if [ -f "$libdir/libpxl.a" ]; then
  run_host "$work/package/pxl_host_static"
  ! readelf -d "$work/package/pxl_host_static" | grep -q 'libpxl' || fail "the static host needs libpxl.so"
fi

echo "== pkg-config"
export PKG_CONFIG_PATH=$libdir/pkgconfig
[ "$(pkg-config --modversion pxl)" = "$version" ] || fail "pkg-config --modversion: $(pkg-config --modversion pxl)"
# shellcheck disable=SC2046
"$cc" -std=c99 -Wall -Werror "$here/host/main.c" $(pkg-config --cflags --libs pxl) -o "$work/pc_host"
run_host env LD_LIBRARY_PATH="$libdir" "$work/pc_host"

for way in subdirectory fetchcontent; do
  echo "== subproject: $way"
  configure_host "$work/$way" -DPXL_HOST_WAY=$way -DPXL_HOST_SOURCE="$src" -DPXL_BASELINE_ONLY=ON
  if cmake --build "$work/$way" --target help | grep -qE 'pxl_(core_tests|bench|gallery)'; then
    fail "a subproject build defines pxl's tests, benchmarks or examples"
  fi
  cmake --build "$work/$way" --target pxl_host -j 2 > "$work/$way.build.log" 2>&1 || { cat "$work/$way.build.log"; fail "building $way"; }
  run_host "$work/$way/pxl_host"
done
if [ -n "$python" ] && "$python" -c 'import numpy, cffi' 2>/dev/null; then
  echo "== Python package"
  package_dir=$(dirname "$(find "$prefix" -path '*/pxl/_binding.py')")
  [ -n "$package_dir" ] || fail "the Python package is not installed"
  out=$(cd / && env -u PXL_LIBRARY PYTHONPATH="$(dirname "$package_dir")" "$python" -c '
import numpy as np, pxl, pxl._binding as b, sys
planes = pxl.Copy_8u_C3P3R(np.arange(24, dtype=np.uint8).reshape(2, 4, 3))
print(b._library_path(), planes[2, 1, 3])') || fail "importing the installed package: $out"
  [ "$out" = "$(cd "$libdir" && pwd -P)/libpxl.so.$major 23" ] || fail "the installed package: $out"
  echo "   $out"
fi
echo "all ways work"
