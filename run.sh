#!/usr/bin/env bash
# The main job: installs what is missing, builds the library and runs the
# quickstart example against it.
set -euo pipefail
cd "$(dirname "$0")"
scripts/deps.sh
cmake --preset default >/dev/null
cmake --build --preset default --target quickstart
build/default/examples/quickstart
