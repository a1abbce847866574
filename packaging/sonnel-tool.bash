# Completion of sonnel-tool for bash.
_sonnel_tool() {
    local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]}
    local commands="show header set-header index convert add midi check trace"
    local options="--json --help --version" command="" files="" i
    for ((i = 1; i < COMP_CWORD; i++)); do
        if [[ " $commands " == *" ${COMP_WORDS[i]} "* ]]; then
            command=${COMP_WORDS[i]}
            break
        fi
    done
    case $command in
        "") mapfile -t COMPREPLY < <(compgen -W "$commands $options" -- "$word"); return ;;
        set-header) options+=" --title --author --album" files=lyk ;;
        index) options+=" --rebuild" files=/ ;;
        convert) options+=" --output --force --exact" files="kar|midi?|rmi" ;;
        add) files="lyk|kar|midi?|rmi" ;;
        midi) files="midi?|kar|rmi" ;;
        check) files="lyk|mid|kar" ;;
        trace) options+=" --report-ms --compensation" files="lyk|mid" ;;
        *) files=lyk ;;
    esac
    case $before in
        --output) files=/ ;;
        --title | --author | --album | --report-ms | --compensation) return ;;
    esac
    if [[ $word == -* ]]; then
        mapfile -t COMPREPLY < <(compgen -W "$options" -- "$word")
        return
    fi
    compopt -o filenames 2>/dev/null
    mapfile -t COMPREPLY < <(compgen -d -- "$word")
    [ "$files" = / ] && return
    local file
    while read -r file; do
        [[ ${file,,} =~ \.($files)$ && ! -d $file ]] && COMPREPLY+=("$file")
    done < <(compgen -f -- "$word")
}
complete -F _sonnel_tool sonnel-tool
