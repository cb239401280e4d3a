#!/usr/bin/env bash
# Every export that the named headers declare is called by some entry of the
# gallery.
#
#   check_coverage.sh PXL_GALLERY INCLUDE_DIR HEADER...
set -euo pipefail
gallery=$1
include_dir=$2
shift 2
declared=$(for h in "$@"; do grep -hE '^PXL_API ' "$include_dir/$h"; done \
  | sed -E 's/^PXL_API[^(]*[^A-Za-z0-9_]([A-Za-z_][A-Za-z0-9_]*)[[:space:]]*\(.*/\1/' | sort -u)
called=$("$gallery" --list | cut -f 1 | sort -u)
missing=$(comm -23 <(echo "$declared") <(echo "$called"))
echo "declared in $*: $(echo "$declared" | wc -l), called by the gallery: $(echo "$called" | wc -l)"
if [ -n "$missing" ]; then
  echo "not in the gallery (add an entry to examples/gallery/entries.cpp):"
  echo "$missing"
  exit 1
fi
