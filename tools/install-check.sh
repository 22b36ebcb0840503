#!/usr/bin/env bash
# Installs the build into a scratch prefix and checks what a user gets there:
# the batch tool assembles the example from another directory with the
# installed opcode table, the manual pages render without a warning and name
# every option, the bash completion completes, the window starts; then the
# Debian package is made and its contents listed.
#   tools/install-check.sh [--quick]
# --quick leaves out the window and the package (the ctest test runs it so).
# Uses the build of ${TRIDENT_BUILD_DIR:-build}, which tools/test.sh makes.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
build=$(cd "$root" && realpath "${TRIDENT_BUILD_DIR:-build}")
quick=false
[ "${1:-}" = --quick ] && quick=true
$quick || "$root/tools/deps.sh" dpkg-dev man-db

scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
prefix=$scratch/prefix
work=$scratch/work
mkdir -p "$work"
failures=0
fail() {
    echo "install-check: $*" >&2
    failures=$((failures + 1))
}

cmake --install "$build" --prefix "$prefix" >/dev/null
window=false
[ -x "$build/bin/trident" ] && window=true

# The layout: programs alone in bin/, data, pages and the rest under share/.
expected=(bin/trident-asm share/trident/OpTable.def share/man/man1/trident-asm.1
    share/bash-completion/completions/trident-asm share/doc/trident/LICENSE)
$window && expected+=(bin/trident share/man/man1/trident.1 share/applications/trident.desktop
    share/icons/hicolor/scalable/apps/trident.svg)
for file in "${expected[@]}"; do
    [ -f "$prefix/$file" ] || fail "$file is not installed"
done
for file in "$prefix"/bin/*; do
    [ -x "$file" ] || fail "bin/ holds ${file##*/}, which is no program"
done

# The example, from a directory that is neither the source's nor the
# program's, gives the HEX the build tree's tool gives.
tool=$prefix/bin/trident-asm
example=$root/examples/hello.asm
(cd "$work" && "$tool" "$example" --quiet --hex installed.hex --listing hello.ls) ||
    fail "the installed trident-asm failed on examples/hello.asm"
(cd "$work" && "$build/bin/trident-asm" "$example" --quiet --hex built.hex) >/dev/null
if [ "$(head -c1 "$work/installed.hex" 2>/dev/null)" != : ]; then
    fail "the installed trident-asm wrote no Intel HEX"
fi
cmp -s "$work/installed.hex" "$work/built.hex" ||
    fail "the installed trident-asm's HEX differs from the build tree's"
# It took the installed table: without it the run cannot start.
mv "$prefix/share/trident/OpTable.def" "$scratch/OpTable.def"
status=0
(cd "$work" && "$tool" "$example" --quiet --hex none.hex) >/dev/null 2>&1 || status=$?
[ "$status" = 2 ] || fail "trident-asm ran without share/trident/OpTable.def (status $status)"
mv "$scratch/OpTable.def" "$prefix/share/trident/OpTable.def"

# The options the tool knows, as its help lists them.
mapfile -t options < <("$tool" --help | grep -oE -- '--[a-z0-9-]+' | sort -u)
[ ${#options[@]} -gt 10 ] || fail "trident-asm --help lists only ${#options[@]} options"

# Manual pages: no warning from the formatter, the version filled in, and
# every option of the tool described.
if command -v man >/dev/null; then
    for page in "$prefix"/share/man/man1/*.1; do
        warnings=$(MANWIDTH=80 man --warnings -l "$page" 2>&1 >/dev/null) ||
            fail "man cannot format ${page##*/}"
        [ -z "$warnings" ] || fail "${page##*/}: $warnings"
        grep -q '@' "$page" && fail "${page##*/} has a @VARIABLE@ left"
    done
    text=$(MANWIDTH=200 man -l "$prefix/share/man/man1/trident-asm.1" 2>/dev/null | col -b)
    for option in "${options[@]}"; do
        grep -qE -- "(^|[^a-z0-9-])$option([^a-z0-9-]|\$)" <<<"$text" ||
            fail "trident-asm.1 does not describe $option"
    done
else
    echo "install-check: no man here, the pages are not formatted"
fi

# The completion, typed as a user would, with and without bash-completion's
# helpers. Each case: the words before the cursor, the word being completed,
# and the candidates expected.
mkdir -p "$work/sub"
completion_cases=(
    "--loader-style|s|sde"
    "--loader-style||ddt sde"
    "|--loader-s|--loader-style"
    "|--list-macr|--list-macro-definitions --list-macro-expansions"
    "--hex|insta|installed.hex"
    "--include-dir|s|sub"
    "|hello|hello.ls"
    "|--|${options[*]}"
)
complete_in() { # helpers(yes|no) before word -> the candidates, sorted, on one line
    (
        cd "$work"
        if [ "$1" = yes ]; then
            # shellcheck disable=SC1091
            source /usr/share/bash-completion/bash_completion
        fi
        # shellcheck disable=SC1091
        source "$prefix/share/bash-completion/completions/trident-asm"
        read -ra before <<<"$2"
        COMP_WORDS=(trident-asm "${before[@]}" "$3")
        COMP_CWORD=$((${#COMP_WORDS[@]} - 1))
        COMP_LINE="${COMP_WORDS[*]}"
        COMP_POINT=${#COMP_LINE}
        COMPREPLY=()
        _trident_asm 2>/dev/null
        printf '%s\n' "${COMPREPLY[@]}" | sed 's|/$||' | sort -u | paste -sd ' '
    )
}
helpers=(no)
[ -f /usr/share/bash-completion/bash_completion ] && helpers+=(yes)
for with in "${helpers[@]}"; do
    for case in "${completion_cases[@]}"; do
        IFS='|' read -r before word want <<<"$case"
        want=$(tr ' ' '\n' <<<"$want" | sort -u | paste -sd ' ')
        got=$(complete_in "$with" "$before" "$word")
        [ "$got" = "$want" ] ||
            fail "completing '$before $word' (bash-completion: $with) gave '$got', not '$want'"
    done
done

if ! $quick && $window; then
    command -v desktop-file-validate >/dev/null &&
        { desktop-file-validate "$prefix/share/applications/trident.desktop" || fail "trident.desktop"; }
    # The installed window assembles the example and pictures itself; had it
    # no opcode table, its message box would hold it until the time-out.
    QT_QPA_PLATFORM=offscreen XDG_RUNTIME_DIR=$scratch XDG_CONFIG_HOME=$scratch/config \
        timeout 60 "$prefix/bin/trident" "$example" --screenshot "$work/window.png" 2>/dev/null ||
        fail "the installed window failed"
    [ -s "$work/window.png" ] || fail "the installed window made no picture"
fi

if ! $quick; then
    (cd "$build" && cpack -G DEB -B "$scratch/deb") >/dev/null
    deb=$(ls "$scratch"/deb/*.deb)
    echo "${deb##*/}: Depends: $(dpkg-deb -f "$deb" Depends)"
    dpkg-deb -c "$deb"
    listing=$(dpkg-deb -c "$deb" | awk '{print $6}')
    for file in "${expected[@]}"; do
        grep -qx "./usr/$file" <<<"$listing" || fail "the package lacks /usr/$file"
    done
    if $window; then
        dpkg-deb -f "$deb" Depends | grep -q libqt6widgets6 || fail "the package does not depend on Qt 6"
    fi
    # The package's own tree assembles the example as the build tree does.
    dpkg-deb -x "$deb" "$scratch/unpacked"
    (cd "$work" && "$scratch/unpacked/usr/bin/trident-asm" "$example" --quiet --hex packaged.hex) ||
        fail "the packaged trident-asm failed on examples/hello.asm"
    cmp -s "$work/packaged.hex" "$work/built.hex" ||
        fail "the packaged trident-asm's HEX differs from the build tree's"
fi

if [ "$failures" -gt 0 ]; then
    echo "install-check: $failures failures"
    exit 1
fi
echo "install-check: the installed tree works"
