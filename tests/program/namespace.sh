#!/bin/bash
# The program on the paths of a real phone: in a root folder of its own and namespaces of its own,
# so that nothing of the machine is within reach. Status 77 where that is not allowed.
# namespace.sh BUILD-FOLDER 7Z
set -euo pipefail
script=$(readlink -f "${BASH_SOURCE[0]}")

# Makes the new root in the folder $1, with what programs need of the machine.
make_root() {
    local root=$1 folder
    mount -t tmpfs none "$root"
    for folder in /usr /etc /dev "$build" "${script%/tests/*}"; do
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
    for namespaces in 'unshare --mount --pid --fork' \
        'unshare --map-root-user --mount --pid --fork'; do
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
inside) ;; # nowhere else: it would be on the machine's own paths
*) exit 2 ;;
esac

source "${script%/*}/lib.sh"

apps=/ezxlocal/download/mystuff/quiver
archiver=/usr/local/Overhaul/p7zip/7z

# Nothing names an archiver, so the program looks for it where phones have it. This one tells where
# its output goes. With a file "silent" beside it, it is one that cannot list.
make_packages() {
    local name
    mkdir -p "${archiver%/*}" Demo Half Large
    printf '#!/bin/sh\n[ "$1" != l ] || [ ! -e "%s/silent" ] || exit 7
echo "log: $(readlink /proc/$$/fd/1)"\nexec %s "$@"\n' "$work" "$seven_zip" |
        install -m 755 /dev/stdin "$archiver"
    printf 'Name = Demo\n' >Demo/Demo.cfg
    head -c 600000 /dev/urandom >Half/data
    head -c 3000000 /dev/urandom >Large/data
    for name in Demo Half Large; do
        "$seven_zip" a -bso0 -bsp0 -t7z "${name,,}.zpk" $name
    done
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
    start 0 "$quiver" --install
    has out 'DEBUG:: Creating Application Database'
    [[ $(stat -c %a /mmc/mmc*/* /ezxlocal/download/mystuff/* /ezxlocal/quiver | uniq) == 1411 ]] ||
        complain 'the modes of the folders'
    [[ $(sqlite3 /ezxlocal/quiver/AppMan.db .tables) == 'AppReg    App_Menu' ]] ||
        complain 'the tables'
}

check_installation() {
    place 1 $apps demo.zpk 0 'Everything is Ok'
    place 2 /mmc/mmca1/quiver demo.zpk 0 'Everything is Ok'
    # There is room for one of it, and none beside it for another.
    head -c 600000 /dev/zero | install -D /dev/stdin /mmc/mmca1/quiver/Half/data
    place 2 /mmc/mmca1/quiver half.zpk 0 'Everything is Ok'
    cmp Half/data /mmc/mmca1/quiver/Half/data || complain 'an update in place'
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

make_packages
check_first_start
check_installation
passed
