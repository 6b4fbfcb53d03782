# shellcheck shell=bash
# Completion of kervan-aktar for bash: source this file, or lay it out as
# /usr/share/bash-completion/completions/kervan-aktar. Commands and options are asked of the
# program itself, so that this file never lags behind it.

_kervan_aktar() {
    local program=${COMP_WORDS[0]} word=${COMP_WORDS[COMP_CWORD]}
    local before=${COMP_WORDS[COMP_CWORD - 1]} command=${COMP_WORDS[1]:-}
    COMPREPLY=()
    if ((COMP_CWORD == 1)); then
        mapfile -t COMPREPLY < <(compgen -W "--help --version $("$program" --help 2>/dev/null \
            | sed -n '/^Komutlar:/,/^$/s/^  \([a-z-]*\) .*/\1/p')" -- "$word")
        return
    fi
    local options value=
    options=$("$program" "$command" --help 2>/dev/null | sed -n 's/^  \(--.*\)/\1/p')
    if [[ $before =~ ^--[a-z-]+$ ]]; then
        value=$(sed -n "s/^$before \([^ ]*\) .*/\1/p" <<<"$options")
    fi
    if [[ $word == -* ]]; then
        mapfile -t COMPREPLY < <(compgen -W "--help $(cut -d ' ' -f 1 <<<"$options")" -- "$word")
    elif [[ $before == --* && $value == *"|"* ]]; then
        mapfile -t COMPREPLY < <(compgen -W "${value//|/ }" -- "$word")
    elif [[ $before == --klasor ]]; then
        mapfile -t COMPREPLY < <(compgen -d -- "$word")
    else
        mapfile -t COMPREPLY < <(compgen -f -- "$word")
    fi
}
complete -o filenames -F _kervan_aktar kervan-aktar
