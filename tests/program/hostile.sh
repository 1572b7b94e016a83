#!/bin/bash
# Broken tools and files, hostile names and refused roots in the real program: every run ends, says
# what is wrong, and leaves alone what it has no business with.
# hostile.sh BUILD-FOLDER 7Z
[[ ! -w /dev/shm ]] || export TMPDIR=/dev/shm # where no file system has to be waited for
source "$(dirname "$(readlink -f "$0")")/lib.sh"

apps=root/ezxlocal/download/mystuff/quiver
db=root/ezxlocal/quiver/AppMan.db
am=root/ezxlocal/download/appwrite/am

# archived STATUS MESSAGE SCRIPT: what the user is told, and the archiver's status (none
# where it is not run), when the archiver is that script.
archived() {
    printf '#!/bin/sh\n[ $1 = x ] || exit\n%s\n' "$3" | install -m 755 /dev/stdin archiver
    start 0 env QUIVER_ARCHIVER="$work/archiver" "$quiver" x a.zpk
    said=$3
    [[ $(sed -n 's/^DEBUG:: Command executed returned //p' out) =~ ^($1)$ ]] ||
        complain "the status of: $3: $(tail -n 3 out)"
    has err "$2"
    only_changed
}

check_archivers() {
    touch a.zpk
    answers=$'y\n1\n'
    remember
    archived 1 $'Error\nno room\nreally' 'echo no room; echo really >&2; exit 1'
    archived '0|137' '' 'kill -9 $$'
    archived 2 Error "tee $work/sent </dev/urandom | head -c 3000000; exit 2"
    tail -c 3000000 out | cmp - <(head -c 3000000 sent) || complain 'an output of any bytes'
    rm a.zpk
    mkfifo a.zpk
    remember
    archived '' 'This is not a regular file.' 'exit 0'
    rm a.zpk
}

# broken STATE...: a file in every state: the listing still comes, from what is left.
broken() {
    local state
    for state; do
        cp -a "$file" kept
        eval "${state//F/$file}"
        remember
        start 0 "$quiver" x "$option"
        said="${state//F/$file}"
        [[ $(tail -n 1 out) == "$last" ]] || complain "no end after $said"
        only_changed
        rm -r "$file"
        mv kept "$file"
    done
}

check_files() {
    local file option=--list-apps-menu-registered last='DEBUG:: [List END]'
    for file in $am/{InstalledDB,UserMenuTree} \
        root/ezx_user/download/appwrite/{am/BuiltInDB,setup/ezx_system.cfg} \
        root/ezxlocal/quiver/quiver.custom; do
        broken 'head -c 200000 /dev/urandom >F' 'rm F; mkdir F' 'rm F; mkfifo F' \
            'rm F; ln -s /dev/zero F' 'rm F; ln -s F F' 'head -c 50000000 /dev/zero >>F'
    done
    file=root/etc/mtab
    broken 'head -c 200000 /dev/urandom >F' 'rm F; mkdir F'
    file=$db option=--list-apps-in-db last=$'\tParametro [2] = --list-apps-in-db'
    broken 'rm F; mkdir F' 'rm F; mkfifo F' 'seq 9999 >F' 'truncate -s 5000 F'
}

check_roots() {
    mkdir 'a b'
    QUIVER_ROOT='a b' start 1 "$quiver" --install
    has err "quiver: QUIVER_ROOT '"
    rmdir 'a b' || complain 'something in the folder'
    mkdir 'with blanks'
    mv root 'with blanks/телефон'
    ln -s 'with blanks/телефон' root
    QUIVER_ROOT=./root/ start 0 "$quiver" --list-apps-menu-registered
    has out Sudoku
}

names=("'" '"' ' ' -rf -o.. @x '*' '[a]' '$(touch harm)' '`touch harm`' '\n' $'\n' $'\x1b[2J'
    ... '~' '%1 %s' '; touch harm;' $'\xff\xfe' $'\xed\xa0\x80' Игра $'e\u0301' $'\u202Egpj' '👩🏽‍🚀'
    "$(printf 'x%.0s' {1..242})" .cfg "it's *" $'-\n')

# do_all STATUS PLACE COMMAND... -- OPTION...: to all applications, which lie there. Everything
# agrees afterwards.
do_all() {
    local wanted=$1 place=$2 command=()
    shift 2
    while [[ $1 != -- ]]; do
        command+=("$1")
        shift
    done
    start "$wanted" "$build/cli/quiver" --yes "${command[@]}" "${names[@]/#/"$place/"}" "${@:2}"
    start 0 "$build/cli/quiver" check
}

# Those with a single quote in their names stay where they are, and in the menu where they are in it.
everything() {
    local name at=/ezxlocal/download/mystuff/quiver
    do_all 0 $at menu add --
    do_all 1 $at save --
    for name in "${names[@]}"; do
        start 0 "$build/cli/quiver" rename "$at/$name" New
    done
    do_all 1 $at move -- --to card
    do_all 1 /mmc/mmca1/quiver move -- --to phone
    do_all 0 $at menu remove --
    do_all 1 $at remove --
}

# Applications of any name are installed from packages of that name, and everything is done to them.
check_names() {
    local name i packages=root/ezxlocal/download/mystuff/zpk_files
    mkdir -p made here $apps/Bystander
    printf 'Name = Bystander\nExec = run\n' >$apps/Bystander/Bystander.cfg
    touch $apps/Bystander/run
    chmod +x $apps/Bystander/*
    remember
    for i in "${!names[@]}"; do
        name=${names[i]}
        mkdir "made/$name"
        printf 'Name = %s\nExec = run\n' "$i" >"made/$name/$name.cfg"
        echo "$name" >"made/$name/run"
        (cd made && "$seven_zip" a -t7z -bso0 -bsp0 -spd -- ../here/p.zpk "./$name")
        [[ $name == *\'* ]] || mv here/p.zpk "here/$name.zpk"
        start 0 env -C here "$quiver" x "$(ls -A here)"
        has err Success
        diff -r "made/$name" "$apps/$name" || complain "what was installed of ${name@Q}"
        rm here/*.zpk 2>/dev/null || rm here/.*.zpk
    done
    everything
    for name in "${names[@]}"; do
        if [[ $name == *\'* ]]; then
            remove "$apps/$name"
            continue
        fi
        "$seven_zip" x -y -spd -bso0 -bsp0 -ounpacked "$packages/$name.zpk"
        diff -r "made/$name" "unpacked/$name" || complain "what was saved of ${name@Q}"
        rm "$packages/$name.zpk"
    done
    only_changed AppMan.db
    [[ -z $(find . -name harm) ]] || complain 'a shell has read a name'
}

new_phone
check_archivers
check_files
answers=$'y\n1\n'
check_names
check_roots
passed
