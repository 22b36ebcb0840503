#!/usr/bin/env bash
# Builds the libFuzzer targets with clang in build-fuzz/ and runs each for a
# bounded time, as many at once as there are processors.
#   tools/fuzz.sh [SECONDS] [TARGET...]
# SECONDS per target (default 60); every target of fuzz/ when none is named.
# New inputs are kept in build-fuzz/corpus/NAME, each run's output in
# build-fuzz/NAME.log, and crashes, hangs and leaks in build-fuzz/artifacts/.
# Exit status 1 when any target found one.
set -euo pipefail
cd "$(dirname "$0")/.."

seconds=${1:-60}
shift || true
targets=("$@")
if [ ${#targets[@]} -eq 0 ]; then
    targets=(fuzz_line_scanner fuzz_expression fuzz_opcode_table fuzz_assembly)
fi

# clang and its runtime libraries (libFuzzer and the sanitizers).
tools/deps.sh clang libclang-rt-14-dev

build=$(realpath -m "${TRIDENT_FUZZ_BUILD_DIR:-build-fuzz}")
# One run at a time per build directory: the logs and corpora are shared.
mkdir -p "$build"
exec 9>"$build/.lock"
flock 9
cmake -S . -B "$build" -DCMAKE_BUILD_TYPE=RelWithDebInfo -DCMAKE_CXX_COMPILER=clang++ \
    -DTRIDENT_FUZZ=ON -DTRIDENT_WERROR=ON -DTRIDENT_BUILD_TESTS=OFF -DTRIDENT_BUILD_BENCH=OFF >/dev/null
cmake --build "$build" --target fuzz_all -j"$(nproc)"

# Runs one target and leaves its exit status in build-fuzz/NAME.status.
fuzz_one() {
    local target=$1 name=${1#fuzz_}
    local corpus="$build/corpus/$name" status=0
    mkdir -p "$corpus"
    local options=(-max_total_time="$seconds" -timeout=10 -rss_limit_mb=1024
        -artifact_prefix="$build/artifacts/$name-" -print_final_stats=1)
    [ -f "fuzz/$name.dict" ] && options+=(-dict="$PWD/fuzz/$name.dict")
    # The first directory receives the new inputs; the seeds are only read.
    "$build/bin/$target" "${options[@]}" "$corpus" "$PWD/fuzz/corpus/$name" \
        >"$build/$name.log" 2>&1 || status=$?
    echo "$status" >"$build/$name.status"
}

mkdir -p "$build/artifacts"
echo "Fuzzing ${targets[*]} for $seconds s each, $(nproc) at a time"
for target in "${targets[@]}"; do
    while [ "$(jobs -pr | wc -l)" -ge "$(nproc)" ]; do wait -n || true; done
    rm -f "$build/${target#fuzz_}.status"
    fuzz_one "$target" &
done
wait

failed=()
for target in "${targets[@]}"; do
    name=${target#fuzz_}
    if [ "$(cat "$build/$name.status" 2>/dev/null)" = 0 ]; then
        echo "$target: $(awk '/^stat::number_of_executed_units/ {print $2}' "$build/$name.log") runs, no failure"
    else
        failed+=("$target")
        echo "$target: FAILED"
        grep -E -A12 '^==[0-9]+==|runtime error|ERROR: libFuzzer' "$build/$name.log" | head -n 40 || true
        grep -E 'Test unit written to' "$build/$name.log" || true
    fi
done

if [ ${#failed[@]} -gt 0 ]; then
    echo "Fuzzing found failures in: ${failed[*]} (inputs in $build/artifacts/)"
    exit 1
fi
echo "Fuzzing: no crash, hang or leak in ${#targets[@]} targets"
