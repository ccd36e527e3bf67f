# fish completion of bfri: bfri itself knows what may stand where
function __bfri_complete
    set -l words (commandline -opc) (commandline -ct)
    for line in ($words[1] complete -- $words[2..-1] 2>/dev/null)
        if test "$line" = :files
            __fish_complete_path (commandline -ct)
        else
            echo $line
        end
    end
end
complete -c bfri -f -a '(__bfri_complete)'
