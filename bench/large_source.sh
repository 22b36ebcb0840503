#!/usr/bin/env bash
# Assembles generated sources of 100,000 and 1,000,000 lines (or the counts
# given) with the batch tool and reports the time, the peak memory and the
# size of the listing, to show that memory grows with the listing and no
# faster.
#   bench/large_source.sh [LINES...]
# Uses the batch tool of ${TRIDENT_BUILD_DIR:-build} (tools/test.sh builds it).
set -euo pipefail
cd "$(dirname "$0")/.."

build=${TRIDENT_BUILD_DIR:-build}
tool="$build/bin/trident-asm"
[ -x "$tool" ] || { echo "build $tool first (tools/test.sh)"; exit 2; }
counts=("$@")
[ ${#counts[@]} -eq 0 ] && counts=(100000 1000000)

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# Blocks of 1,000 lines, each from address 0 again so that the program fits
# in 64 KiB: instructions, data, comments, a redefined symbol, a conditional.
block() {
    echo "        org     0"
    echo "count   set     count+1"
    for ((i = 0; i < 124; i++)); do
        echo "        mvi     a,5             ; load"
        echo "        lxi     h,1234h"
        echo "        db      'AB',1,2"
        echo "; a comment line"
        echo "        if      count and 1"
        echo "        dw      count,\$"
        echo "        endif"
        echo "        mov     a,m"
    done
    echo "        nop"
    echo "        nop"
    echo "        nop"
    echo "        nop"
    echo "        nop"
    echo "        nop"
}
block >"$work/block.asm"
[ "$(wc -l <"$work/block.asm")" -eq 1000 ]

printf '%-10s %10s %10s %12s %14s\n' lines seconds "peak MiB" "listing MiB" "KiB per line"
for lines in "${counts[@]}"; do
    source="$work/src$lines.asm"
    echo "count   set     0" >"$source"
    for ((b = 0; b < lines / 1000; b++)); do cat "$work/block.asm"; done >>"$source"
    /usr/bin/time -f "%e %M" -o "$work/time" "$tool" "$source" --quiet --listing "$work/out.ls" \
        --hex "$work/out.hex" || true
    read -r seconds kib <"$work/time"
    listing=$(stat -c %s "$work/out.ls")
    awk -v l="$lines" -v s="$seconds" -v k="$kib" -v b="$listing" 'BEGIN {
        printf "%-10d %10.1f %10.1f %12.1f %14.3f\n", l, s, k / 1024, b / 1048576, k / l }'
done
