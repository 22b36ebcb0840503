#!/usr/bin/env bash
# Times trident-asm against pasmo and GNU as + ld + objcopy on one generated
# program and prints a table. usage: bench/run.sh [LINES] [RUNS]
set -euo pipefail
cd "$(dirname "$0")/.."

lines=${1:-60000}
runs=${2:-5}

tools/deps.sh
missing=()
for package in pasmo binutils-z80 time; do
    dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q "install ok installed" ||
        missing+=("$package")
done
if [ ${#missing[@]} -gt 0 ]; then
    sudo=""
    [ "$(id -u)" -ne 0 ] && sudo="sudo"
    $sudo apt-get update -qq
    DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -qq "${missing[@]}"
fi

build=${TRIDENT_BENCH_BUILD_DIR:-build-bench}
cmake -S . -B "$build" -DCMAKE_BUILD_TYPE=Release -DTRIDENT_BUILD_TESTS=OFF >/dev/null
cmake --build "$build" -j"$(nproc)" --target trident-asm >/dev/null
exec python3 bench/compare.py "$build/bin/trident-asm" "$lines" "$runs"
