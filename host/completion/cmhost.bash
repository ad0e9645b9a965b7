# bash completion for cmhost

# Options of the command $2, as the program $1 itself lists them: they cannot drift apart.
_cmhost_options() {
    "$1" "$2" --help 2>/dev/null | sed -nE 's/^  (-[a-z],)?(--[a-z0-9-]+).*/\2/p'
}

_cmhost() {
    local current previous command
    current=${COMP_WORDS[COMP_CWORD]}
    previous=${COMP_WORDS[COMP_CWORD - 1]}
    command=${COMP_WORDS[1]}
    COMPREPLY=()

    if ((COMP_CWORD == 1)); then
        mapfile -t COMPREPLY < <(compgen -W 'modes call run asn1 describe view sign verify store --help --version' -- "$current")
        return
    fi
    case $previous in
        --language | --lang)
            mapfile -t COMPREPLY < <(compgen -W 'ru en' -- "$current")
            return
            ;;
        --page)
            mapfile -t COMPREPLY < <(compgen -W 'general details path asn1 entries' -- "$current")
            return
            ;;
        --client | --set | --path | --threads | --timeout | --width)
            return
            ;;
        --file | --json | --module | --config | --pki-config | --output | -o | --raw | --rebuild)
            compopt -o filenames
            mapfile -t COMPREPLY < <(compgen -f -- "$current")
            return
            ;;
    esac
    if [[ $current == -* ]]; then
        mapfile -t COMPREPLY < <(compgen -W "$(_cmhost_options "${COMP_WORDS[0]}" "$command")" \
            -- "$current")
    elif [[ $command == call ]]; then
        mapfile -t COMPREPLY < <(compgen -W "$("${COMP_WORDS[0]}" modes --names 2>/dev/null)" \
            -- "$current")
    elif [[ $command == run || $command == asn1 || $command == describe ||
        $command == view ]]; then
        compopt -o filenames
        mapfile -t COMPREPLY < <(compgen -f -- "$current")
    fi
}

complete -F _cmhost cmhost
