#!/usr/bin/env bash
# The main job: installs what is missing, builds the library, runs the
# quickstart example against it, then measures every function's accuracy
# against MPFR and its speed beside glibc and SLEEF (zvl-report).
set -euo pipefail
cd "$(dirname "$0")"
scripts/deps.sh
cmake --preset default >/dev/null
cmake --build --preset default --target quickstart zvl-report
build/default/examples/quickstart
echo
mkdir -p build/default/report
build/default/tools/zvl-report --out build/default/report/index.html
echo "open build/default/report/index.html in a browser for the tables and plots"
