# shellcheck shell=bash
# The part of the tour on the phone's home screen, which is another program than Quiver. It is
# driven by keys from outside, and tells what it shows in its log.
#
# scripts/tour has set: repository, build, work (the folder of the pictures), links (a folder for
# what is of no use afterwards); and it has `fail`.
: "${repository:?}" "${build:?}" "${work:?}" "${links:?}"

home_log=$work/home.log
seen=0 # lines of the log that have been looked at

# eventually WHAT COMMAND...: the command succeeds within half a minute.
eventually() {
    wait_for 30 "${@:2}" || fail 1 "not in time: $1"
}

start_home_screen() {
    exec {hold}> >(exec "$repository/demo/keeper" "$build/demo/bin" \
        >"$home_log" 2>"$work/home-errors.log")
    keeper=$!
}

stop_home_screen() {
    [[ -n ${hold-} ]] || return 0
    exec {hold}>&-
    hold=
    wait "$keeper" || true
    # Of other phones on this machine where the tour is not alone.
    [[ ${QUIVER_TOUR-} != alone ]] || ! busybox pidof am flawplayer messaging ||
        fail 1 'the home screen goes on without its keeper'
}

# Whether the home screen has shown the folder $1 with the entries $2..., and nothing else, since it
# was last looked at.
shows() {
    local folder=$1
    shift
    [[ $(tail -n "+$((seen + 1))" "$home_log") == "$(printf "am: $folder > %s\n" "$@")" ]]
}

# Whether two pictures of the window $1 are alike and not blank; the second one goes to the file $2.
rests() {
    import -window "$1" "$links/before.png"
    sleep 0.2
    import -window "$1" "$2"
    compare -metric AE "$links/before.png" "$2" null: 2>/dev/null &&
        (($(identify -format %k "$2") >= 16))
}

# take NAME WHAT-IS-DONE WINDOW: the next picture
take() {
    local number name
    number=$(find "$work" -maxdepth 1 -name '*.png' | wc -l)
    name=$(printf '%02d-%s' $((number + 1)) "$1")
    eventually "$name comes to rest" rests "$3" "$work/$name.png"
    printf '%s: %s\n' "$name" "$2"
}

phone_window() { xdotool search --onlyvisible --name '^Phone$'; }

# home NAME WHAT-IS-DONE FOLDER ENTRY... [-- KEY...]: presses the keys, then the home screen has to
# show the folder with just these entries.
home() {
    local name=$1 does=$2 folder=$3 entries=()
    shift 3
    while [[ $# -gt 0 && $1 != -- ]]; do
        entries+=("$1")
        shift
    done
    shift $(($# > 0))
    eventually 'the window of the home screen' phone_window >/dev/null
    if [[ $# -gt 0 ]]; then
        xdotool windowfocus --sync "$(phone_window)" key --delay 100 "$@"
    fi
    eventually "$folder: ${entries[*]}" shows "$folder" "${entries[@]}"
    seen=$(wc -l <"$home_log")
    take "$name" "$does → $folder: ${entries[*]}" "$(phone_window)"
}

main_menu() { home "$1" "$2" 'Main Menu' Messages Contacts Multimedia Tools Quiver Settings; }

# Opens Quiver's folder from the main menu: home_folder NAME ENTRY...
home_folder() {
    local name=$1
    shift
    home "$name" "opens Quiver's folder" Quiver "$@" -- Down Down Down Down Return
}

# The window of the program $1 of the phone, which runs from there and not from elsewhere.
program_window() {
    local process
    process=$(busybox pidof "${1##*/}") || return 1
    [[ /proc/$process/exe -ef $1 ]] || return 1
    xdotool search --onlyvisible --pid "$process"
}

# From the phone's menu, where the highlight is on the first entry: start_second PROGRAM
start_second() {
    local window
    xdotool windowfocus --sync "$(phone_window)" key --delay 100 Down Return
    eventually "$1 runs and has a window" program_window "$1" >"$links/window"
    window=$(tail -n 1 "$links/window")
    take started 'starts the second entry' "$window"
    xdotool windowfocus --sync "$window" key F2
    eventually "$1 ends" lacks "${1##*/}"
}

lacks() { ! busybox pidof "$1" >/dev/null; }
