# Completion of anadrome for bash.

_anadrome() {
    local cur prev words cword
    _init_completion || return
    if [[ $cur == -* ]]; then
        COMPREPLY=($(compgen -W "--help --version" -- "$cur"))
        return
    fi
    _filedir
} &&
    complete -F _anadrome anadrome
