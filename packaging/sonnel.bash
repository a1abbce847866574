# Completion of the player's one argument for bash: a song and the directories on the way to it.
_sonnel() {
    local cur prev words cword
    _init_completion || return
    _filedir '@(lyk|mid)'
}
complete -F _sonnel sonnel
