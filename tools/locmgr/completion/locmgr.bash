# Bash completion of locmgr: its commands, each command's options, the values of options that
# have a fixed set, and directories or files where an option or operand names one.
# The option lists follow each command's --help; tests/tools compares the two.

_locmgr_commands="get stream culture batch parse check coverage explain pseudo export import init merge keys unused help"

# The options of command $1.
_locmgr_options() {
    case $1 in
        get) echo "--root --alt --scope --culture --param --no-resolver --module --help" ;;
        stream) echo "--root --alt --scope --culture --module --help" ;;
        culture) echo "--module --help" ;;
        batch) echo "--root --alt --max-localizers --module --help" ;;
        parse) echo "--help" ;;
        check) echo "--root --alt --culture --reference --format --strict --baseline --write-baseline --help" ;;
        coverage) echo "--root --alt --reference --format --help" ;;
        explain) echo "--root --alt --scope --culture --format --help" ;;
        pseudo) echo "--root --out --culture --style --format --help" ;;
        export) echo "--root --alt --culture --reference --scope --out --format --help" ;;
        import) echo "--root --alt --culture --reference --in --help" ;;
        init) echo "--root --alt --culture --reference --help" ;;
        keys) echo "--root --alt --scope --reference --namespace --header --help" ;;
        unused) echo "--root --alt --reference --source --help" ;;
        merge) echo "--root --alt --culture --reference --scope --prune --reviewed --help" ;;
    esac
}

_locmgr() {
    local current=${COMP_WORDS[COMP_CWORD]}
    local previous=
    ((COMP_CWORD > 0)) && previous=${COMP_WORDS[COMP_CWORD - 1]}
    # Bash splits "--format=js" into "--format" "=" "js", and "--format=" into "--format" "=".
    if [[ $current == "=" ]]; then
        current=
    elif [[ $previous == "=" ]] && ((COMP_CWORD > 1)); then
        previous=${COMP_WORDS[COMP_CWORD - 2]}
    fi
    COMPREPLY=()

    if ((COMP_CWORD == 1)); then
        COMPREPLY=($(compgen -W "$_locmgr_commands --help --version" -- "$current"))
        return
    fi
    local command=${COMP_WORDS[1]}
    if [[ $command == help ]]; then
        ((COMP_CWORD == 2)) && COMPREPLY=($(compgen -W "${_locmgr_commands% help}" -- "$current"))
        return
    fi

    case $previous in
        --root | --alt | --out | --source)
            COMPREPLY=($(compgen -d -- "$current"))
            return
            ;;
        --module | --baseline | --write-baseline | --in | --header)
            COMPREPLY=($(compgen -f -- "$current"))
            return
            ;;
        --format)
            if [[ $command == check ]]; then
                COMPREPLY=($(compgen -W "text json sarif" -- "$current"))
            elif [[ $command == export ]]; then
                COMPREPLY=($(compgen -W "po xliff" -- "$current"))
            else
                COMPREPLY=($(compgen -W "text json" -- "$current"))
            fi
            return
            ;;
        --style)
            COMPREPLY=($(compgen -W "accents long rtl" -- "$current"))
            return
            ;;
        --scope | --culture | --param | --max-localizers | --reference)
            return
            ;;
    esac

    if [[ $current == -* ]]; then
        COMPREPLY=($(compgen -W "$(_locmgr_options "$command")" -- "$current"))
    elif [[ $command == parse ]]; then
        COMPREPLY=($(compgen -f -- "$current"))
    fi
}

complete -F _locmgr locmgr
