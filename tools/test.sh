#!/usr/bin/env bash
# Builds Trident and runs every test.
set -euo pipefail
cd "$(dirname "$0")/.."

tools/deps.sh
build=${TRIDENT_BUILD_DIR:-build}
cmake -S . -B "$build" -DCMAKE_BUILD_TYPE=RelWithDebInfo -DTRIDENT_WERROR=ON
cmake --build "$build" -j"$(nproc)"
ctest --test-dir "$build" --output-on-failure -j"$(nproc)"
