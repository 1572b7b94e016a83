#!/bin/bash
# Packages made to do harm: whatever is in them, only the folder of the application may change.
# bad_packages.sh BUILD-FOLDER 7Z
source "$(dirname "$(readlink -f "$0")")/lib.sh"
world=$work/world
apps=world/root/ezxlocal/download/mystuff/quiver

# A phone with an application, with links in it that lead out of it, and what lies around it.
make_world() {
    mkdir world
    "$repository/scripts/phone" new "$world/root" --bare
    export QUIVER_ROOT=$world/root
    mkdir -p $apps/Kept world/outside world/here
    ln -s ../../../../../../outside $apps/Kept/out
    ln -s ../../../../../../outside/file $apps/Kept/file
    ln -s ../../../../../outside $apps/Linked
    printf 'Name = Kept\n' >$apps/Kept/Kept.cfg
    echo mine | tee world/outside/file >world/here/file
    chmod -R a+x $apps # which every installation does
    "$quiver" --install >out
    settle
    cp -a world kept
    state >before
}

# The folders that every installation writes into have always the same time.
settle() {
    touch -d @0 $apps world/root/tmp
}

# Every byte of the world, and what else there is to each file.
state() {
    find world -printf '%y %m %n %U:%G %s %T@ %p %l\n' | LC_ALL=C sort
    find world -type f -exec sha256sum {} + | LC_ALL=C sort
}

# outcome: what the program made of the package is what was expected.
outcome() {
    case $expected in
    refused) has err 'The package would write outside its own folder. It was not installed.' ;;
    full) has err 'are free there. Nothing was installed.' ;;
    installed) has err Success ;;
    *) has out 'DEBUG:: Command executed returned ' ;;
    esac
    [[ $expected != @(refused|full) ]] || ! grep -aq 'Exec command' out ||
        complain "run nevertheless: $file"
}

# Installs the package and takes away what it may leave; then all must be as it was.
try() {
    local left
    start 0 env -C world/here "$quiver" x "../../packages/$file"
    outcome
    ! find $apps -mindepth 1 \( -perm /7000 -o -type p,s,c,b \) | grep . ||
        complain "special files of $file"
    for left in "$apps"/*; do
        [[ $expected != @(refused|full) && ! -L $left && ${left##*/} == @($leaves) ]] || continue
        remove "$left"
        [[ ! -e kept${left#world} ]] || cp -a "kept${left#world}" $apps
    done
    settle
    state | diff -a before - >difference || {
        complain "the world is another after $file: $(<difference)"
        remove world
        cp -a kept world
    }
}

make_world
mkdir packages
answers=$'y\n1\n'
"${0%/*}/bad_packages.py" packages "$world/outside" "$seven_zip" >table
while IFS=$'\t' read -r file expected leaves <&3; do
    try
done 3<table
printf '%d packages were tried\n' "$(wc -l <table)"
passed
