#!/usr/bin/env bash
# Builds the reference for host developers from the comments of the public
# headers, with Doxygen: build/reference/html/index.html.
#
#   scripts/reference.sh                 build it (installs doxygen if missing)
#   scripts/reference.sh --check         and fail on any Doxygen warning or
#                                        any export without a description
#   scripts/reference.sh --out DIR       build it into DIR
#   scripts/reference.sh --input DIR     document the headers of DIR (and of
#                                        every other --input) instead of
#                                        include/pxl; for tests
#   scripts/reference.sh --no-setup      do not look for missing packages
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
out=$root/build/reference
inputs=()
check=0
setup=1
while [ $# -gt 0 ]; do
  case "$1" in
    --check) check=1 ;;
    --out) out=$2; shift ;;
    --input) inputs+=("$(cd "$2" && pwd)"); shift ;;
    --no-setup) setup=0 ;;
    -h|--help) sed -n '2,13p' "$0" | sed 's/^# \{0,1\}//'; exit 0 ;;
    *) echo "usage: $0 [--check] [--out DIR] [--input DIR] [--no-setup]" >&2; exit 2 ;;
  esac
  shift
done
[ $setup -eq 0 ] || "$root/scripts/setup.sh"
[ ${#inputs[@]} -gt 0 ] || inputs=("$root/include/pxl")

mkdir -p "$out"
out=$(cd "$out" && pwd)
rm -rf "$out/html" "$out/xml"
version=$(sed -nE 's/^project\(pxl VERSION ([0-9.]+).*/\1/p' "$root/CMakeLists.txt")
PXL_ROOT=$root PXL_REFERENCE_OUT=$out PXL_VERSION=$version PXL_INPUT="${inputs[*]}" \
  doxygen "$root/docs/Doxyfile"

# Doxygen repeats a warning for each page the declaration appears on.
warnings=$({ grep 'warning:' "$out/warnings.log" || true; } | sort -u | wc -l)
echo "reference: $out/html/index.html, $warnings Doxygen warning(s)"
[ "$warnings" -eq 0 ] || awk '!seen[$0]++' "$out/warnings.log" | head -n 60 | sed 's/^/  /'

# Every declared export must have a description in the reference, also
# where Doxygen itself would not complain.
undocumented=$(/usr/bin/python3 "$root/docs/undocumented.py" "$out/xml" "${inputs[@]}")
if [ -n "$undocumented" ]; then
  echo "exports without a description:"
  echo "$undocumented" | sed 's/^/  /'
fi
if [ $check -eq 1 ] && { [ "$warnings" -ne 0 ] || [ -n "$undocumented" ]; }; then
  exit 1
fi
