#!/bin/bash
# Storage that fails while commands work: full, read-only, or in one of its folders only. It mounts,
# in namespaces of its own. storage.sh BUILD-FOLDER 7Z
if [[ ${3-} != inside ]]; then
    for namespaces in 'unshare --mount' 'unshare --map-root-user --mount'; do
        if reason=$($namespaces mount -t tmpfs none /mnt 2>&1); then
            exec $namespaces "$(readlink -f "$0")" "$1" "$2" inside
        fi
    done
    printf 'SKIPPED: this machine does not let a test mount anything: %s\n' "$reason"
    exit 77
fi
source "$(dirname "$(readlink -f "$0")")/lib.sh"
export QUIVER_ARCHIVER=$seven_zip QUIVER_ROOT=$work/root
cli=$build/cli/quiver
apps=root/ezxlocal/download/mystuff/quiver
am=root/ezxlocal/download/appwrite/am
card=root/mmc/mmca1

# application FOLDER
application() {
    mkdir -p "$1/levels"
    printf 'Name = %s\nExec = run\nIcon =\n' "${1##*/}" >"$1/${1##*/}.cfg"
    echo '#!/bin/sh' | tee "$1/run" >"$1/levels/1"
    chmod +x "$1/run"
}

unmount_all() {
    local folder
    for folder in $card $apps/Game/levels $apps $am; do
        while umount -l "$work/$folder" 2>/dev/null; do :; done
    done
}

# A small card of its own, with Card on it and Game on the phone, both in the phone's menu.
fresh_phone() {
    unmount_all
    rm -rf root
    "$cli" --quiet new root
    mount -t tmpfs -o size=256k card "$work/$card"
    mkdir $card/{quiver,skins}
    application $apps/Game
    application $card/quiver/Card
    "$cli" --quiet menu add Game Card 2>/dev/null
}

make_read_only() {
    mount --bind "$1" "$1"
    mount -o remount,bind,ro "$1"
}

# fails REASON COMMAND...: the command does, for that reason, and the phone is as it was.
fails() {
    remember
    start 1 "$cli" --yes "${@:2}"
    has err "$1"
    only_changed 'tmp|zpk_files$|AppMan.db|mmca1 $'
    start 0 "$cli" check
}

fresh_phone
head -c 400000 /dev/urandom >$apps/Game/big
fails 'No space left on device' move Game --to card
fails 'No space left on device' save Game --to card

fresh_phone
cat /dev/zero >$card/fill 2>/dev/null || :
fails 'Card.cfg: No space left on device' rename Card 'A longer name'
start 0 "$cli" move Card --to phone
[[ -x $apps/Card/run && ! -e $card/quiver/Card ]] || complain 'a full card keeps its application'

fresh_phone
(cd $apps && "$seven_zip" a -bso0 -bsp0 "$work/Game.zpk" Game)
make_read_only $am
make_read_only $apps
fails 'InstalledDB: Read-only file system' menu remove Game
for command in 'install Game.zpk' 'remove Game' 'move Game --to card' 'move Card --to phone'; do
    # shellcheck disable=SC2086
    fails 'Read-only file system' $command
done
make_read_only $card
for command in 'remove Card' 'move Card --to phone' 'move Game --to card' 'rename Card New'; do
    # shellcheck disable=SC2086
    fails 'Read-only file system' $command
done
fails 'cannot open file' save Game --to card

# What the source cannot lose stays there; the target is whole, and counts.
fresh_phone
make_read_only $apps/Game/levels
cp -a $apps/Game whole
start 0 "$cli" move Game --to card
has err 'cannot remove'
diff -r whole $card/quiver/Game || complain 'what was moved'
[[ $("$cli" list --menu | grep -c card) == 2 ]] || complain 'it does not count as moved'
unmount_all
passed
