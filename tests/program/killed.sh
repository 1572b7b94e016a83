#!/bin/bash
# Kills operations on an application at every system call that changes something, and looks with a
# fresh program whether all is whole and can go on. Argument: the driver program.
set -euo pipefail
driver=$1
if ! strace -o /dev/null true 2>/dev/null; then
    echo "SKIPPED: strace cannot trace here; killed operations were NOT tested" >&2
    exit 77
fi
changing='execve,openat,creat,write,pwrite64,?rename,?renameat,?renameat2,?unlink,unlinkat'
changing+=',?link,linkat,ftruncate,fallocate,fsync,fdatasync,?mkdir,mkdirat,?rmdir'
changing+=',fchmod,?chmod,fchmodat,fchown'
# In memory, where the file system has nothing to wait for.
work=$(mktemp -d -p "$([ -w /dev/shm ] && echo /dev/shm || echo /tmp)")
trap 'rm -rf "$work"' EXIT
export QUIVER_ROOT=$work/phone
am=ezxlocal/download/appwrite/am
apps=ezxlocal/download/mystuff/quiver
game=$apps/Game

fail() {
    echo "FAIL: $operation, $*" >&2
    cat "$work/log" >&2
    exit 1
}

# A phone as it is before and, undisturbed, after the operation.
prepare() {
    rm -rf "$work/before" "$QUIVER_ROOT"
    mkdir -p "$QUIVER_ROOT"/{tmp,etc,$am,$game/levels,ezxlocal/{quiver,download/mystuff/skins}} \
        "$QUIVER_ROOT"/mmc/{mmca1/{quiver,skins},mmcb1/skins}
    echo "/dev/mmca1 /mmc/mmca1 vfat rw 0 0" >"$QUIVER_ROOT/etc/mtab"
    printf 'Name = Game\nAuthor = Ann\nIcon = i\n# own\n' >"$QUIVER_ROOT/$game/Game.cfg"
    seq 30 | tee "$QUIVER_ROOT/$game"/{run,levels/{1,2,3}} >/dev/null
    printf '[phone]\nName = X\n' | tee "$QUIVER_ROOT/$am"/{InstalledDB,UserMenuTree} >/dev/null
    timeout 60 "$driver" nothing >"$work/log" 2>&1
    [ "$1" = register ] || timeout 60 "$driver" register >"$work/log" 2>&1
    cp -a "$QUIVER_ROOT" "$work/before"
    timeout 60 "$driver" "$1" >"$work/log" 2>&1
    rm -rf "$work/after"
    mv "$QUIVER_ROOT" "$work/after"
}

# The file $1 is as it was before the operation or as it is after it.
isOldOrNew() {
    cmp -s "$QUIVER_ROOT/$1" "$work/before/$1" || cmp -s "$QUIVER_ROOT/$1" "$work/after/$1"
}

# What is found after "$1" must be whole, and each operation on it must work.
check() {
    if ! isOldOrNew $am/InstalledDB || ! isOldOrNew $am/UserMenuTree; then
        fail "$1: a menu file is broken"
    fi
    [ "$(sqlite3 "$QUIVER_ROOT/ezxlocal/quiver/AppMan.db" 'PRAGMA integrity_check')" = ok ] ||
        fail "$1: the database is broken"
    cp -a "$QUIVER_ROOT" "$work/found"
    timeout 60 "$driver" check >"$work/log" 2>&1 || fail "$1: cannot go on"
    place=$(sed -n "s|^found $QUIVER_ROOT/||p" "$work/log")
    if [ "$operation $place" = "delete " ]; then
        [[ $1 = command* || ! -e $work/found/$game ]] || fail "$1: half an application is left"
    elif [[ $operation != delete || $1 = program* ]]; then
        [ -n "$place" ] || fail "$1: the application is lost"
        diff -r -x 'Game.cfg*' "$work/found/$place" "$work/before/$game" >&2 ||
            fail "$1: not the whole application"
        cmp -s "$work/found/$place/Game.cfg" "$work/before/$game/Game.cfg" ||
            cmp -s "$work/found/$place/Game.cfg" "$work/after/$game/Game.cfg" ||
            fail "$1: the descriptor is broken"
        ! grep 'left over' "$work/log" || fail "$1"
    fi
    rm -rf "$work/found"
}

# The calls in $work/calls that change something, behind the line that matches $1: "name:when=N",
# N counting the calls of that name.
changingCalls() {
    awk -F'(' -v after="$1" '
        { count[$1]++ }
        $0 ~ after { started = 1; next }
        !started || $1 == "openat" && !/O_CREAT/ || /^write\([12],/ { next }
        /^[a-z0-9]+\(/ { print $1 ":when=" count[$1] }' "$work/calls"
}

# Runs "$@" once for each of these calls, which it finds in CALL and is to be killed at.
sweep() {
    local what=$1 calls
    shift
    calls=$(changingCalls "$after")
    [ -n "$calls" ] || fail "$what: nothing to kill it at"
    for CALL in $calls; do
        rm -rf "$QUIVER_ROOT"
        cp -a "$work/before" "$QUIVER_ROOT"
        rm -f "$work/killed"
        status=0
        "$@" >"$work/log" 2>&1 || status=$?
        [ $status = 137 ] || [ -e "$work/killed" ] || fail "$what: not killed at $CALL"
        check "$what killed at $CALL"
    done
    echo "$operation: $what killed at $(wc -w <<<"$calls") calls"
}

runTraced() {
    timeout 60 strace -o "$work/calls" -e trace="$changing" \
        ${CALL:+-e inject="${CALL/:/:signal=KILL:}"} \
        "$driver" "$operation"
}

runWithTracedCommand() {
    PATH="$work/bin:$PATH" timeout 60 "$driver" "$operation"
}

mkdir "$work/bin"
for command in mv rm; do
    cat >"$work/bin/$command" <<END
#!/bin/bash
# Traces the system's command; when that is killed, the shell goes with it, or the whole program.
PATH=\${PATH#*:} strace -o "$work/calls" -e trace="$changing" \
    \${CALL:+-e inject="\${CALL/:/:signal=KILL:}"} $command "\$@" || {
    touch "$work/killed"
    [ "\$TOGETHER" = no ] || kill -9 \$DRIVER
    kill -9 \$PPID
}
END
    chmod +x "$work/bin/$command"
done

export CALL TOGETHER
for operation in register unregister rename move delete; do
    prepare "$operation"
    cp -a "$work/before" "$QUIVER_ROOT"
    after='^write\(2, "START'
    CALL="" runTraced >"$work/log" 2>&1
    sweep program runTraced
done
after=^execve
for operation in move delete; do
    prepare "$operation"
    cp -a "$work/before" "$QUIVER_ROOT"
    CALL="" TOGETHER=no runWithTracedCommand >"$work/log" 2>&1
    TOGETHER=no sweep command runWithTracedCommand
    TOGETHER=yes sweep "command and program" runWithTracedCommand
done
