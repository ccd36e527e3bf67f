# fish completion of bfri: bfri itself knows what may come next
function __bfri_complete
    # as the program would get them, but for the tilde, without quotes
    set -l words (commandline -opc | string replace -r '^~/' $HOME/) "$(commandline -ct | string unescape)"
    for line in ($words[1] complete -- $words[2..-1] 2>/dev/null)
        if test "$line" = :files
            __fish_complete_path (commandline -ct)
        else
            echo $line
        end
    end
end
complete -c bfri -f -a '(__bfri_complete)'
