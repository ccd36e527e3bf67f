# bash completion of bfri: bfri itself knows what may come next

# Sets _bfri_word to the word as the program would get it: without quotes, and with the home folder for a tilde.
# shellcheck disable=SC1003,SC2088 # backslashes and tildes as they are
_bfri_unquote() {
    local rest=$1 quote='' c
    _bfri_word=''
    if [[ $rest == '~' || $rest == '~/'* ]]; then
        _bfri_word=$HOME rest=${rest:1}
    fi
    while [[ $rest ]]; do
        c=${rest:0:1} rest=${rest:1}
        if [[ $quote ]]; then
            if [[ $c == "$quote" ]]; then
                quote='' c=''
            elif [[ $quote == '"' && $c == '\' && $rest == [\"\\\$\`]* ]]; then
                c=${rest:0:1} rest=${rest:1}
            fi
        elif [[ $c == [\'\"] ]]; then
            quote=$c c=''
        elif [[ $c == '\' ]]; then
            c=${rest:0:1} rest=${rest:1}
        fi
        _bfri_word+=$c
    done
}

_bfri() {
    local line word _bfri_word last='' front='' ends=0
    local -a words=()
    COMPREPLY=()
    for word in "${COMP_WORDS[@]:0:COMP_CWORD+1}"; do
        _bfri_unquote "$word"
        if [[ $word == '=' && $last == --?* ]]; then # bash takes --sort=name apart
            front=$last= words[-1]=$last=
        elif [[ $front && $last == "$front" ]]; then
            words[-1]+=$_bfri_word
        else
            front='' words+=("$_bfri_word")
        fi
        last=${words[-1]}
    done
    while IFS= read -r line; do
        [[ $line == "$last"* || $line == :files ]] || ends=$((ends + 1)) # the word is a component of the name
        line=${line#"$front"}
        if [[ $line == :files ]]; then
            compopt -o filenames 2>/dev/null
            mapfile -t COMPREPLY < <(compgen -f -- "$last")
            [[ $word != '~'* ]] || COMPREPLY=("${COMPREPLY[@]/#"$HOME"/'~'}")
        elif [[ $word == [\'\"]* ]]; then
            COMPREPLY+=("$line") # bash closes the quotes
        else
            printf -v line %q "$line"
            COMPREPLY+=("${line//'\,'/,}") # a comma reads better without the backslash
        fi
    done < <("${words[0]}" complete -- "${words[@]:1}" 2>/dev/null)
    ((ends < 2)) || COMPREPLY+=(' ') # makes bash list them, instead of replacing the word by their common front
}
complete -F _bfri bfri
