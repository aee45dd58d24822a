#!/usr/bin/env bash
# All tests: installs what is missing, builds everything and runs the whole
# suite through ctest, on Linux and then on Windows: the DLL cross-built with
# MinGW-w64 and the same suite run under Wine. Between the two, the clang
# jobs (scripts/clang-checks.sh): a clang build, the suite under
# AddressSanitizer and UndefinedBehaviorSanitizer, a short campaign of the
# environment fuzz target, and the threading tests under ThreadSanitizer;
# ZVL_CLANG=0 leaves them out. Then the tests whose outcome could depend on
# the machine run again with other thread settings, and the Linux suite
# once more built for the other case of the vendor check
# (scripts/test_variations.sh; ZVL_VARIATIONS=0 leaves that out). Long
# sweeps carry the ctest label "long" and run only with ZVL_LONG=1.
set -euo pipefail
cd "$(dirname "$0")"
ZVL_WITH_WINDOWS=1 ZVL_WITH_CLANG=1 scripts/deps.sh
args=(-j "$(nproc)")
[ "${ZVL_LONG:-0}" = 1 ] || args+=(-LE long)
# Every build compiles through ccache (new build trees take the launcher
# from the environment): the second Linux build, for the other case of the
# vendor check, differs from the first in one file, and a rerun after a
# small change compiles little anew. The base directory lets build trees
# at the same depth share entries.
if command -v ccache >/dev/null; then
  export CMAKE_C_COMPILER_LAUNCHER=ccache CMAKE_CXX_COMPILER_LAUNCHER=ccache
  export CCACHE_BASEDIR=$PWD
fi

cmake --preset default >/dev/null
cmake --build --preset default
ctest --preset default "${args[@]}"

if [ "${ZVL_CLANG:-1}" != 0 ]; then
  start=$SECONDS
  scripts/clang-checks.sh
  echo "clang jobs: $((SECONDS - start)) s"
fi

start=$SECONDS
cmake --preset windows >/dev/null
cmake --build --preset windows
echo "Windows build: $((SECONDS - start)) s"
if [ -s build/windows/excluded-tests.txt ]; then
  echo "Tests not built for Windows:"
  sed 's/^/  /' build/windows/excluded-tests.txt
fi
ctest --preset windows "${args[@]}"
echo "Windows build and tests under Wine: $((SECONDS - start)) s"

[ "${ZVL_VARIATIONS:-1}" = 0 ] || scripts/test_variations.sh
