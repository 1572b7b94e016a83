#!/bin/bash
# The whole standard output of every kind of command line, and how the program takes what surrounds
# it.
source "$(dirname "$(readlink -f "$0")")/lib.sh"

first=0a1b2c3d-0000-4000-8000-000000000001
second=0a1b2c3d-0000-4000-8000-000000000002
am=ezxlocal/download/appwrite/am

fill_phone() {
    printf '%s\n' "[$first]" 'Name = Игра 100%s' 'Type = 2' 'Icon = /a b.png' \
        >"root/$am/InstalledDB"
    printf '%s\n' "[$second]" 'Name = Second' "[$first]" 'Name = hidden' \
        >root/ezx_user/download/appwrite/am/BuiltInDB
    printf '[7c3e90d2-51af-4b08-9e6d-2f41c8a0b7e5]\nItems = ;;%s;%s;%s\n' "$second" "$first" \
        0a1b2c3d-0000-4000-8000-00000000dead >"root/$am/UserMenuTree"
    sqlite3 root/ezxlocal/quiver/AppMan.db "
        INSERT INTO AppReg VALUES(2, '{a}', CAST(x'436166e9' AS TEXT), '/ezxlocal/Кафе', 0, NULL);
        INSERT INTO AppReg VALUES(3, NULL, NULL, NULL, NULL, NULL);
        INSERT INTO App_Menu VALUES(2), (2), (99);"
}

# application UUID NAME FOLDER
application() {
    echo 'DEBUG:: =========================================='
    printf 'DEBUG:: UUID    : %s\nDEBUG:: AppName : %s\n' "$1" "$2"
    printf 'DEBUG:: PathName: %s\nDEBUG:: Location: 0\n' "$3"
}

action_of() {
    local cafe
    cafe=$(application '{a}' $'Caf\xe9' /ezxlocal/Кафе)
    case $1 in
    --install) echo 'DEBUG:: Installer Mode' ;;
    --list-apps-menu-registered)
        printf '%s\n' "DEBUG:: UID : $first" 'DEBUG:: List Applications registered in Menu' \
            'DEBUG:: [List START]' $'\tAPP OBJECT{ Name: Second, Type: 0, Icon: }' \
            $'\tAPP OBJECT{ Name: Игра 100%s, Type: 2, Icon: /a b.png}' \
            'DEBUG:: [List END]'
        ;;
    --list-apps-in-db)
        printf '%s\n' 'DEBUG:: List Applications in DataBase' 'DEBUG:: [List START]' "$cafe" \
            "$(application '' '' '')" 'DEBUG:: [List END]'
        ;;
    --list-apps-menu-registered-in-db)
        printf '%s\n' 'DEBUG:: List Menu Applications in DataBase' 'DEBUG:: [List START]' "$cafe" \
            'DEBUG:: [List END]'
        ;;
    esac
}

# acts COUNT ARGUMENT...: the argument at place COUNT is carried out, and those behind it are not
# even printed.
acts() {
    local count=$1
    shift
    start 0 "$quiver" "$@"
    { beginning "${@:1:count}" && action_of "${!count}"; } | same out
    [[ ! -s err ]] || complain "on standard error of $said: $(<err)"
}

# ignores ARGUMENT...: the program goes on to its window, for which there is no display.
ignores() {
    start 1 "$quiver" "$@"
    echo 'quiver: there is no display for the window' | same err
    has out "$(beginning "$@" && printf 'DEBUG:: UID : %s\nDEBUG:: Register Load DONE\n' $first)"
    [[ $(<out) != *Install* ]] || complain "an installation by $said"
}

check_command_lines() {
    local option file
    for option in --install --list-apps-menu-registered --list-apps-in-db \
        --list-apps-menu-registered-in-db; do
        acts 2 x "$option"
    done
    acts 1 --install "$work/real.zpk"
    acts 3 '' 'a %s b' --list-apps-in-db y
    touch notes.txt
    "$seven_zip" a -bso0 -bsp0 real.zpk notes.txt
    ln -s nowhere dangling.zpk
    ignores "$work/real.zpk"
    for file in '' notes.txt missing.zpk dangling.zpk --INSTALL --install=x; do
        ignores x "$file"
    done
    only_changed ''
}

# A window elsewhere, or a program that changes the phone; a listing beside it goes on.
check_second_start() {
    start 1 flock root/ezxlocal/download/mystuff/quiver "$quiver"
    has err 'Quiver is already open.'
    start 1 flock root/ezxlocal/quiver "$quiver"
    has err 'Another program is changing the phone.'
    start 0 flock root/ezxlocal/quiver "$quiver" --list-apps-in-db
}

# What Qt would take for its own, and displays that are not there.
check_foreign_settings() {
    start 0 "$quiver" x -platform --list-apps-in-db
    has out 'Parametro [3] = --list-apps-in-db'
    local platform answers=$'n\n'
    touch asked.zpk
    for platform in xcb wayland linuxfb eglfs offscreen minimal ''; do
        start 0 env QT_QPA_PLATFORM=$platform "$quiver" -reverse --list-apps-in-db
        has out '[List END]'
        start 0 env QT_QPA_PLATFORM=$platform timeout 20 "$quiver" x asked.zpk
        has err 'Install this package? asked.zpk'
    done
}

new_phone
check_second_start
check_foreign_settings
fill_phone
remember
check_command_lines
passed
