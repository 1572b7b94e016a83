#!/bin/bash
# The whole standard output of every kind of command line, of the ways to start the program, and on
# an empty phone.
source "$(dirname "$(readlink -f "$0")")/console_lib.sh"

first=0a1b2c3d-0000-4000-8000-000000000001  # a proper group
indented=0a1b2c3d-0000-4000-8000-000000000002 # these two are known to the registry only
with_cr=0a1b2c3d-0000-4000-8000-000000000003
rubbish=not-a-uuid-but-of-the-proper-length-
am=ezxlocal/download/appwrite/am

uid_lines="DEBUG:: UID : $first
DEBUG:: UID : $rubbish"

fill_phone() {
    printf '%s\n' "[$first]" 'Name = Игра' 'Type = 2' 'Icon = /a b.png' '[short]' 'Name = s' \
        " [$indented]" 'Name = 100%s' 'Icon =' "[$with_cr]"$'\r' 'Type = x' "[$rubbish]" \
        >"root/$am/InstalledDB"
    printf '%s\n' '[other]' "Items = $rubbish" '[7c3e90d2-51af-4b08-9e6d-2f41c8a0b7e5]' \
        "Items = ;;$with_cr;;$first;0a1b2c3d-0000-4000-8000-00000000dead;$indented;$rubbish" \
        >"root/$am/UserMenuTree"
    sqlite3 root/ezxlocal/quiver/AppMan.db "
        INSERT INTO AppReg VALUES(7, '{b}', 'Later %s', '/mmc/mmca1/quiver/Later', 1, NULL);
        INSERT INTO AppReg VALUES(2, '{a}', CAST(x'436166e9' AS TEXT), '/ezxlocal/Кафе', 0, NULL);
        INSERT INTO AppReg VALUES(3, NULL, NULL, NULL, NULL, NULL);
        INSERT INTO App_Menu VALUES(7), (2), (7), (99);"
}

# application UUID NAME FOLDER LOCATION
application() {
    echo 'DEBUG:: =========================================='
    printf 'DEBUG:: UUID    : %s\nDEBUG:: AppName : %s\n' "$1" "$2"
    printf 'DEBUG:: PathName: %s\nDEBUG:: Location: %s\n' "$3" "$4"
}

action_of() {
    case $1 in
    --install) echo 'DEBUG:: Installer Mode' ;;
    --list-apps-menu-registered)
        printf '%s\n' "$uid_lines" 'DEBUG:: List Applications registered in Menu' \
            'DEBUG:: [List START]' $'\tAPP OBJECT{ Name: , Type: 0, Icon: }' \
            $'\tAPP OBJECT{ Name: Игра, Type: 2, Icon: /a b.png}' \
            $'\tAPP OBJECT{ Name: 100%s, Type: 0, Icon: }' 'DEBUG:: [List END]'
        ;;
    --list-apps-in-db)
        printf 'DEBUG:: List Applications in DataBase\nDEBUG:: [List START]\n'
        application '{a}' $'Caf\xe9' /ezxlocal/Кафе 0
        application '' '' '' 0
        application '{b}' 'Later %s' /mmc/mmca1/quiver/Later 1
        echo 'DEBUG:: [List END]'
        ;;
    --list-apps-menu-registered-in-db)
        printf 'DEBUG:: List Menu Applications in DataBase\nDEBUG:: [List START]\n'
        application '{a}' $'Caf\xe9' /ezxlocal/Кафе 0
        application '{b}' 'Later %s' /mmc/mmca1/quiver/Later 1
        echo 'DEBUG:: [List END]'
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
    sed -n '1,/^DEBUG:: Register Load DONE$/p' out >head
    { beginning "$@" && printf '%s\nDEBUG:: Register Load DONE\n' "$uid_lines"; } | same head
    [[ $(<out) != *Install* ]] || complain "an installation by $said"
}

check_command_lines() {
    local option
    for option in --install --list-apps-menu-registered --list-apps-in-db \
        --list-apps-menu-registered-in-db; do
        acts 1 "$option"
        acts 2 x "$option"
        acts 3 '' 'a %s b' "$option" y
    done
    acts 1 --install "$work/real.zpk"
    acts 1 --list-apps-in-db --install
    acts 3 x "$work/real.zpk" --install
    DISPLAY=:7777 start 0 "$quiver" --list-apps-in-db
    { beginning --list-apps-in-db && action_of --list-apps-in-db; } | same out

    mkdir folder.txt
    touch notes.txt real.zpk.bak zpk
    "$seven_zip" a -bso0 -bsp0 real.zpk notes.txt
    ln -s nowhere dangling.zpk
    ignores "$work/real.zpk"
    ignores "$work/real.zpk" x "$work/real.zpk"
    for file in '' notes.txt missing.zpk dangling.zpk real.zpk.bak zpk folder.txt \
        --INSTALL --install=x '--install ' --list-apps; do
        ignores x "$file"
    done
    only_changed
}

# The program's folder is the text before the last slash of the name by which it was started.
check_names() {
    local there=$build/bin app_path=.
    cd "$there"
    timeout 20 ./quiver --install >"$work/out"
    cd "$work"
    beginning --install | cat - <(action_of --install) | same out

    app_path=
    cp "$there/quiver_en.lng" root/ezxlocal/quiver/
    language_lines() {
        cat <<END
DEBUG:: Current LanguageType : 'en'
DEBUG:: Checking for lng file : '/quiver_en.lng'
DEBUG:: The lng file is missing. Trying to use English lng file as default.
DEBUG:: Current LanguageType : 'en'
DEBUG:: Checking for lng file : '/ezxlocal/quiver/quiver_en.lng'
END
    }
    custom_lines() {
        cat <<END
$(checking_lines)
DEBUG:: Customization file found. Loading custom parameters
DEBUG:: MENU_CFGS::APP_MENU_UUID : '/usr/local/Overhaul/p7zip/7z'
END
    }
    printf '[MENU_CFGS]\nOTHER = 1\n' >root/ezxlocal/quiver/quiver.custom
    start 0 env PATH="$there:$PATH" quiver --install
    beginning --install | cat - <(action_of --install) | same out
}

# An empty folder is a phone, too: nothing can be made there, all of which is reported.
check_empty_phone() {
    local missing="DEBUG:: Dir '%s' doesn't exist. Try to create it
DEBUG:: [ERROR] : Directory creation Failed."
    local storage_lines database_lines
    custom_lines() {
        checking_lines
    }
    remove root
    mkdir root
    storage_lines="DEBUG:: Cannot determine if SD is exists. Disabled by default
${missing/\%s//ezxlocal/download/mystuff/quiver}
DEBUG:: Phone Directory creation Failed
${missing/\%s//ezxlocal/download/mystuff/skins}
DEBUG:: Phone Skins Directory creation Failed
${missing/\%s//ezxlocal/quiver}
DEBUG:: Application Sys Files Directory creation Failed"
    database_lines="DEBUG:: Can't open Applications database: unable to open database file"
    start 0 "$quiver" --list-apps-menu-registered
    { beginning --list-apps-menu-registered && cat; } <<'END' | same out
DEBUG:: Error Initializing AppRegistry Instance
DEBUG:: List Applications registered in Menu
DEBUG:: [List START]
DEBUG:: [List END]
END
    echo "Can't open Applications database: unable to open database file" | same err
    [[ $(ls -A root) == tmp ]] || complain "what an empty phone has got: $(ls -A root)"
}

# A window elsewhere holds the lock; an installation beside it goes on.
check_second_start() {
    start 1 flock root/ezxlocal/quiver "$quiver"
    has err 'Quiver is already open.'
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
(check_empty_phone)
new_phone
check_names
passed
