#!/usr/bin/env bash
# Installs what the build, the tests and the benchmarks need on Debian, with
# apt-get, when it is missing. Run as root (or with sudo available).
set -euo pipefail

packages=(
  cmake ninja-build g++ pkg-config      # build
  ccache                                # test.sh compiles through it
  libgtest-dev libgmock-dev             # tests
  libmpfr-dev libgmp-dev                # accuracy oracle for tests and tools
  libbenchmark-dev libsleef-dev         # benchmarks and their peers
  libc-bin                              # gencat, for the catalogue tests
  gfortran make                         # the Fortran module and the install tests
  python3-numpy python3-pytest          # the Python package and its tests
)
# The Windows build: MinGW-w64 cross compiler (windmc, windres, objdump come
# with it) and Wine to run its tests. test.sh always asks for them.
[ "${ZVL_WITH_WINDOWS:-0}" = 1 ] && packages+=(g++-mingw-w64-x86-64-posix mingw-w64-tools wine64)
# The clang jobs (scripts/clang-checks.sh): clang 14 with its sanitizer and
# libFuzzer runtimes, LLVM's OpenMP runtime with the Archer tool, and the
# symbolizer for readable reports. test.sh always asks for them.
[ "${ZVL_WITH_CLANG:-0}" = 1 ] && packages+=(clang libclang-rt-14-dev libomp-dev llvm)

missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
[ ${#missing[@]} -eq 0 ] && exit 0

echo "installing: ${missing[*]}"
SUDO=""
[ "$(id -u)" -ne 0 ] && SUDO=sudo
$SUDO apt-get update -qq
DEBIAN_FRONTEND=noninteractive $SUDO apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
