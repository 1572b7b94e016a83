#!/bin/bash
# Looks through the built packages, starts every program and makes phones with scripts/phone.
# demo_test.sh BUILD-FOLDER 7Z
set -euo pipefail
export LC_ALL=C.UTF-8 QT_QPA_PLATFORM=offscreen QUIVER_BUILD=$1
seven_zip=$2
repository=$(dirname "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")")
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
failures=0

complain() {
    printf 'FAILED: %s\n' "$1"
    failures=$((failures + 1))
}

# expect STATUS TEXT COMMAND...: the command ends so and says so.
expect() {
    local status=0 wanted=$1 text=$2 output
    shift 2
    output=$("$@" 2>&1) || status=$?
    [[ $status == "$wanted" ]] || complain "status $status instead of $wanted: $*"
    [[ $output == *"$text"* ]] || complain "no \"$text\" in the answer to $*: $output"
}

# value FILE KEY
value() { sed -n "s/^$2 = //p" "$1"; }

check_application() {
    local folder=$1 name cfg line
    name=$(basename "$folder")
    cfg=$folder/$name.cfg
    [[ $(sed 's/ = .*//' "$cfg" | paste -sd ' ') == 'Name Author Version Exec Icon Comment' ]] ||
        complain "the keys of $cfg"
    while IFS= read -r line; do
        line=${line#* = }
        [[ -n $line && $(printf %s "$line" | wc -c) -le 127 ]] || complain "a value in $cfg: $line"
    done <"$cfg"
    [[ -s $folder/$(value "$cfg" Icon) ]] || complain "no icon in $folder"
    [[ -x $folder/$(value "$cfg" Exec) ]] || complain "no program in $folder"
}

check_packages() {
    local package name version folder programs=()
    for package in "$QUIVER_BUILD"/demo/packages/*; do
        name=$(basename "$package")
        "$seven_zip" x -bso0 -bsp0 -o"$work/$name" "$package"
        [[ $(find "$work/$name" -mindepth 1 -maxdepth 1 | wc -l) == 1 ]] ||
            complain "$name holds more than its folder"
        folder=$(echo "$work/$name"/*)
        case $name in
        *.zsk) [[ -s $folder/skin.ini ]] || complain "no skin in $name" ;;
        *)
            check_application "$folder"
            version=$(value "$folder"/*.cfg Version)
            [[ ! $name =~ -([0-9.]+)\.zpk$ || ${BASH_REMATCH[1]} == "$version" ]] ||
                complain "$name holds version $version"
            programs+=("$folder/$(value "$folder"/*.cfg Exec)")
            ;;
        esac
    done
    [[ ${#programs[@]} == 8 ]] || complain "${#programs[@]} applications instead of 8"
    check_programs "${programs[@]}"
}

# Every program has to come up and stay until it is told to end.
check_programs() {
    local program pids=()
    for program; do
        "$program" 2>"$program.log" &
        pids+=($!)
    done
    sleep 2
    for program; do
        kill "${pids[0]}" 2>/dev/null || complain "$program ended: $(<"$program.log")"
        pids=("${pids[@]:1}")
    done
}

# Every group of the two databases names itself, and every item of the menu is somewhere.
check_menu() {
    local root=$1 am=download/appwrite/am known uuid
    known=$(sed -n 's/^\[\(.*\)\]$/\1/p' "$root"/ezx*/"$am"/*)
    [[ $(sed -n 's/^\[\(.*\)\]$/\1/p' "$root"/ezx*/$am/*DB) == \
        $(sed -n 's/^AppID = {\(.*\)}$/\1/p' "$root"/ezx*/$am/*DB) ]] || complain 'an AppID'
    [[ -z $(sort <<<"$known" | uniq -d) ]] || complain 'a uuid is there twice'
    for uuid in $(value "$root/ezxlocal/$am/UserMenuTree" Items | tr ';' ' '); do
        grep -qx "$uuid" <<<"$known" || complain "the menu item $uuid leads nowhere"
    done
}

check_phones() {
    local phone=$work/links/phone with="$work/with card" without=$work/deep/without folder
    mkdir "$work/links" "$work/empty"
    ln -s "$repository/scripts/phone" "$phone"
    cd "$work"

    expect 2 'unknown option: --card' "$phone" new x --card
    expect 1 'build Quiver first' env QUIVER_BUILD="$work/empty" "$phone" new x
    [[ ! -e x ]] || complain 'a refusal left a folder behind'
    expect 0 '' env QUIVER_BUILD="$work/empty" "$phone" new empty --bare --language ru
    [[ $(value empty/ezx_user/download/appwrite/setup/ezx_system.cfg LanguageType) == ru ]] ||
        complain 'the language'
    [[ -z $(find empty -name '*.z[ps]k' -o -path '*/quiver/*.cfg') ]] || complain 'not so bare'

    expect 0 '' "$phone" new 'with card'
    expect 1 'not empty' "$phone" new 'with card'
    expect 0 '' "$phone" new "$without" --no-card
    grep -q '^/dev/mmca1 /mmc/mmca1 ' "$with/etc/mtab" || complain 'the card is not mounted'
    ! grep -q mmc "$without/etc/mtab" || complain 'a card is mounted'
    for folder in {"$with/mmc/mmca1","$without/ezxlocal/download/mystuff"}/quiver/{CityMap,Zametki} \
        {"$with","$without"}/ezxlocal/download/mystuff/quiver/{BlockDrop,Calculator,WorldClock}; do
        check_application "$folder"
    done
    [[ $(value "$with/ezxlocal/download/mystuff/quiver/BlockDrop/BlockDrop.cfg" Version) == 1.2 ]] ||
        complain 'the installed Block Drop'
    [[ $(find "$with" -name '*.z[ps]k' -printf '%f\n' | sort) == \
        $(find "$without/ezxlocal/download/mystuff/download" -name '*.z[ps]k' -printf '%f\n' | sort) ]] ||
        complain 'a phone without a card has other packages'
    [[ $(find "$with" -name '*.z[ps]k' | wc -l) == 10 ]] || complain 'not every package is there'
    [[ -x $(value "$with/ezxlocal/quiver/quiver.custom" BIN_FULLPATH) ]] || complain 'the archiver'
    [[ $(find "$with" -type d -printf '%m\n' | sort -u | paste -sd ' ') == '1777 755' ]] ||
        complain 'the modes of the folders'
    check_menu "$with"
}

check_packages
check_phones
[[ $failures == 0 ]]
