#!/bin/bash
# The machine plays the phone: its own storage is the card, its session's menu shows the phone's, and
# the restart of that ends nobody's processes. session.sh BUILD-FOLDER 7Z
source "$(dirname "$(readlink -f "$0")")/lib.sh"

quiver=$build/cli/quiver
export HOME=$work/home XDG_DATA_HOME=$work/data
menu=$XDG_DATA_HOME/applications
phone=$XDG_DATA_HOME/quiver/phone
card="$work/a card"
mkdir -p "$card" "$menu" Demo
printf 'Name = Demo\nExec = demo\n' >Demo/Demo.cfg
printf '#!/bin/sh\necho "$PWD" "$#" >"$HOME/started"\n' >Demo/demo
"$seven_zip" a -bso0 -bsp0 demo.zpk Demo
mkdir -p "$HOME"

# Starts the program of the only entry as a session does: in its folder, with what Exec says.
start_entry() {
    local entry path
    entry=$(echo "$menu"/quiver-*.desktop)
    path=$(sed -n 's/^Path=//p' "$entry")
    (cd "$path" && eval "$(sed -n 's/^Exec=//p' "$entry")")
    [[ $(<"$HOME/started") == "$1 0" ]] || complain "started in $(<"$HOME/started"), not in $1"
}

start 0 "$quiver" --card "$card" --yes install --to card demo.zpk
[[ -x $card/quiver/Demo/demo ]] || complain 'nothing is on the card'
start 0 "$quiver" --card "$card" --yes menu add Demo
start_entry "$phone/mmc/mmca1/quiver/Demo"
remember_menu=$(cat "$menu"/*)

# Out, the card takes its applications along; back, they are what they were.
start 0 "$quiver" --no-card list
[[ ! -s out ]] || complain "an application of a card that is out: $(<out)"
start 0 "$quiver" --no-card check
start 0 "$quiver" --card "$card" --json list
has out '"menu": true'
[[ $(cat "$menu"/*) == "$remember_menu" ]] || complain 'the entry has changed with the card'
start 1 "$quiver" --card "$work/nowhere" list

# The card of a window stays in for as long as it is open, whoever looks at the phone meanwhile.
QUIVER_HEADLESS=1 QT_QPA_PLATFORM=offscreen stdbuf -oL "$quiver" --card "$card" >window 2>&1 &
wait_for 30 grep -q zBaseGUI window || complain 'the window does not open'
has window 'SD exists'
start 0 "$quiver" list
has out Demo
kill $!
wait $! || true
start 0 "$quiver" list
[[ ! -s out ]] || complain "the card of a window that is closed: $(<out)"
start 0 "$quiver" --card "$card" --yes move Demo --to phone
start_entry "$phone/ezxlocal/download/mystuff/quiver/Demo"

# A phone that is only looked after stands in nobody's menu.
start 0 "$quiver" new "$work/other"
start 0 "$quiver" --root "$work/other" --yes install --to phone demo.zpk
start 0 "$quiver" --root "$work/other" --yes menu add Demo
[[ $(cat "$menu"/* | grep -c ^Exec=) == 1 ]] || complain 'another phone is in the menu'
start 1 "$quiver" --root "$work/other" menu sync

# The restart: nobody's process ends, the menu is brought up to date; all else is the machine's.
rm "$menu"/quiver-*
cp "$(type -P sleep)" messaging
./messaging 600 &
bystander=$!
path=$build/manager:$PATH
QUIVER_SESSION_MENU=$quiver PATH=$path start 0 busybox killall am flawplayer messaging
kill -0 $bystander || complain "somebody else's process was ended"
start_entry "$phone/ezxlocal/download/mystuff/quiver/Demo"
PATH=$path start 0 busybox echo as before
has out 'as before'
kill $bystander

# An entry has no place for arguments.
printf 'Name = Demo\nExec = demo -x\n' >"$phone/ezxlocal/download/mystuff/quiver/Demo/Demo.cfg"
start 0 "$quiver" --yes menu remove Demo
start 0 "$quiver" --yes menu add Demo
has err 'the menu of the session does not show Demo'
start 0 "$quiver" --yes menu remove Demo
[[ -z $(ls "$menu") ]] || complain "left in the menu: $(ls "$menu")"
chmod 500 "$menu"
if [[ $(id -u) != 0 ]]; then
    start 1 "$quiver" --yes menu add Demo
    has err 'the menu of the session cannot be written'
fi
passed
