#!/usr/bin/env bash
# The clang jobs of CI, run by test.sh after the g++ suite. Each builds only
# what it runs; the times of each step are printed.
#
#   clang  the whole project (library, tests, tools, benchmarks) with clang
#          14 in Release, on LLVM's OpenMP runtime; the suite.
#   asan   library, tests and tools with AddressSanitizer and
#          UndefinedBehaviorSanitizer (and libFuzzer's coverage); the suite,
#          then the environment fuzz target: its seeds, and a short campaign
#          (ZVL_FUZZ_SECONDS, default 60).
#   tsan   library and the state and threading tests with ThreadSanitizer,
#          on LLVM's OpenMP runtime with its Archer tool, which tells TSan
#          how the runtime's regions and barriers order the threads
#          (libgomp is not instrumented and would give false reports).
#
# Run one job: scripts/clang-checks.sh asan. Long sweeps stay out (ctest
# label long), as in the g++ suite.
set -euo pipefail
cd "$(dirname "$0")/.."
jobs=("$@")
[ ${#jobs[@]} -gt 0 ] || jobs=(clang asan tsan)

step() {
  local start=$SECONDS
  "$@"
  echo "  ($((SECONDS - start)) s: $*)"
}

# Left out of every clang job: the checks that the x87 support set's objects
# and the complex scalar routines hold x87 code alone, which hold for g++'s
# code (clang moves doubles with VEX instructions in cpu type 5's copy), and
# the project that adds the
# sources with add_subdirectory, which builds the library once more. Left
# out under the sanitizers as well: the check of the per-cpu units'
# symbols, which instrumentation adds to; the test of the benchmarks' peers
# (other libraries' functions); the installed tree's consumers (Python,
# other projects), which load the library into programs without the
# sanitizer runtime; and the table generators' reruns (tools, not the
# library; the g++ suite runs them).
clang_skip_tests='ext_units_x87_only|complex_scalar_routines_x87|consumer_cmake_subdirectory'
asan_skip_tests="$clang_skip_tests|unit_symbols|install_tree|consumer_|python_package|_tables\.|near_pi2_cases"
asan_gtest_filter='-Peers.AgreeWithTheReference'
# The OpenMP runtime keeps its pool's blocks until exit.
export LSAN_OPTIONS="suppressions=$PWD/tests/data/sanitizers/lsan.supp"

run_clang() {
  step cmake --preset clang >/dev/null
  step cmake --build --preset clang
  step ctest --preset clang -j "$(nproc)" -LE long -E "$clang_skip_tests"
}

run_asan() {
  step cmake --preset asan >/dev/null
  step cmake --build --preset asan
  GTEST_FILTER=$asan_gtest_filter step ctest --preset asan -j "$(nproc)" -LE long -E "$asan_skip_tests"
  local dir=build/asan/fuzz
  mkdir -p "$dir/corpus" "$dir/crashes"
  step build/asan/tests/fuzz/env_fuzz \
    -dict=tests/fuzz/env.dict -max_total_time="${ZVL_FUZZ_SECONDS:-60}" -timeout=300 \
    -artifact_prefix="$dir/crashes/" -print_final_stats=1 \
    "$dir/corpus" tests/fuzz/corpus 2>"$dir/log" ||
    { tail -40 "$dir/log"; echo "env_fuzz failed: inputs in $dir/crashes"; return 1; }
  grep -a -E '^(Done|stat::number_of_executed_units)' "$dir/log"
}

tsan_tests=(mode_test pipeline_test messages_test concurrency_test context_release_test
            driver_test thread_controls_test threading_acceptance_test team_results_test
            huge_count_test)
run_tsan() {
  step cmake --preset tsan >/dev/null
  step cmake --build --preset tsan --target "${tsan_tests[@]}"
  # Archer must be in place, or the runtime's synchronisation is invisible.
  local said
  said=$(OMP_TOOL_LIBRARIES=/usr/lib/llvm-14/lib/libarcher.so ARCHER_OPTIONS=verbose=1 \
         TSAN_OPTIONS="suppressions=$PWD/tests/data/sanitizers/tsan.supp" \
         build/tsan/tests/threading/driver_test --gtest_filter='Drivers.LastMember*' 2>&1)
  [[ $said == *"Archer detected OpenMP application with TSan"* ]] ||
    { echo "$said"; echo "Archer was not loaded"; return 1; }
  # Each program's tests: its name, with or without _test, alone or with a
  # suffix (team_results_test.cpu0, huge_count.limit).
  local names="" t
  for t in "${tsan_tests[@]}"; do names+="|$t|${t%_test}"; done
  step ctest --preset tsan -LE long -R "^(${names#|})(\\..*)?\$"
}

for job in "${jobs[@]}"; do
  echo "== clang job: $job"
  start=$SECONDS
  "run_$job"
  echo "== $job: $((SECONDS - start)) s"
done
