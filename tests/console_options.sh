#!/bin/bash
# The whole standard output of every kind of command line, of the ways to start the program, and of
# phones without some of their folders.
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
DEBUG:: Checking for Customization file: /quiver.custom
DEBUG:: Checking for Customization file: /ezxlocal/quiver/quiver.custom
DEBUG:: Customization file found. Loading custom parameters
DEBUG:: MENU_CFGS::APP_MENU_UUID : '/usr/local/Overhaul/p7zip/7z'
END
    }
    printf '[MENU_CFGS]\nOTHER = 1\n' >root/ezxlocal/quiver/quiver.custom
    start 0 env PATH="$there:$PATH" quiver --install
    beginning --install | cat - <(action_of --install) | same out
}

# phone COMMANDS: the phone after these commands prints `storage_lines` and `database_lines`.
phone() {
    new_phone
    (cd root && eval "$1")
    start 0 "$quiver" --install
    beginning --install | cat - <(action_of --install) | same out
}

check_storage() {
    local no_card="DEBUG:: SD doesn't exist" card='DEBUG:: SD exists' both=$storage_lines
    local storage_lines database_lines=$database_lines
    local missing="DEBUG:: Dir '%s' doesn't exist. Try to create it"
    local failed='DEBUG:: [ERROR] : Directory creation Failed.'
    storage_lines='DEBUG:: Cannot determine if SD is exists. Disabled by default'
    phone 'rm etc/mtab'
    storage_lines=$no_card
    phone ': >etc/mtab; rm -r mmc'
    [[ ! -e root/mmc ]] || complain 'folders on a card that is not there'
    phone 'rm etc/mtab; mkdir etc/mtab'
    phone 'head -c 300000 /dev/urandom >etc/mtab'
    storage_lines=$card
    phone 'echo "none /data/mmc/mmca1/sub vfat rw 0 0" >etc/mtab'
    storage_lines="$card
$card
${missing/\%s//mmc/mmcb1/skins}
$failed
DEBUG:: SD Extended Partition Skins Directory creation Failed"
    phone 'printf "a /mmc/mmca1 x rw 0 0\nb /mmc/mmca1 x rw 0 0" >etc/mtab; rm -r mmc/mmcb1'

    storage_lines="$both
${missing/\%s//ezxlocal/download/mystuff/quiver}
$failed
DEBUG:: Phone Directory creation Failed
${missing/\%s//ezxlocal/download/mystuff/skins}
$failed
DEBUG:: Phone Skins Directory creation Failed
${missing/\%s//ezxlocal/quiver}
$failed
DEBUG:: Application Sys Files Directory creation Failed"
    database_lines="DEBUG:: Can't open Applications database: unable to open database file"
    phone 'rm -r ezxlocal'
    echo "Can't open Applications database: unable to open database file" | same err
}

# Folders that the program makes; only root can work in them.
check_new_folders() {
    local storage_lines database_lines
    local missing="DEBUG:: Dir '%s' doesn't exist. Try to create it"
    storage_lines="DEBUG:: SD exists
DEBUG:: SD extended partition exists
${missing/\%s//mmc/mmca1/quiver}
${missing/\%s//mmc/mmca1/skins}
${missing/\%s//mmc/mmcb1/skins}
${missing/\%s//ezxlocal/download/mystuff/quiver}
${missing/\%s//ezxlocal/download/mystuff/skins}
${missing/\%s//ezxlocal/quiver}"
    database_lines='DEBUG:: Creating Application Database
Application Database Opened'
    phone 'rm -r mmc/mmc*/* ezxlocal/download/mystuff/* ezxlocal/quiver'
    [[ $(stat -c %a root/{mmc/mmc*,ezxlocal/download/mystuff}/* root/ezxlocal/quiver | uniq) == 1411 ]] ||
        complain 'the modes of the folders'
    [[ $(sqlite3 root/ezxlocal/quiver/AppMan.db "SELECT sql FROM sqlite_master WHERE type = 'table'") == \
        'CREATE TABLE AppReg (   id INTEGER PRIMARY KEY,   UUID CHAR(38),   Name VARCHAR(64),   PathName VARCHAR(255),   Location INT,   RegDate DATE)
CREATE TABLE App_Menu(   app_id	INTENGER NOT NULL       CONSTRAINT fk_app_id REFERENCES AppReg(id) ON DELETE CASCADE)' ]] ||
        complain 'the tables of a new database'
}

new_phone
fill_phone
remember
check_command_lines
check_storage
[[ $(id -u) != 0 ]] || check_new_folders
new_phone
check_names
passed
