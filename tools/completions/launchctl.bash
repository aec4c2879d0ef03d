# Completion of launchctl for bash.
_varnhold_launchctl() {
    local word=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]} domain
    domain=gui/$(id -u)
    local labels=() label
    COMPREPLY=()
    if [ "$COMP_CWORD" -eq 1 ]; then
        mapfile -t COMPREPLY < <(compgen -W "list bootstrap bootout kickstart stop --help --version" -- "$word")
        return
    fi
    while IFS=$'\t' read -r _ _ label; do
        labels+=("$label")
    done < <("${COMP_WORDS[0]}" list 2>/dev/null | tail -n +2)
    case ${COMP_WORDS[1]} in
        list | stop) ;;
        bootout | kickstart)
            labels=("${labels[@]/#/$domain/}")
            [ "${COMP_WORDS[1]}" = kickstart ] && [ "$previous" = kickstart ] && labels+=(-k)
            ;;
        bootstrap)
            if [ "$COMP_CWORD" -eq 2 ]; then
                labels=("$domain")
            else
                compopt -o filenames
                mapfile -t COMPREPLY < <(compgen -d -- "$word"; compgen -f -X '!*.plist' -- "$word")
                return
            fi
            ;;
        *) return ;;
    esac
    # One by one: a label may hold blanks, which have to be quoted.
    for label in "${labels[@]}"; do
        if [ "${label#"$word"}" != "$label" ] || [ -z "$word" ]; then
            COMPREPLY+=("$(printf '%q' "$label")")
        fi
    done
}
complete -F _varnhold_launchctl launchctl varnhold-launchctl
