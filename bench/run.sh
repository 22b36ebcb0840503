#!/usr/bin/env bash
# Times trident-asm against pasmo and GNU as + ld + objcopy on one generated
# program and prints a table. usage: bench/run.sh [LINES] [RUNS]
set -euo pipefail
cd "$(dirname "$0")/.."

lines=${1:-60000}
runs=${2:-5}

tools/deps.sh pasmo binutils-z80 time

build=${TRIDENT_BENCH_BUILD_DIR:-build-bench}
cmake -S . -B "$build" -DCMAKE_BUILD_TYPE=Release -DTRIDENT_BUILD_TESTS=OFF >/dev/null
cmake --build "$build" -j"$(nproc)" --target trident-asm >/dev/null
exec python3 bench/compare.py "$build/bin/trident-asm" "$lines" "$runs"
