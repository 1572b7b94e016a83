#!/bin/bash
# The installed command: whose phone it takes, how it makes one, what it hands to the program.
# front_door.sh BUILD-FOLDER 7Z
source "$(dirname "$(readlink -f "$0")")/lib.sh"

version=$(sed -n 's/^CMAKE_PROJECT_VERSION:.*=//p' "$build/CMakeCache.txt")
cmake --install "$build" --prefix "$work/a place" >/dev/null
quiver=$work/a\ place/bin/quiver
export HOME=$work/home XDG_DATA_HOME="$work/my \"data\""
own=$XDG_DATA_HOME/quiver/phone
apps=ezxlocal/download/mystuff/quiver

# The last thing that the program prints before it acts: arguments ARGUMENT...
arguments() {
    local i=0 argument
    for argument; do
        has out $'\n\tParametro ['$((i += 1))"] = $argument"$'\n'
    done
}

check_words() {
    start 0 "$quiver" --version
    same out <<<"quiver $version"
    start 0 "$quiver" --help
    has out 'usage: quiver'
    start 1 "$quiver" nowhere.zpk
    has err "no file 'nowhere.zpk'"
    start 2 "$quiver" --root
    has err 'needs a folder'
    [[ ! -e $HOME && ! -e $XDG_DATA_HOME ]] || complain 'a phone is made before it is needed'
}

# Two at once, so that neither takes the other's phone away.
check_first_start() {
    local both=()
    for _ in 1 2; do
        LC_ALL=de_DE.UTF-8 "$quiver" list >>both 2>&1 &
        both+=($!)
    done
    wait "${both[0]}" || complain "the one first start: $(<both)"
    wait "${both[1]}" || complain "the other first start: $(<both)"
    [[ $(grep -c 'Parametro \[1\] = --list-apps-in-db' both) == 2 ]] || complain "$(<both)"
    [[ $(ls "$XDG_DATA_HOME/quiver") == phone ]] || complain 'more than a phone is left'
    [[ -s $own/ezxlocal/quiver/AppMan.db ]] || complain 'no database'
    grep -qx 'LanguageType = de' "$own"/ezx_user/download/appwrite/setup/ezx_system.cfg ||
        complain 'the language is not the session'\''s'
    grep -qx "BIN_FULLPATH = $seven_zip" "$own/ezxlocal/quiver/quiver.custom" ||
        complain 'the archiver'

    XDG_DATA_HOME=relative start 0 "$quiver" list
    [[ -d $HOME/.local/share/quiver/phone && ! -e relative ]] || complain 'not in ~/.local/share'
}

check_installation() {
    mkdir Demo
    printf 'Name = Demo\nExec = demo\n' >Demo/Demo.cfg
    "$seven_zip" a -bso0 -bsp0 'a demo.ZPK' Demo
    printf '[UNPACK_TOOLS]\nBIN_FULLPATH = /of/the/phone\n[MENU_CFGS]\nAPP_MENU_UUID = own\n' \
        >"$own/ezxlocal/quiver/quiver.custom"
    answers=$'y\n1\n'
    start 0 "$quiver" 'a demo.ZPK'
    has out "APP_MENU_UUID : 'own'"
    arguments x 'a demo.ZPK'
    diff -r Demo "$own/$apps/Demo" || complain 'the package is not on the own phone'
    answers=
}

eventually() {
    local tries=0
    until "$@"; do
        ((tries++ < 200)) || {
            complain "not yet: $*"
            return
        }
        sleep 0.2
    done
}

is_listed() {
    "$quiver" list | grep -aq "AppName.*$1"
}

is_over() {
    ! pgrep -f "^$work/a place/lib/quiver/quiver " >/dev/null
}

# The window finds the new application. It ends with the command that opened it.
check_window() {
    QUIVER_HEADLESS=1 QT_QPA_PLATFORM=offscreen "$quiver" list more >window 2>&1 &
    eventually is_listed Demo
    kill $! || complain "the window is closed: $(<window)"
    wait $! || true
    eventually is_over
}

check_roots() {
    local phone
    for phone in plain "it's blank"; do
        "$repository/scripts/phone" new "$phone" --bare
        QUIVER_ROOT=$own start 0 "$quiver" --root "$phone" x --list-apps-in-db
        arguments x --list-apps-in-db
        has out 'DEBUG:: SD exists'
        [[ -s $phone/ezxlocal/quiver/AppMan.db ]] || complain "--root $phone is not used"
        rm "$phone/ezxlocal/quiver/AppMan.db"
        QUIVER_ROOT=$work/$phone start 0 "$quiver" list
        [[ -s $phone/ezxlocal/quiver/AppMan.db ]] || complain "QUIVER_ROOT $phone is not used"
    done
    start 1 "$quiver" --root='not there' list
    has err "'not there' is not a folder"
    start 1 "$quiver" list more
    arguments list more
    has err 'no display'
}

touch begun
check_words
check_first_start
check_installation
check_window
check_roots
[[ -z $(find /tmp -maxdepth 1 -name 'quiver-??????' -newer begun) ]] || complain 'a link is left'
passed
