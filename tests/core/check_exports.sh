#!/usr/bin/env bash
# The dynamic symbols that the shared library defines are exactly the
# functions that the public headers declare: nothing missing, nothing leaked.
set -euo pipefail
lib=$1
include_dir=$2
# Every declaration starts a line with PXL_API and names the function on it.
declared=$(grep -hE '^PXL_API ' "$include_dir"/pxl/*.h \
  | sed -E 's/^PXL_API[^(]*[^A-Za-z0-9_]([A-Za-z_][A-Za-z0-9_]*)[[:space:]]*\(.*/\1/' | sort -u)
exported=$(nm -D --defined-only "$lib" | awk '{print $3}' | sed 's/@.*//' | sort -u)
missing=$(comm -23 <(echo "$declared") <(echo "$exported"))
extra=$(comm -13 <(echo "$declared") <(echo "$exported"))
echo "declared: $(echo "$declared" | wc -l), exported: $(echo "$exported" | wc -l)"
status=0
if [ -n "$missing" ]; then echo "declared but not exported:"; echo "$missing"; status=1; fi
if [ -n "$extra" ]; then echo "exported but not declared:"; echo "$extra"; status=1; fi
exit $status
