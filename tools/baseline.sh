#!/usr/bin/env bash
# Records every output of the sample sources under several option sets, so
# that a change meant to keep behaviour can be checked byte for byte:
#   tools/baseline.sh before/   (on the old commit)
#   tools/baseline.sh after/    (on the new one)
#   diff -r before/ after/
# Uses the batch tool of ${TRIDENT_BUILD_DIR:-build}.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
out=$(mkdir -p "$1" && cd "$1" && pwd)
tool="$root/${TRIDENT_BUILD_DIR:-build}/bin/trident-asm"
[ -x "$tool" ] || { echo "build $tool first (tools/test.sh)"; exit 2; }

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cp "$root"/fuzz/corpus/assembly/*.asm "$root"/tests/baseline/* "$work"/
cp "$root"/examples/hello.asm "$work"/example.asm
python3 "$root/bench/generate.py" 3000 "$work/generated.asm" "$work/generated.z80" >/dev/null

option_sets=(
    ""
    "--zilog"
    "--compatible"
    "--case-sensitive --big-endian --loader-style sde"
    "--list-macro-definitions --list-macro-expansions --list-maclibs --list-all-passes"
    "--z180 --no-z80-warnings --strip-parity"
    "--rtf"
)

cd "$work"
for source in *.asm; do
    for index in "${!option_sets[@]}"; do
        name="${source%.asm}.$index"
        # shellcheck disable=SC2086
        set +e
        "$tool" "$source" ${option_sets[$index]} --listing "$out/$name.ls" --hex "$out/$name.hex" \
            --srec "$out/$name.mx" --loader "$out/$name.txt" --bin "$out/$name.bin" \
            --symbols "$out/$name.sym" >"$out/$name.stdout" 2>"$out/$name.stderr"
        echo $? >"$out/$name.status"
        set -e
    done
done
echo "recorded $(ls "$out" | wc -l) files in $out"
