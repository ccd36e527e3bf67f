# bash completion of bfri: bfri itself knows what may stand where
_bfri() {
    local line
    COMPREPLY=()
    while IFS= read -r line; do
        if [[ $line == :files ]]; then
            compopt -o filenames 2>/dev/null
            mapfile -t COMPREPLY < <(compgen -f -- "${COMP_WORDS[COMP_CWORD]}")
        else
            COMPREPLY+=("$(printf %q "$line")")
        fi
    done < <("${COMP_WORDS[0]}" complete -- "${COMP_WORDS[@]:1:COMP_CWORD}" 2>/dev/null)
}
complete -F _bfri bfri
