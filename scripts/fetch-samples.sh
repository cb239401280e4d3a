#!/usr/bin/env bash
# Fetches a few photographs to try the example programs on.
#
# They come from Debian's python3-skimage package, which ships them as data
# files: the package is downloaded with apt-get (not installed), unpacked
# with dpkg-deb into a temporary directory, and the pictures that exist in it
# are copied into samples/ at the repository root (ignored by git).  Nothing
# of Python is needed.
#
#   scripts/fetch-samples.sh           fetch unless samples/ already has them
#   scripts/fetch-samples.sh --force   fetch again
set -euo pipefail

package=python3-skimage
wanted=(astronaut.png coffee.png chelsea.png motorcycle_left.png motorcycle_right.png)

repo_root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
samples="$repo_root/samples"
# Lists the pictures the last fetch found, so that a later run knows which of
# the wanted ones the package simply does not have.
stamp="$samples/.fetched"

force=0
case "${1:-}" in
  "") ;;
  --force) force=1 ;;
  -h|--help) sed -n '2,11p' "$0" | sed 's/^# \{0,1\}//'; exit 0 ;;
  *) echo "usage: $0 [--force]" >&2; exit 2 ;;
esac

have_all() {
  [[ -s "$stamp" ]] || return 1
  local name
  while IFS= read -r name; do
    [[ -f "$samples/$name" ]] || return 1
  done <"$stamp"
}

if [[ $force -eq 0 ]] && have_all; then
  echo "samples/ is up to date: $(tr '\n' ' ' <"$stamp")"
  exit 0
fi

for tool in apt-get dpkg-deb; do
  command -v "$tool" >/dev/null || { echo "error: $tool not found (a Debian system is needed)" >&2; exit 1; }
done

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work"

# apt-get download writes into the current directory.  Its messages go to a
# log that is shown only on failure: as root it always warns that it cannot
# hand the private temporary directory to its unprivileged user, which is
# harmless.  The package lists are refreshed only when the first attempt
# fails, since that needs root and takes a while.
log="$work/apt.log"
if ! apt-get download "$package" >/dev/null 2>"$log"; then
  echo "apt-get download failed ($(tail -n 1 "$log"));" \
       "refreshing the package lists and trying again"
  apt-get update >/dev/null
  apt-get download "$package" >/dev/null 2>"$log" || { cat "$log" >&2; exit 1; }
fi

deb=$(find "$work" -maxdepth 1 -name "${package}_*.deb" | head -n 1)
[[ -n "$deb" ]] || { echo "error: no $package .deb was downloaded" >&2; exit 1; }
echo "downloaded $(basename "$deb")"

dpkg-deb -x "$deb" "$work/tree"
data_dir=$(find "$work/tree" -type d -path '*/skimage/data' | head -n 1)
[[ -n "$data_dir" ]] || { echo "error: $(basename "$deb") has no skimage/data directory" >&2; exit 1; }

mkdir -p "$samples"
found=()
for name in "${wanted[@]}"; do
  if [[ -f "$data_dir/$name" ]]; then
    cp "$data_dir/$name" "$samples/$name"
    found+=("$name")
  else
    echo "note: $name is not in this version of the package"
  fi
done
[[ ${#found[@]} -gt 0 ]] || { echo "error: none of the pictures was found" >&2; exit 1; }

printf '%s\n' "${found[@]}" >"$stamp"
echo "copied into $samples: ${found[*]}"
