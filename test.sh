#!/usr/bin/env bash
# All tests: installs what is missing, builds everything and runs the whole
# suite through ctest. Long sweeps carry the ctest label "long" and run only
# with ZVL_LONG=1.
set -euo pipefail
cd "$(dirname "$0")"
scripts/deps.sh
cmake --preset default >/dev/null
cmake --build --preset default
args=(--preset default)
[ "${ZVL_LONG:-0}" = 1 ] || args+=(-LE long)
ctest "${args[@]}"
