# shellcheck shell=bash
# Completion in bash: the commands and options that the program's help lists, files otherwise.

_se_host() {
    local help word command=()
    help=$("$1" --help 2>/dev/null) || return
    for word in "${COMP_WORDS[@]:1:COMP_CWORD-1}"; do
        _se_host_commands | grep -qxF -e "$word" || break
        command+=("$word")
        help=$("$1" "${command[@]}" --help 2>/dev/null) || return
    done
    case $2 in
    -*) word=$(sed -nE 's/^  (-.,)?(--[a-z0-9-]+).*/\2/p' <<<"$help") ;;
    *) word=$(_se_host_commands) ;;
    esac
    mapfile -t COMPREPLY < <(compgen -W "$word" -- "$2")
}

_se_host_commands() { sed -nE '/^Subcommands:/,/^$/s/^  ([a-z-]+) .*/\1/p' <<<"$help"; }

complete -o default -F _se_host se_host
