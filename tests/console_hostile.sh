#!/bin/bash
# Broken tools, files and folders: every run ends, says what is wrong, and leaves alone
# what it has no business with.
source "$(dirname "$(readlink -f "$0")")/console_lib.sh"

apps=root/ezxlocal/download/mystuff/quiver
log=root/tmp/quiver_exec.log
db=root/ezxlocal/quiver/AppMan.db
app_path=$work/app
archiver=$app_path/7z
unprivileged=()
if [[ $(id -u) == 0 ]]; then
    unprivileged=(setpriv --reuid 65534 --regid 65534 --clear-groups)
fi

# A program folder whose archiver is a script of the test.
make_program() {
    chmod 755 .
    mkdir app
    cp "$quiver" "$build/bin/quiver_en.lng" app
    quiver=$app_path/quiver
    printf '[UNPACK_TOOLS]\nBIN_FULLPATH = %s\n' "$archiver" >app/quiver.custom
}

# That folder has a file of its own, which hides the phone's.
checking_lines() {
    printf 'DEBUG:: Checking for Customization file: %s/quiver.custom\n' "$app_path"
}

# acted: what was printed behind the startup.
acted() {
    sed '1,/^DEBUG:: Checking Parameters$/d' out
}

# archived STATUS MESSAGE [SCRIPT]: what the user is told, and the archiver's status (none where it
# is not run), when the archiver is that script.
archived() {
    rm -f app/7z
    # It cannot list the package, which is asked for before.
    [[ $# -lt 3 ]] || printf '#!/bin/sh\n[ $1 = x ] || exit\n%s\n' "$3" | install -m 755 /dev/stdin app/7z
    start 0 "$quiver" x a.zpk
    said="${3-no archiver}"
    [[ $(sed -n 's/^DEBUG:: Command executed returned //p' out) =~ ^($1)$ ]] ||
        complain "status of: $said $(acted)"
    has err "$2"
    [[ ! -f $log ]] || complain "the log of: $said"
    only_changed "${4-}"
}

check_archivers() {
    touch a.zpk
    answers=$'y\n1\n'
    remember
    archived 127 "Error
sh: 1: $archiver: not found"
    archived 1 $'Error\nno room\nreally' 'echo no room; echo really >&2; exit 1'
    archived 1 Error 'exit 1'
    [[ $(tail -n 1 err) == '' ]] || complain "an error text without a reason: $(<err)"
    archived 255 Error 'exit 255'
    archived 0 Success 'exit 0'
    archived 128 Success 'exit 128'
    archived '0|137' '' 'kill -9 $$'
    archived 3 Error 'yes 0123456789abcde | head -c 10000000; exit 3'
    [[ $(stat -c %s out) -gt 10000000 ]] || complain 'a long output is not there to its end'
    archived 2 Error "tee $work/sent </dev/urandom | head -c 3000000; exit 2"
    tail -c 3000000 out | cmp - <(head -c 3000000 sent) || complain 'an output of any bytes'
    archived 9 $'Error\nread' 'cat; read -r x || echo read; exit 9'
    archived 5 Error "rm $log; exit 5"
    archived 6 Error "rm $log; mkdir -p $log/x; exit 6" quiver_exec.log
    unlogged="$work/$log cannot be written. Nothing was done."
    archived '' "$unlogged" 'exit 0' quiver_exec.log
    rm -r $log
    printf '#!/bin/sh\n' >app/7z
    archived 127 Error

    rm -r root/tmp
    archived 0 Success 'exit 0'
    rm -r root/tmp
    touch root/tmp
    archived '' "$unlogged" 'exit 0' ' root/tmp '
    rm root/tmp a.zpk

    mkfifo a.zpk
    remember
    start 0 "$quiver" x a.zpk
    has err 'This is not a regular file.'
    [[ $(acted) != *'Install ZPK ('* ]] || complain "asked about a pipe: $(acted)"
    only_changed ''
    rm a.zpk
}

# database COMMANDS [CHANGES]: with the database as the commands leave it, `database_lines` come at
# the start and `listed` behind the command line.
database() {
    new_phone
    sqlite3 $db "INSERT INTO AppReg VALUES(1, '{u}', 'A', '/p', 0, NULL)"
    cd "${db%/*}"
    eval "$1"
    cd "$work"
    remember
    start 0 "${as[@]}" "$quiver" --list-apps-in-db
    { beginning --list-apps-in-db && printf "%s${listed:+\n}" "$listed"; } | same out
    only_changed "${2-}"
}

# Another program has the database for itself until it reads the end of its input.
lock_database() {
    coproc sqlite3 AppMan.db
    echo 'BEGIN EXCLUSIVE; SELECT 1;' >&"${COPROC[1]}"
    read -r <&"${COPROC[0]}"
}

check_databases() {
    local as=() listed='' database_lines
    local none="DEBUG:: Can't open Applications database: unable to open database file"
    local opened='Application Database Opened' created='DEBUG:: Creating Application Database
'
    database_lines=$none
    database 'rm AppMan.db; mkdir AppMan.db'
    database 'rm AppMan.db; ln -s nowhere/at/all AppMan.db'
    database 'rm AppMan.db; ln -s AppMan.db AppMan.db'
    database_lines=${none/unable*/disk I/O error}
    database 'rm AppMan.db; mkfifo AppMan.db'
    database_lines="${created}DEBUG:: Error executing Init Script
$opened"
    database 'seq 9999 >AppMan.db'
    database 'head -c 200000 /dev/urandom >AppMan.db'
    database 'truncate -s 5000 AppMan.db'
    database lock_database
    eval "exec ${COPROC[1]}>&-"
    database_lines=$opened
    database "rm AppMan.db; sqlite3 AppMan.db 'CREATE TABLE theirs(x)'"

    local heading='DEBUG:: List Applications in DataBase
DEBUG:: [List START]' end='DEBUG:: [List END]'
    listed="$heading
$end"
    database 'printf %4096s | dd status=none of=AppMan.db bs=4096 seek=1 conv=notrunc'
    database_lines=$created$opened
    database ': >AppMan.db' AppMan.db
    database 'rm AppMan.db; ln -s moved.db AppMan.db' moved.db
    listed="$heading
DEBUG:: ==========================================
DEBUG:: UUID    : {u}
DEBUG:: AppName : A
DEBUG:: PathName: /p
DEBUG:: Location: 0
$end"
    database_lines=$opened
    as=("${unprivileged[@]}")
    database 'chmod 444 AppMan.db; chmod 555 .'
    listed=''
    database_lines=$none
    database 'chmod 0 AppMan.db'
}

# Every file that is read at the start, in every state: the listing still comes, from what is left.
check_files() {
    local file state as am=root/ezxlocal/download/appwrite/am
    for file in app/quiver_en.lng app/quiver.custom $am/{InstalledDB,UserMenuTree} \
        root/ezx_user/download/appwrite/{am/BuiltInDB,setup/ezx_system.cfg} root/etc/mtab; do
        for state in ': >F' 'head -c 200000 /dev/urandom >F' 'truncate -s -1 F' 'rm F; mkdir F' \
            'rm F; mkfifo F' 'rm F; ln -s /dev/zero F' 'rm F; ln -s F F' 'chmod 0 F' \
            'seq -f "key%.0f = value" 1000000 >>F' 'head -c 50000000 /dev/zero >>F'; do
            [[ $file$state != */mtab*@(zero|fifo)\ F ]] || continue # the phone's own, never so
            cp -a $file kept
            eval "${state//F/$file}"
            as=()
            [[ $state != chmod* ]] || as=("${unprivileged[@]}")
            remember
            start 0 "${as[@]}" "$quiver" x --list-apps-menu-registered
            said="${state//F/$file}"
            has out 'DEBUG:: [List START]'
            [[ $file == $am/* ]] || has out 'Name: Sudoku,'
            [[ $(tail -n 1 out) == 'DEBUG:: [List END]' ]] || complain "no end after $said"
            only_changed
            rm -r $file
            mv kept $file
        done
    done
}

# is_refused FOLDER: it cannot play the phone's root.
is_refused() {
    QUIVER_ROOT=$1 start 1 "$quiver" --install
    [[ ! -s out ]] || complain "output on the phone $1: $(<out)"
    has err "quiver: QUIVER_ROOT '"
}

# is_taken FOLDER: it plays the phone's root, and packages go there.
is_taken() {
    QUIVER_ROOT=$1 start 0 "$quiver" x good.zpk
    has err Success
    cmp Demo/data $apps/Demo/data || complain "the package on the phone $1"
    [[ $(QUIVER_ROOT=$1 "$quiver" x --list-apps-menu-registered) == *Sudoku* ]] ||
        complain "the listing of the phone $1"
    rm -r $apps/Demo
}

check_roots() {
    local name
    new_phone
    mkdir Demo
    echo data >Demo/data
    "$seven_zip" a -bso0 -bsp0 good.7z Demo
    mv good.7z good.zpk
    rm -f app/7z
    ln -s "$seven_zip" app/7z
    for name in 'a b' "a'b" 'a"b' 'a;b' '$(id)' '`id`' $'a\nb' 'a*b' '~' 'a\b' '{a,b}' '-a b'; do
        mkdir -- "$name"
        is_refused "$work/$name"
        is_refused "$name"
        rmdir -- "$name" || complain "something in the folder $name"
    done
    for name in nowhere good.zpk nowhere/at/all /dev/null/x; do
        is_refused "$name"
    done
    [[ ! -e nowhere ]] || complain 'a phone was made'

    for name in root ./root/ root/../root// "$work/./root"; do
        is_taken "$name"
    done
    mkdir 'with blanks'
    mv root 'with blanks/телефон'
    ln -s 'with blanks/телефон' root
    is_taken "$work/root"
    mv 'with blanks/телефон' телефон
    ln -sfn телефон root
    is_taken телефон
    cd телефон
    QUIVER_ROOT=. timeout 20 "$quiver" --list-apps-menu-registered >"$work/out"
    cd "$work"
    has out Sudoku
}

new_phone
make_program
check_archivers
check_databases
check_files
check_roots
passed
