# bash completion for kiv. Commands and options are read from `kiv --help`
# and operation names from `kiv list`, so they follow the driver installed.
_kiv() {
    local kiv=${COMP_WORDS[0]} cur=${COMP_WORDS[COMP_CWORD]} prev="" help i word command=""
    COMPREPLY=()
    help=$("$kiv" --help 2>/dev/null) || return 0
    local options valued commands
    options=$(sed -n 's/^  \(--[a-z0-9-]*\).*/\1/p' <<<"$help")
    valued=" $(sed -n 's/^  \(--[a-z0-9-]*\) [^ ].*/\1/p' <<<"$help" | tr '\n' ' ') "
    commands=$(sed -n '/^commands:/,/^$/s/^  \([a-z][a-z]*\) .*/\1/p' <<<"$help")

    # --opt=value arrives as "--opt" "=" "value".
    if ((COMP_CWORD >= 2)) && [[ ${COMP_WORDS[COMP_CWORD - 1]} == "=" ]]; then
        prev=${COMP_WORDS[COMP_CWORD - 2]}
    elif ((COMP_CWORD >= 1)) && [[ $cur != "=" ]]; then
        prev=${COMP_WORDS[COMP_CWORD - 1]}
    fi
    [[ $cur == "=" ]] && { prev=${COMP_WORDS[COMP_CWORD - 1]}; cur=""; }

    if [[ $valued == *" $prev "* ]]; then
        case $prev in
            --drive-c | --registry) COMPREPLY=($(compgen -d -- "$cur")) ;;
            --pin) compopt -o nospace 2>/dev/null
                   COMPREPLY=($(compgen -W "app= winver= winbit= pcname= username= ip=" -- "$cur")) ;;
        esac
        return 0
    fi
    if [[ $cur == -* ]]; then
        COMPREPLY=($(compgen -W "$options" -- "$cur"))
        return 0
    fi

    # The command: the first word that is neither an option nor its value.
    for ((i = 1; i < COMP_CWORD; i++)); do
        word=${COMP_WORDS[i]}
        if [[ $valued == *" $word "* ]]; then
            ((i++))
            [[ ${COMP_WORDS[i]} == "=" ]] && ((i++))
        elif [[ $word != -* && $word != "=" ]]; then
            command=$word
            break
        fi
    done
    case $command in
        "") COMPREPLY=($(compgen -W "$commands" -- "$cur")) ;;
        run | check) compopt -o filenames 2>/dev/null; COMPREPLY=($(compgen -f -- "$cur")) ;;
        help | list | eval)  # names are case-blind, as in kiv
            for word in $("$kiv" list 2>/dev/null | sed -n 's/^\([A-Za-z_][A-Za-z0-9_]*\).*/\1/p'); do
                [[ ${word,,} == "${cur,,}"* ]] && COMPREPLY+=("$word")
            done ;;
    esac
    return 0
}
complete -F _kiv kiv
