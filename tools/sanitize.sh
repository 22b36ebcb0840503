#!/usr/bin/env bash
# Builds Trident with AddressSanitizer and UndefinedBehaviorSanitizer in
# build-asan/ and runs every test there; any finding fails the test that
# met it. Arguments go to ctest (for example -LE gui to leave out the
# window's tests).
set -euo pipefail
cd "$(dirname "$0")/.."

tools/deps.sh
build=${TRIDENT_ASAN_BUILD_DIR:-build-asan}
# -O1 with line tables: half the build time of -O2 -g, readable reports, and
# assert() left on.
cmake -S . -B "$build" -DCMAKE_BUILD_TYPE=RelWithDebInfo -DTRIDENT_SANITIZE=ON -DTRIDENT_WERROR=ON \
    -DTRIDENT_BUILD_BENCH=OFF "-DCMAKE_CXX_FLAGS_RELWITHDEBINFO=-O1 -g1"
cmake --build "$build" -j"$(nproc)"
export ASAN_OPTIONS=${ASAN_OPTIONS:-detect_leaks=1}
export UBSAN_OPTIONS=${UBSAN_OPTIONS:-print_stacktrace=1}
ctest --test-dir "$build" --output-on-failure -j"$(nproc)" "$@"
