# shellcheck shell=bash
# Completion of quiver's command line.

# The rows of `quiver list`, of the phone that the command line names so far.
_quiver_apps() {
    local i root=()
    for ((i = 1; i < COMP_CWORD; i++)); do
        [[ ! ${COMP_WORDS[i]} =~ ^--(root|card)$ ]] ||
            root+=("${COMP_WORDS[i]}" "${COMP_WORDS[i + 1]}")
    done
    # What it expands to is not to be expanded once more.
    mapfile -t -O "${#COMPREPLY[@]}" COMPREPLY < <(quiver "${root[@]}" list 2>/dev/null |
        cut -f 4 | while read -r folder; do
            [[ $folder != "$1"* ]] || printf '%q\n' "$folder"
        done)
}

# Files whose names end as $2 says, and folders that may hold some.
_quiver_files() {
    compopt -o filenames 2>/dev/null
    mapfile -t -O "${#COMPREPLY[@]}" COMPREPLY < <(
        compgen -d -- "$1"
        compgen -f -X "!*.$2" -- "$1"
    )
}

_quiver_words() {
    mapfile -t -O "${#COMPREPLY[@]}" COMPREPLY < <(compgen -W "$2" -- "$1")
}

# The command among the words so far; empty where there is none yet.
_quiver_command() {
    local i
    for ((i = 1; i < COMP_CWORD; i++)); do
        case ${COMP_WORDS[i]} in
        --root | --card) ((i++)) ;;
        -*) ;;
        *)
            echo "${COMP_WORDS[i]}"
            return
            ;;
        esac
    done
}

_quiver() {
    local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]} command
    local commands='list info install upgrade remove move rename save menu scan check pack new help'
    local options='--root --card --no-card --json --yes --quiet --verbose'
    command=$(_quiver_command)
    COMPREPLY=()
    case $command:$before in
    *:--root | *:--card) _quiver_files "$word" / && return ;;
    install:--to) _quiver_words "$word" 'phone card ext' && return ;;
    save:--to) _quiver_words "$word" 'phone card' && _quiver_files "$word" / && return ;;
    *:--to | *:--place) _quiver_words "$word" 'phone card' && return ;;
    esac
    case $command in
    list) options+=' --place --menu --long' ;;
    install | move | save) options+=' --to' ;;
    upgrade) options+=' --dry-run' ;;
    check) options+=' --repair' ;;
    new) options+=' --language' ;;
    esac
    if [[ $word == -* ]]; then
        _quiver_words "$word" "$options --help --version"
        return
    fi
    case $command in
    '')
        _quiver_words "$word" "$commands"
        _quiver_files "$word" z[ps]k
        ;;
    install | upgrade) _quiver_files "$word" z[ps]k ;;
    info)
        _quiver_apps "$word"
        _quiver_files "$word" z[ps]k
        ;;
    remove | move | rename | save) _quiver_apps "$word" ;;
    menu)
        if [[ $before == menu ]]; then
            _quiver_words "$word" 'add remove'
        else
            _quiver_apps "$word"
        fi
        ;;
    pack | new) _quiver_files "$word" / ;;
    help) _quiver_words "$word" "$commands" ;;
    esac
}

complete -F _quiver quiver
