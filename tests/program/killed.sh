#!/bin/bash
# Kills commands on an application at every system call that changes something, and looks whether
# all is whole and can go on. killed.sh BUILD-FOLDER
# shellcheck disable=SC2086 # commands are put together of words
source "$(dirname "$(readlink -f "$0")")/lib.sh"
if ! strace -o /dev/null true 2>/dev/null; then
    echo 'SKIPPED: strace cannot trace here; killed commands were NOT tested' >&2
    exit 77
fi
cli=$build/cli/quiver
changing='execve,openat,creat,write,pwrite64,?rename,?renameat,?renameat2,?unlink,unlinkat'
changing+=',?link,linkat,ftruncate,fallocate,fsync,fdatasync,?mkdir,mkdirat,?rmdir'
changing+=',fchmod,?chmod,fchmodat,fchown'
# In memory, where the file system has nothing to wait for.
if [[ -w /dev/shm ]]; then
    work=$(mktemp -d -p /dev/shm)
    cd "$work"
fi
export QUIVER_ROOT=$work/phone
am=ezxlocal/download/appwrite/am
apps=ezxlocal/download/mystuff/quiver
game=$apps/Game
declare -A commands=([register]='menu add Game' [unregister]='menu remove Game'
    [rename]='rename Game New' [move]='move Game --to card' [delete]='remove Game')

# do_it COMMAND: without a word
do_it() { timeout 60 "$cli" --yes --quiet ${commands[$1]} >said 2>&1; }

# A phone as it is before and, undisturbed, after the operation.
prepare() {
    rm -rf before phone after
    "$cli" --quiet new phone
    mkdir -p "phone/$game/levels"
    printf 'Name = Game\nAuthor = Ann\nExec = run\nIcon =\n# own\n' >"phone/$game/Game.cfg"
    printf '#!/bin/sh\n%s\n' "$(seq 30)" |
        tee "phone/$game"/{run,levels/{1,2,3}} >/dev/null
    chmod +x "phone/$game/run"
    "$cli" --quiet scan
    [[ $operation == register ]] || do_it register
    cp -a phone before
    do_it "$operation" || complain "$operation: $(<said)"
    mv phone after
}

# The file $1 is as it was before the operation or as it is after it.
is_old_or_new() { cmp -s "phone/$1" "before/$1" || cmp -s "phone/$1" "after/$1"; }

# Goes on as a user would after a restart: what has been left is told, mended, and works.
go_on() {
    "$cli" check --repair --yes --quiet >said 2>&1 || complain "$1: not mended: $(<said)"
    local step place
    place=$("$cli" list) # half of what was being deleted is put aside
    [[ -n $place || $operation == delete ]] || complain "$1: it is lost"
    for step in 'menu add' 'menu remove' 'menu add' 'move --to card' 'move --to phone' 'save' \
        'remove'; do
        [[ -z $place ]] || "$cli" --yes --quiet $step Game >said 2>&1 ||
            complain "$1: $step: $(<said)"
    done
    [[ -z $("$cli" list; "$cli" menu; "$cli" check --quiet) ]] || complain "$1: something is left"
}

# What is found after "$1" must be whole, and everything can be done to it.
check() {
    if ! is_old_or_new $am/InstalledDB || ! is_old_or_new $am/UserMenuTree; then
        complain "$operation, $1: a menu file is broken"
    fi
    [[ $(sqlite3 phone/ezxlocal/quiver/AppMan.db 'PRAGMA integrity_check') == ok ]] ||
        complain "$operation, $1: the database is broken"
    local place
    place=$("$cli" list --long | cut -f 8)
    if [[ $operation == delete && -z $place ]]; then
        [[ $1 == command* || ! -e phone/$game ]] || complain "$1: half an application is left"
    elif [[ $operation != delete || $1 == program* ]]; then
        diff -r -x 'Game.cfg*' "phone/$place" before/$game >difference 2>&1 ||
            complain "$operation, $1: not the whole application: $(<difference)"
        cmp -s "phone$place/Game.cfg" before/$game/Game.cfg ||
            cmp -s "phone$place/Game.cfg" "after$place/Game.cfg" ||
            complain "$operation, $1: the descriptor is broken"
    fi
    go_on "$operation, $1"
}

# The calls in the file `calls` that change something: "name:when=N", N counting the calls of that
# name.
changing_calls() {
    awk -F'(' '
        { count[$1]++ }
        !started++ || $1 == "openat" && !/O_CREAT/ || /^write\([12],/ { next }
        /^[a-z0-9]+\(/ { print $1 ":when=" count[$1] }' calls
}

# Runs "$@" once for each of these calls, which it finds in CALL and is to be killed at.
sweep() {
    local what=$1 calls status
    shift
    rm -rf phone
    cp -a before phone
    CALL='' "$@" >said 2>&1
    calls=$(changing_calls)
    [[ -n $calls ]] || complain "$operation, $what: nothing to kill it at"
    for CALL in $calls; do
        rm -rf phone killed
        cp -a before phone
        status=0
        "$@" >said 2>&1 || status=$?
        [[ $status == 137 || -e killed ]] || complain "$operation, $what: not killed at $CALL"
        check "$what killed at $CALL"
    done
    echo "$operation: $what killed at $(wc -w <<<"$calls") calls"
}

run_traced() {
    timeout 60 strace -o calls -e trace="$changing" ${CALL:+-e inject="${CALL/:/:signal=KILL:}"} \
        "$cli" --yes --quiet ${commands[$operation]}
}

run_with_traced_command() { PATH="$work/bin:$PATH" do_it "$operation"; }

mkdir bin
for command in mv rm; do
    cat >bin/$command <<END
#!/bin/bash
# Traces the system's command; when that is killed, the shell goes with it, or the whole program.
PATH=\${PATH#*:} strace -o "$work/calls" -e trace="$changing" \
    \${CALL:+-e inject="\${CALL/:/:signal=KILL:}"} $command "\$@" || {
    touch "$work/killed"
    [ "\$TOGETHER" = no ] || kill -9 \$(ps -o ppid= \$PPID)
    kill -9 \$PPID
}
END
    chmod +x bin/$command
done

export CALL='' TOGETHER=no
for operation in register unregister rename move delete; do
    prepare
    sweep program run_traced
    [[ $operation == [md]* ]] || continue
    TOGETHER=no sweep command run_with_traced_command
    TOGETHER=yes sweep 'command and program' run_with_traced_command
done
passed
