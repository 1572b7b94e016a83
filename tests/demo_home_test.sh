#!/bin/bash
# Runs the demo phone's home screen: what it shows, what it starts, and that its keeper keeps it.
# demo_home_test.sh BUILD-FOLDER
set -euo pipefail
export LC_ALL=C.UTF-8 QUIVER_BUILD=$1
bin=$1/demo/bin

# The restart of the menu finds processes by their names, so the test gets a process table of its own.
repository=$(dirname "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")")
if [[ ${2-} != inside ]]; then
    exec "$repository/scripts/alone" "$0" "$1" inside
fi

unset DISPLAY WAYLAND_DISPLAY QUIVER_SCALE QT_SCALE_FACTOR
keeper=$repository/demo/keeper
programs=(am flawplayer messaging)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work"
export XDG_RUNTIME_DIR=$work
failures=0

complain() {
    printf 'FAILED: %s\n' "$*"
    failures=$((failures + 1))
}

# eventually SECONDS WHAT COMMAND...: the command succeeds within that time.
eventually() {
    local end=$((SECONDS + $1)) what=$2
    shift 2
    until "$@"; do
        if ((SECONDS > end)); then
            complain "not in time: $what"
            return
        fi
        sleep 0.1
    done
}

one_of_each() {
    local name
    for name in "${programs[@]}"; do
        [[ $(busybox pidof "$name") =~ ^[0-9]+$ ]] || return 1
    done
}

none_left() { ! busybox pidof "${programs[@]}" keeper >none; }

ids() { busybox pidof "${programs[@]}" | tr ' ' '\n' | sort; }

# All three run, and none of them has an id that is in the file `before`.
all_new() { one_of_each && [[ -z $(ids | comm -12 - before) ]]; }

shows() { [[ $(<log) == "$1" ]]; }

says() { [[ $(tail -n 1 log) == "am: $1" ]]; }

# start_keeper BIN-FOLDER [PREFIX...]: its standard input is open as long as `hold` is.
start_keeper() {
    local folder=$1
    shift
    : >log
    exec {hold}> >(exec "$@" "$keeper" "$folder" >log 2>error)
    keeper_id=$!
}

let_go() { exec {hold}>&-; }

main_menu='am: Main Menu > Messages
am: Main Menu > Contacts
am: Main Menu > Multimedia
am: Main Menu > Tools
am: Main Menu > Quiver
am: Main Menu > Settings'

# Puts an application at the front of the main menu, and an item that nothing is known of.
register_by_hand() {
    local am=$QUIVER_ROOT/ezxlocal/download/appwrite/am new=0badcafe-0000-4000-8000-00000000000a
    printf '\n[%s]\nName = Заметки\nExec = nothing\n' $new >>"$am/InstalledDB"
    sed -i "0,/^Items = /s//&0badcafe-0000-4000-8000-00000000000b;$new;/" "$am/UserMenuTree"
}

check_restart() {
    start_keeper "$bin"
    eventually 30 'the first start' one_of_each
    eventually 30 'the main menu' shows "$main_menu"
    ids >before

    register_by_hand
    sleep 2
    shows "$main_menu" || complain "the menu changed without a restart: $(<log)"
    [[ $(ids) == "$(<before)" ]] || complain 'a process did not last'

    busybox killall "${programs[@]}"
    eventually 10 'all three again' all_new
    eventually 30 'the new entry' shows "$main_menu
am: Main Menu > Заметки
$main_menu"

    let_go
    eventually 10 'the end with the standard input' none_left
    [[ ! -s error ]] || complain "the keeper said: $(<error)"
}

# A process that is stopped has to be forced to its end.
check_signal() {
    start_keeper "$bin" env --default-signal=TERM
    eventually 30 'the start' one_of_each
    kill -s STOP "$(busybox pidof am)"
    kill -s TERM "$keeper_id"
    eventually 15 'the end with a signal' none_left
    let_go
}

press() { DISPLAY=:$display xdotool key --delay 100 "$@"; }

# There is no window manager to give it the keyboard, and it does not take it.
focus_home() { DISPLAY=:$display xdotool search --onlyvisible --name '^Phone$' windowfocus --sync; }

runs() { [[ $(readlink "/proc/$(busybox pidof "${1##*/}")/exe") == "$QUIVER_ROOT/$1" ]]; }

# On a visible screen, by the keys.
check_screen() {
    local display clock=ezxlocal/download/apps/Clock/worldclock
    Xvfb -displayfd 3 -screen 0 240x320x24 -nolisten tcp 3>display 2>/dev/null &
    eventually 30 'the X server' test -s display
    display=$(<display)
    DISPLAY=:$display "$bin/am" >log &
    eventually 30 'the main menu' says 'Main Menu > Settings'
    eventually 30 'the window' focus_home
    press Return
    eventually 10 'the notice' says 'Messages cannot be started'
    press Escape Down Down Down Down Return
    eventually 10 'the folder' says 'Quiver > Sudoku'
    press F2
    eventually 10 'the way back' says 'Main Menu > Settings'
    press F2 Up F1 # there is no way further back, and the highlight is where it was
    eventually 10 'another folder' says 'Tools > Clock'
    press Return
    eventually 20 'the program' runs $clock
}

new_phone() {
    rm -rf root
    "$repository/scripts/phone" new root
}

new_phone
export QUIVER_ROOT=$work/root
export QUIVER_HEADLESS=1
QT_QPA_PLATFORM=offscreen check_restart
QT_QPA_PLATFORM=offscreen check_signal
new_phone
check_screen
[[ $failures == 0 ]]
