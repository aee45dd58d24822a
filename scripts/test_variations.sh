#!/usr/bin/env bash
# The part of the suite whose outcome could depend on the machine, run again
# under the settings another machine would bring. Called by test.sh after
# the Linux and Windows suites, with both builds in place.
#
# 1. Threads: the threading, front-end and result-digest tests of both
#    builds, and the Windows build's comparisons with the Linux build, with
#    OMP_NUM_THREADS 1, 2 and 4 and dynamic mode on and off (1 with it on,
#    2 with it off, 4 both ways).
# 2. Vendors: the whole Linux suite once more, built for the other case of
#    the vendor check: for a vendor this processor does not report when the
#    default build matches it (every function then runs cpu type 0, and the
#    topology probes ignore the HTT flag), for this processor's vendor when
#    the default build does not match.
set -euo pipefail
cd "$(dirname "$0")/.."

linux_tests='^(thread|topology|threshold|driver|affinity|frontend|c_client|results_digest|context_release)'
windows_tests='^(threading_acceptance|driver|frontend|c_client|results_match_linux|quickstart_matches_linux)'
log=build/variations.log

# run <label> <ctest arguments...>: quiet when it passes, the log when not.
run() {
  local label=$1
  shift
  if ! ctest "$@" -j "$(nproc)" -LE long --output-on-failure >"$log" 2>&1; then
    cat "$log"
    echo "FAILED: $label"
    exit 1
  fi
  echo "  $label: $(sed -n 's/.*tests failed out of \([0-9]*\)/\1 tests passed/p' "$log")"
}

start=$SECONDS
echo "Threads:"
# One thread needs no dynamic case of its own: a team of one is a team of
# one either way.
for setting in 1:on 2:off 4:on 4:off; do
  (
    omp=${setting%:*} dynamic=${setting#*:}
    export OMP_NUM_THREADS=$omp
    if [ $dynamic = on ]; then unset ZEL_DYNAMIC; else export ZEL_DYNAMIC=false; fi
    label="OMP_NUM_THREADS=$omp, dynamic $dynamic"
    run "Linux, $label" --preset default -R "$linux_tests"
    run "Windows, $label" --preset windows -R "$windows_tests"
  )
done
echo "Threads: $((SECONDS - start)) s"

start=$SECONDS
vendor=$(sed -n 's/^ZVL_CPU_VENDOR:STRING=//p' build/default/CMakeCache.txt)
own=$(sed -n 's/^ZVL_CONFIGURING_CPU_VENDOR:INTERNAL=//p' build/default/CMakeCache.txt)
if [ -z "$own" ]; then
  echo "Vendors: skipped, this processor's vendor could not be read"
  exit 0
fi
if [ "$vendor" = "$own" ]; then
  other=NoSuchVendor  # twelve characters no processor reports
  case="a vendor this $own processor does not report"
else
  other=$own
  case="this processor's vendor, $own"
fi
echo "Vendors: the Linux suite built for $case"
cmake --preset default -B build/other-vendor -DZVL_CPU_VENDOR="$other" -DZVL_BUILD_BENCH=OFF \
  >/dev/null
cmake --build build/other-vendor >/dev/null
# consumer_cmake_subdirectory builds a library of its own from the sources,
# for the vendor it reads itself: nothing of this build is in it.
run "Linux, vendor $other" --test-dir build/other-vendor -E '^consumer_cmake_subdirectory$'
echo "Vendors: $((SECONDS - start)) s"
