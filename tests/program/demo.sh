#!/bin/bash
# Looks through the built packages, starts every program and makes phones with scripts/phone.
# demo.sh BUILD-FOLDER 7Z
source "$(dirname "$(readlink -f "$0")")/lib.sh"
export QT_QPA_PLATFORM=offscreen QUIVER_HEADLESS=1

# value FILE KEY
value() { sed -n "s/^$2 = //p" "$1"; }

check_application() {
    local cfg=$1/${1##*/}.cfg
    [[ $(sed 's/ = .*//' "$cfg" | paste -sd ' ') == 'Name Author Version Exec Icon Comment' ]] ||
        complain "the keys of $cfg"
    [[ -s $1/$(value "$cfg" Icon) && -x $1/$(value "$cfg" Exec) ]] || complain "no program in $1"
}

# Every program has to come up and stay until it is told to end.
check_packages() {
    local package folder pids=() pid
    for package in "$build"/demo/packages/*.zpk; do
        "$seven_zip" x -bso0 -bsp0 -o"packages/${package##*/}" "$package"
        folder=$(echo "packages/${package##*/}"/*)
        check_application "$folder"
        "$folder/$(value "$folder"/*.cfg Exec)" 2>>programs.log &
        pids+=($!)
    done
    [[ ${#pids[@]} == 8 ]] || complain "${#pids[@]} applications instead of 8"
    sleep 2
    for pid in "${pids[@]}"; do
        kill "$pid" 2>/dev/null || complain "a program ended: $(<programs.log)"
    done
}

check_phones() {
    local phone=$repository/scripts/phone folder item
    start 1 env QUIVER_BUILD="$work" "$phone" new x
    has err 'build Quiver first'
    start 0 "$phone" new bare --bare --language ru
    [[ $(value bare/ezx_user/download/appwrite/setup/ezx_system.cfg LanguageType) == ru ]] ||
        complain 'the language'
    start 0 "$phone" new 'with card'
    start 1 "$phone" new 'with card'
    start 0 "$phone" new without --no-card
    grep -q '^/dev/mmca1 /mmc/mmca1 ' 'with card/etc/mtab' || complain 'the card is not mounted'
    ! grep -q mmc without/etc/mtab || complain 'a card is mounted'
    for folder in {'with card/mmc/mmca1',without/ezxlocal/download/mystuff}/quiver/CityMap; do
        check_application "$folder"
    done
    folder='with card/ezxlocal/download/appwrite/am'
    for item in $(value "$folder/UserMenuTree" Items | tr ';' ' '); do
        grep -rqx "\[$item\]" 'with card'/ezx*/download/appwrite/am || complain "menu item $item"
    done
}

check_packages
check_phones
passed
