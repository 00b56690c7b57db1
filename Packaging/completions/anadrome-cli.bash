# Completion of anadrome-cli for bash.

_anadrome_cli() {
    local cur prev words cword
    _init_completion || return

    case $prev in
        -o | --output) _filedir '@(mov|mp4)'; return ;;
        --file-type) COMPREPLY=($(compgen -W "mov mp4" -- "$cur")); return ;;
        --output-type) COMPREPLY=($(compgen -W "reverse reverse-forward forward-reverse" -- "$cur")); return ;;
        --quality) COMPREPLY=($(compgen -W "low medium high" -- "$cur")); return ;;
        --reverse-speed | --normal-speed) COMPREPLY=($(compgen -W "0.5 1 2" -- "$cur")); return ;;
    esac

    local common="--output --file-type --force --json --quiet --verbose --help"
    local make="--output-type --reverse-speed --normal-speed --quality --keep-metadata"
    case ${words[1]}:$cword in
        *:1) COMPREPLY=($(compgen -W "make reverse --help --version" -- "$cur")); return ;;
        make:*) [[ $cur == -* ]] && COMPREPLY=($(compgen -W "$common $make" -- "$cur")) && return ;;
        reverse:*) [[ $cur == -* ]] && COMPREPLY=($(compgen -W "$common" -- "$cur")) && return ;;
    esac
    _filedir
} &&
    complete -F _anadrome_cli anadrome-cli
