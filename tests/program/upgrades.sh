#!/bin/bash
# Installs a newer version over an application and breaks off on the way: killed at every system
# call that changes something, with a damaged package, with an archiver that dies. After a new start the
# old version or the new one must be there, whole, with the files that only the application made.
# upgrades.sh BUILD-FOLDER 7Z
source "$(dirname "$(readlink -f "$0")")/lib.sh"
if ! strace -o /dev/null true 2>/dev/null; then
    echo 'SKIPPED: strace cannot trace here; killed upgrades were NOT tested' >&2
    exit 77
fi
apps=$work/root/ezxlocal/download/mystuff/quiver
answers=$'y\n1\n'

make_versions() {
    mkdir -p old/Game/levels new/Game/levels
    printf 'Name = Game\nVersion = 1\n' >old/Game/Game.cfg
    printf 'Name = Game\nVersion = 2\n' >new/Game/Game.cfg
    seq 5000 | tee old/Game/{run,levels/1} >old/Game/settings
    seq 5000 20000 | tee new/Game/run >new/Game/levels/2
    (cd new && "$seven_zip" a -bso0 -bsp0 -t7z -mx0 ../game.zpk Game)
    cp -a new after
    cp old/Game/settings after/Game
    cp old/Game/levels/1 after/Game/levels
    # The listing stands at the end of the package, so that it is still fine.
    cp game.zpk damaged.zpk
    printf 'other bytes' | dd of=damaged.zpk bs=1 seek=60000 conv=notrunc status=none
}

# archiver SCRIPT: what unpacks in the archiver's place; all else is done by that itself.
archiver() {
    printf '#!/bin/sh\ncase "$1 $*" in *-so* | [!x]*) exec %s "$@" ;; esac\n%s\n' \
        "$seven_zip" "$1" >archiver
    chmod +x archiver
    printf '[UNPACK_TOOLS]\nBIN_FULLPATH = %s\n' "$work/archiver" >app/quiver.custom
}

install_old() {
    rm -rf "$apps"
    cp -a old "$apps"
}

# is VERSION WHEN: nothing but that version is installed.
is() {
    diff -r "$1" "$apps" >difference || complain "not the version $1 $2: $(<difference)"
}

# try VERSION WHEN PACKAGE: what is there at once and after a new start.
try() {
    install_old
    start '0|137' "$quiver" x "$3"
    [[ $4 == restart ]] || is "$1" "$2"
    start 0 "$quiver" --install
    is "$1" "$2, started anew"
}

# The program that COMMAND... starts, killed at each call of its own that changes the storage, on
# whichever of its threads.
sweep() {
    local calls call names=rename,unlink,unlinkat,rmdir,mkdir,syncfs
    install_old
    printf %s "$answers" | strace -f -o calls -e trace=$names,execve "$@" >out 2>&1
    is after 'under a trace'
    # Those of the archiver, and of the shell before it, are not the program's.
    calls=$(awk '/execve\(/ { if (seen++) other[$1] } !($1 in other) && !/execve|resumed/ {
        sub(/\(.*/, "", $2); if ($2 ~ /^[a-z]+$/) print $2 ":when=" ++n[$1, $2] }' calls | sort -u)
    for call in $calls; do
        install_old
        {
            printf %s "$answers" | strace -f -o /dev/null -e trace=$names \
                -e inject="${call/:/:signal=KILL:}" "$@" >out || true
        } 2>/dev/null
        start 0 "$quiver" --install
        diff -r old "$apps" >/dev/null || is after "killed at $call of $*"
    done
    [[ $(grep -c rename <<<"$calls") -ge 3 ]] || complain "too few calls were found: $calls"
    printf '%s: killed at %d calls\n' "${1##*/}" "$(wc -w <<<"$calls")"
}

# The archiver, at each call of its own that writes: FAULT happens to it, such as signal=KILL.
sweep_archiver() {
    local name number undone=0
    archiver "exec strace -f -o $work/calls -e trace=write,mkdir,ftruncate $seven_zip \"\$@\""
    install_old
    start 0 "$quiver" x game.zpk
    is after 'unpacked under a trace'
    for name in write mkdir ftruncate; do
        for ((number = $(grep -c " $name(" calls); number > 0; number--)); do
            archiver "exec strace -f -o $work/fault -e trace=$name \
                -e inject=$name:$1:when=$number+ $seven_zip \"\$@\""
            install_old
            start 0 "$quiver" x game.zpk
            if diff -r old "$apps" >/dev/null; then
                ((++undone))
            else
                is after "with the archiver's $name $number: $1" # its last words do not count
            fi
            grep -q -e INJECTED -e 'killed by' fault || complain "no fault at $name $number"
        done
    done
    ((undone > 5)) || complain "$1: only $undone upgrades were undone"
    printf '%s: %d upgrades were undone\n' "$1" "$undone"
}

new_phone
mkdir app
cp "$quiver" "$build"/bin/quiver_en.lng app
quiver=$work/app/quiver
make_versions
archiver "exec $seven_zip \"\$@\""
try after 'undisturbed' game.zpk -
try old 'with a damaged package' damaged.zpk -
archiver "$seven_zip \"\$@\" >part; rm -r $apps/Game/run; exit 128"
try old 'with the status 128' game.zpk -
archiver "$seven_zip \"\$@\" >part; rm -r $apps/Game/run; pkill -9 -f '^$quiver x'; exit 0"
try old 'after the program was killed with its archiver' game.zpk restart
archiver "exec $seven_zip \"\$@\""
sweep "$quiver" x game.zpk
sweep "$build/cli/quiver" --yes install --to phone game.zpk
sweep_archiver signal=KILL
sweep_archiver error=ENOSPC
passed
