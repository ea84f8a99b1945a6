# Completion of quorl for bash.
_quorl() {
    local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]}
    case $before in
    --at | --find | --find-hex | --send) return ;;
    --to)
        mapfile -t COMPREPLY < <(compgen -W "$(quorl --list 2>/dev/null | cut -f1)" -- "$word")
        return
        ;;
    esac
    if [[ $word == --* ]]; then
        mapfile -t COMPREPLY < <(compgen -W "--text --hex --raw --at --find --find-hex --service --send --to --list --help
            --version" -- "$word")
    else
        compopt -o filenames
        mapfile -t COMPREPLY < <(compgen -f -- "$word")
    fi
}
complete -F _quorl quorl
