#!/usr/bin/env bash
# Runs Python tests of the package with pytest, or reports them as not run
# (exit 77) when the interpreter lacks a module they need.
#
#   run.sh <python> <package dir> <modules, comma-separated> <test file>...
set -euo pipefail
python=$1
package_dir=$2
modules=$3
shift 3
if ! "$python" -c "import $modules" 2>/dev/null; then
  echo "not run: $python cannot import one of $modules (scripts/setup.sh installs them from Debian)"
  exit 77
fi
cd "$(dirname "$1")"
PYTHONPATH=$package_dir${PYTHONPATH:+:$PYTHONPATH} exec "$python" -m pytest -q -p no:cacheprovider "$@"
