#!/usr/bin/env bash
# Runs the gallery on small pictures (a small landscape, gray and colour
# JPEGs, RGB and RGBA PNGs, a file name that needs escaping, a picture wider
# than the page's limit) and opens its page in headless Chromium: every
# picture must load and nothing may be reported as an error.
#
#   page_test.sh PXL_GALLERY MAKE_PICTURES WORK_DIR
set -euo pipefail
gallery=$1
make_pictures=$2
work=$3
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)

rm -rf "$work"
mkdir -p "$work"
"$make_pictures" "$work/in"
odd='a <b> c & "d".jpg'
"$gallery" --out "$work/out" --landscape 320x213 --repeat 1 --max-side 256 \
  --samples "$work/in/samples" "$work/in/$odd" >"$work/gallery.log"
tail -n 1 "$work/gallery.log"

# Two pictures (before and after) for every algorithm on each of the five
# pictures.
entries=$("$gallery" --list | cut -f 2 | sort -u | wc -l)
/usr/bin/python3 "$here/check_page.py" "$work/out/index.html" \
  --min-images $((entries * 5 * 2)) --expect-text "$odd"
