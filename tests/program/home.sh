#!/bin/bash
# Runs the demo phone's home screen: what it shows, what it starts, and that its keeper keeps it.
# home.sh BUILD-FOLDER
# The restart of the menu finds processes by their names, so the test has a process table of its
# own.
if [[ ${3-} != inside ]]; then
    exec "$(dirname "$(readlink -f "$0")")/../../scripts/alone" "$(readlink -f "$0")" "$1" "" inside
fi
source "$(dirname "$(readlink -f "$0")")/lib.sh"
programs=(am flawplayer messaging)
main_menu=$(printf 'am: Main Menu > %s\n' Messages Contacts Multimedia Tools Quiver Settings)

eventually() { wait_for 30 "${@:2}" || complain "not in time: $1: $(tail -n 3 log)"; }

ids() { busybox pidof "${programs[@]}" | tr ' ' '\n' | sort; }

# All three run, and none of them has an id that is in the file `before`.
all_new() { [[ $(ids | wc -l) == 3 && -z $(ids | comm -12 - before) ]]; }

none_left() { ! busybox pidof "${programs[@]}" keeper >none; }

shows() { [[ $(<log) == "$1" ]]; }

says() { [[ $(tail -n 1 log) == "am: $1" ]]; }

# start_keeper [PREFIX...]: its standard input is open as long as `hold` is.
start_keeper() {
    : >log
    : >before
    exec {hold}> >(QT_QPA_PLATFORM=offscreen QUIVER_HEADLESS=1 exec "$@" "$repository/demo/keeper" \
        "$build/demo/bin" >log 2>error)
    keeper_id=$!
    eventually 'the start' all_new
}

# A new application is in the menu only when it has been restarted.
check_restart() {
    local am=root/ezxlocal/download/appwrite/am new=0badcafe-0000-4000-8000-00000000000a
    start_keeper env
    eventually 'the main menu' shows "$main_menu"
    ids >before
    printf '\n[%s]\nName = Заметки\nExec = nothing\n' $new >>"$am/InstalledDB"
    sed -i "0,/^Items = /s//&0badcafe-0000-4000-8000-00000000000b;$new;/" "$am/UserMenuTree"
    sleep 1
    shows "$main_menu" || complain "the menu changed without a restart: $(<log)"
    busybox killall "${programs[@]}"
    eventually 'all three again' all_new
    eventually 'the new entry' shows "$main_menu"$'\nam: Main Menu > Заметки\n'"$main_menu"
    exec {hold}>&-
    eventually 'the end with the standard input' none_left
    [[ ! -s error ]] || complain "the keeper said: $(<error)"
}

# A process that is stopped has to be forced to its end.
check_signal() {
    start_keeper env --default-signal=TERM
    kill -s STOP "$(busybox pidof am)"
    kill -s TERM "$keeper_id"
    eventually 'the end with a signal' none_left
}

press() { xdotool key --delay 100 "$@"; }

runs() { [[ $(readlink "/proc/$(busybox pidof "${1##*/}")/exe") == "$QUIVER_ROOT/$1" ]]; }

# On a visible screen, by the keys.
check_screen() {
    start_display 240x320x24 display.log
    "$build/demo/bin/am" >log &
    eventually 'the main menu' says 'Main Menu > Settings'
    # There is no window manager to give it the keyboard.
    eventually 'the window' xdotool search --onlyvisible --name '^Phone$' windowfocus --sync
    press Return
    eventually 'the notice' says 'Messages cannot be started'
    press Escape Down Down Down Return F1
    eventually 'the program' runs ezxlocal/download/apps/Clock/worldclock
}

for check in check_restart check_signal check_screen; do
    rm -rf root
    "$repository/scripts/phone" new root
    export QUIVER_ROOT=$work/root
    $check
done
passed
