#!/usr/bin/env bash
# The static library lets out the same symbols as the shared one: its global
# defined symbols are exactly the shared library's exports.
set -euo pipefail
shared=$1
static=$2
exported=$(nm -D --defined-only "$shared" | awk '{print $3}' | sed 's/@.*//' | sort -u)
# Weak symbols (W, V) are left out: a host's own copy may take their place.
global=$(nm -g --defined-only "$static" | awk 'NF == 3 && $2 ~ /^[A-UX-Z]$/ {print $3}' | sort -u)
echo "shared: $(echo "$exported" | wc -l) exports, static: $(echo "$global" | wc -l) global symbols"
diff <(echo "$exported") <(echo "$global") && exit 0
echo "(< only in the shared library, > only in the static one)"
exit 1
