#!/usr/bin/env bash
# Builds Trident and runs every test, with warnings as errors. The
# environment may choose another build:
#   TRIDENT_BUILD_DIR   build directory (build)
#   TRIDENT_BUILD_TYPE  CMake build type (RelWithDebInfo)
#   TRIDENT_CXX         C++ compiler (CMake's default, GCC on Debian), e.g. clang++
set -euo pipefail
cd "$(dirname "$0")/.."

build=${TRIDENT_BUILD_DIR:-build}
type=${TRIDENT_BUILD_TYPE:-RelWithDebInfo}
compiler=()
extra_packages=()
if [ -n "${TRIDENT_CXX:-}" ]; then
    compiler=(-DCMAKE_CXX_COMPILER="$TRIDENT_CXX")
    case "$TRIDENT_CXX" in clang++*) extra_packages=(clang) ;; esac
fi
tools/deps.sh "${extra_packages[@]}"

# ccache: a fresh build directory, or a branch switched back to, compiles
# mostly from the cache.
export CCACHE_BASEDIR=${CCACHE_BASEDIR:-$PWD}
cmake -S . -B "$build" -DCMAKE_BUILD_TYPE="$type" -DTRIDENT_WERROR=ON \
    -DCMAKE_CXX_COMPILER_LAUNCHER=ccache "${compiler[@]}"
cmake --build "$build" -j"$(nproc)"
ctest --test-dir "$build" --output-on-failure -j"$(nproc)"
