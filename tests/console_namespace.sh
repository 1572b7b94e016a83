#!/bin/bash
# The program on the paths of a real phone: in a root folder of its own and namespaces of its own,
# so that nothing of the machine is within reach. Status 77 where that is not allowed.
# console_namespace.sh BUILD-FOLDER 7Z
set -euo pipefail
script=$(readlink -f "${BASH_SOURCE[0]}")

# Makes the new root in the folder $1, with what programs need of the machine.
make_root() {
    local root=$1 folder
    mount -t tmpfs none "$root"
    for folder in /usr /etc /dev "$build" "$(dirname "$(dirname "$script")")"; do
        mkdir -p "$root$folder"
        mount --rbind "$folder" "$root$folder"
    done
    for folder in /bin /sbin /lib*; do
        if [[ -L $folder ]]; then
            cp -d "$folder" "$root"
        else
            mkdir "$root$folder"
            mount --rbind "$folder" "$root$folder"
        fi
    done
    mkdir -p "$root"/{proc,tmp,mmc/mmca1,mmc/mmcb1,ezxlocal/download/mystuff}
    mount -t proc none "$root/proc" 2>/dev/null || mount --rbind /proc "$root/proc"
    mount -t tmpfs none "$root/usr/local"
    mount -t tmpfs -o size=1m card "$root/mmc/mmca1"
}

build=$(readlink -f "$1")
case ${3-} in
'')
    for namespaces in 'unshare --mount --pid --fork' 'unshare --map-root-user --mount --pid --fork'; do
        reason=$($namespaces mount -t tmpfs none /mnt 2>&1) || continue
        root=$(mktemp -d)
        trap 'rmdir "$root"' EXIT
        $namespaces "$script" "$build" "$2" "$root"
        exit
    done
    printf 'SKIPPED: this machine does not let a test mount anything: %s\n' "$reason"
    exit 77
    ;;
/?*)
    make_root "$3"
    exec chroot "$3" "$script" "$build" "$2" inside
    ;;
esac

source "${script%/*}/console_lib.sh"

apps=/ezxlocal/download/mystuff/quiver
app_path=$work/app
archiver=/usr/local/Overhaul/p7zip/7z

custom_lines() {
    checking_lines
}

# The program's folder names no archiver, so the program looks for it where phones have it. This one
# tells where its output goes.
make_program() {
    mkdir -p app "${archiver%/*}"
    cp "$quiver" "$build/bin/quiver_en.lng" app
    quiver=$app_path/quiver
    # With a file "silent" beside it, it is an archiver that cannot list.
    printf '#!/bin/sh\n[ "$1" != l ] || [ ! -e "%s/silent" ] || exit 7
echo "log: $(readlink /proc/$$/fd/1)"\nexec %s "$@"\n' "$work" "$seven_zip" |
        install -m 755 /dev/stdin "$archiver"
    mkdir Demo Large
    printf 'Name = Demo\n' >Demo/Demo.cfg
    head -c 3000000 /dev/urandom >Large/data
    "$seven_zip" a -bso0 -bsp0 demo.7z Demo
    "$seven_zip" a -bso0 -bsp0 large.7z Large
    cp demo.7z demo.zsk
    mv demo.7z demo.zpk
    mv large.7z large.zpk
}

# place NUMBER FOLDER PACKAGE STATUS TEXT: what comes of installing the package there.
place() {
    answers=$'y\n'$1$'\n'
    start 0 "$quiver" x "$3"
    has out "DEBUG:: Exec command ( $archiver x -y '$3' -o$2 )
DEBUG:: Command executed returned $4
log: /tmp/quiver_exec.log
"
    has out "$5"
    [[ $4 == 0 ]] || has err "$5"
    [[ ! -e /tmp/quiver_exec.log ]] || complain 'the log is still there'
}

check_first_start() {
    local missing="DEBUG:: Dir '%s' doesn't exist. Try to create it"
    local storage_lines database_lines
    storage_lines="DEBUG:: SD exists
${missing/\%s//mmc/mmca1/quiver}
${missing/\%s//mmc/mmca1/skins}
${missing/\%s//mmc/mmcb1/skins}
${missing/\%s/$apps}
${missing/\%s//ezxlocal/download/mystuff/skins}
${missing/\%s//ezxlocal/quiver}"
    database_lines='DEBUG:: Creating Application Database
Application Database Opened'
    start 0 "$quiver" --install
    { beginning --install && echo 'DEBUG:: Installer Mode'; } | same out
    [[ $(stat -c %a /mmc/mmc*/* /ezxlocal/download/mystuff/* /ezxlocal/quiver | uniq) == 1411 ]] ||
        complain 'the modes of the folders'
    [[ $(sqlite3 /ezxlocal/quiver/AppMan.db .tables) == 'AppReg    App_Menu' ]] || complain 'the tables'
}

check_installation() {
    place 1 $apps demo.zpk 0 'Everything is Ok'
    place 2 /mmc/mmca1/quiver demo.zpk 0 'Everything is Ok'
    [[ -x $apps/Demo/Demo.cfg && -x /mmc/mmca1/quiver/Demo/Demo.cfg ]] || complain 'the files'
    has err $' free\n1-2: '
    mount -t tmpfs ext /mmc/mmcb1
    mkdir /mmc/mmcb1/skins
    place 3 /mmc/mmcb1/skins demo.zsk 0 'Everything is Ok'
    [[ -f /mmc/mmcb1/skins/Demo/Demo.cfg ]] || complain 'the skin'

    answers=$'y\n2\n'
    start 0 "$quiver" x large.zpk
    has err 'The package needs 2.9 MB, but only'
    ! grep 'Exec command' out || complain 'a package that does not fit was unpacked'
    touch silent
    place 2 /mmc/mmca1/quiver large.zpk 2 'No space left on device'
    rm silent
    [[ -f /mmc/mmca1/quiver/Demo/Demo.cfg ]] || complain 'the application on the full card'
    rm -r /mmc/mmca1/quiver/*
    mount -o remount,bind,ro /mmc/mmca1
    place 2 /mmc/mmca1/quiver demo.zpk 2 'Read-only file system'
    [[ -z $(ls /mmc/mmca1/quiver) ]] || complain 'something on the read-only card'
}

check_listings() {
    local am=/ezxlocal/download/appwrite/am uid=0a1b2c3d-0000-4000-8000-000000000001
    mkdir -p $am /ezx_user/download/appwrite/setup
    printf '[%s]\nName = Игра\nType = 2\n' $uid >$am/InstalledDB
    printf '[7c3e90d2-51af-4b08-9e6d-2f41c8a0b7e5]\nItems = %s;\n' $uid >$am/UserMenuTree
    printf '[SYS_SYSTEM_SET]\nLanguageType = en_US\n' >/ezx_user/download/appwrite/setup/ezx_system.cfg
    sqlite3 /ezxlocal/quiver/AppMan.db "INSERT INTO AppReg VALUES(1, '{u}', 'Demo', '$apps/Demo', 0, NULL)"
    start 0 "$quiver" --list-apps-menu-registered
    has out "DEBUG:: Current LanguageType : 'en_US'"
    has out $'[List START]\n\tAPP OBJECT{ Name: Игра, Type: 2, Icon: }\nDEBUG:: [List END]'
    start 0 "$quiver" --list-apps-in-db
    has out $'UUID    : {u}\nDEBUG:: AppName : Demo\nDEBUG:: PathName: '$apps/Demo
}

make_program
check_first_start
check_installation
check_listings
passed
