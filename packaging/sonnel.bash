# Completion of the player's options and its song for bash.
_sonnel() {
    local cur prev words cword
    _init_completion || return
    case $prev in
        --key | --tempo) return ;;
        --melody) mapfile -t COMPREPLY < <(compgen -W "normal soft off" -- "$cur"); return ;;
    esac
    if [[ $cur == -* ]]; then
        mapfile -t COMPREPLY < <(compgen -W "--key --tempo --melody --one --help --version" -- "$cur")
        return
    fi
    _filedir '@(lyk|mid|kar|midi|rmi)'
}
complete -F _sonnel sonnel
