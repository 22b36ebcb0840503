# bash completion for trident-asm                          -*- shell-script -*-

_trident_asm_files() {
    # bash-completion's _filedir quotes and marks directories; a bare shell
    # without the package gets compgen's plain list.
    if declare -F _filedir >/dev/null; then
        _filedir "$@"
    elif [[ ${1-} == -d ]]; then
        mapfile -t COMPREPLY < <(compgen -d -- "$cur")
    else
        mapfile -t COMPREPLY < <(compgen -f -- "$cur")
    fi
}

_trident_asm() {
    # words and cword are _init_completion's too.
    # shellcheck disable=SC2034
    local cur prev words cword split=false
    if declare -F _init_completion >/dev/null; then
        _init_completion -s || return
    else
        cur=${COMP_WORDS[COMP_CWORD]}
        prev=${COMP_WORDS[COMP_CWORD - 1]}
    fi

    case $prev in
        --listing | --hex | --srec | --loader | --bin | --symbols | --depfile | --optable)
            _trident_asm_files
            return
            ;;
        --include-dir | --maclib-dir)
            _trident_asm_files -d
            return
            ;;
        --loader-style)
            mapfile -t COMPREPLY < <(compgen -W 'sde ddt' -- "$cur")
            return
            ;;
        -D | --define | --max-lines)
            return
            ;;
        -h | --help | --version)
            return
            ;;
    esac
    $split && return

    if [[ $cur == -* ]]; then
        local options='--help --version --listing --hex --srec --loader --loader-style
            --bin --symbols --depfile --keep-outputs --standard-records --define
            --rtf --big-endian --strip-parity --compatible --dw-text-order
            --list-macro-definitions --list-macro-expansions --list-maclibs
            --case-sensitive --z180 --no-z80-warnings --zilog --list-all-passes
            --include-dir --maclib-dir --optable --max-lines --quiet'
        mapfile -t COMPREPLY < <(compgen -W "$options" -- "$cur")
        return
    fi
    _trident_asm_files
} &&
    complete -F _trident_asm trident-asm
