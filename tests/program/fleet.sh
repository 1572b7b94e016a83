#!/bin/bash
# A fleet of phones, filled and upgraded by the command line without a display, each damaged in a
# way of its own, checked, repaired and held against one that was not. fleet.sh BUILD-FOLDER 7Z
source "$(dirname "$(readlink -f "$0")")/lib.sh"
export QUIVER_ARCHIVER=$seven_zip PATH=$build/cli:$PATH
memory=ezxlocal/download/mystuff
apps=$memory/quiver
card=mmc/mmca1 # named by the damages
export card
db=ezxlocal/quiver/AppMan.db
am=ezxlocal/download/appwrite/am
ours=7c3e90d2-51af-4b08-9e6d-2f41c8a0b7e5

# package NAME VERSION
package() {
    mkdir -p "$1"
    printf '%s\n' "Name = $1" 'Author = A' "Version = $2" 'Exec = run' 'Icon = icon.svg' \
        'Comment = C' >"$1/$1.cfg"
    echo '<svg xmlns="http://www.w3.org/2000/svg"/>' >"$1/icon.svg"
    printf '#!/bin/sh\necho %s\n' "$2" >"$1/run"
    chmod +x "$1/run"
    quiver --quiet pack "$1" -o "$1-$2.zpk"
}

# The phone in the working directory, as a script fills it.
fill() {
    quiver --quiet new .
    export QUIVER_ROOT=$PWD
    quiver --yes --quiet install --to phone "$work"/{Ant,Bee,Cat}-1.0.zpk
    quiver --yes --quiet install --to card "$work/Dog-1.0.zpk"
    quiver --quiet menu add Ant Dog Bee
    quiver --quiet rename Bee Queen
    quiver --yes --quiet upgrade "$work"
    quiver --quiet move Ant --to card
}

sql() {
    sqlite3 "$db" "$1"
}

# uuid NAME: as the menu has it
uuid() {
    sql "SELECT trim(UUID, '{}') FROM AppReg WHERE Name = '$1'"
}

# items SED-SCRIPT: changes the list of Quiver's own folder in the menu
items() {
    sed -i "/^\[$ours\]/,\$ { /^Items/ { $1 } }" "$am/UserMenuTree"
}

# ways KIND... and what is lost: "KIND: WHAT COMMAND"; an application that is named in the second
# column cannot be given back and is put aside.
ways=(
    'row-without-folder Cat rm -r $apps/Cat'
    'link-without-row - sql "INSERT INTO App_Menu VALUES(77)"'
    'doubled-row - sql "INSERT INTO AppReg(UUID,Name,PathName,Location) SELECT \"{8e10aded-f8ee-0000-0000-000000000001}\",Name,PathName,0 FROM AppReg"'
    'doubled-link - sql "INSERT INTO App_Menu SELECT * FROM App_Menu"'
    'unusable-identifier - sql "UPDATE AppReg SET UUID = \"none\" WHERE Name = \"Cat\""'
    'unusable-identifier - sql "UPDATE AppReg SET UUID = (SELECT max(UUID) FROM AppReg)"'
    'database-unreadable - head -c 5000 /dev/urandom >$db'
    'item-without-application - items "s/$/8e10aded-f8ee-0000-0000-00000000000f;/"'
    'doubled-item - items "s/= \(.*\)/= \1\1/"'
    'glued-item - items "s/;//"'
    'unusable-item - items "s/= /= none;/"'
    'not-in-menu - items "s/=.*/=/"'
    'not-in-menu - sed -i "/^\[$(uuid Dog)\]/,/^Vendor/d" $am/InstalledDB'
    'link-missing - sql "DELETE FROM App_Menu"'
    'entry-without-item - printf "[%s]\nDirectory = /$apps/Cat\n" $(uuid Cat) >>$am/InstalledDB'
    'entry-without-application - sed -i "s/$(uuid Ant)/8e10aded-f8ee-0000-0000-00000000000a/" $am/InstalledDB'
    'menu-outdated - sed -i "s/^Exec = run/Exec = walk/" $am/InstalledDB'
    'interrupted-upgrade - mv $apps/Cat $apps/.Cat.before; mkdir $apps/Cat'
    'descriptor-missing Cat rm $apps/Cat/Cat.cfg'
    'descriptor-broken - sed -i /^Name/d $apps/Cat/Cat.cfg'
    'descriptor-broken - printf "\0" >>$apps/Cat/Cat.cfg'
    'descriptor-too-long - sed -i "s/^Comment.*/Comment = $(printf %0200d 1)/" $apps/Cat/Cat.cfg'
    'program-missing Cat rm $apps/Cat/run'
    'program-missing - mv $apps/Cat/run $apps/Cat/cat'
    'program-not-executable - chmod -x $card/quiver/Dog/run'
    'icon-unreadable - : >$apps/Cat/icon.svg'
)

# What a user has of the phone in the working directory; of a damage that can only be mended by a
# loss, the one in the ignored columns.
# shellcheck disable=SC2016
state() {
    quiver --root . list | grep -v "^$1	" | sort
    quiver --root . menu | cut -f 1 | sort
    sql 'SELECT count(*), count(DISTINCT UUID) FROM AppReg WHERE Name <> '"'$1'"
}

# try NUMBER: prints nothing where the phone is as the undamaged one afterwards
try() {
    local kind lost damage left=
    read -r kind lost damage <<<"${ways[$1]}"
    cp -a "$work/whole" "$work/phone$1"
    cd "$work/phone$1"
    export QUIVER_ROOT=$PWD
    eval "$damage"
    ! quiver check >found 2>&1 || echo "$damage: nothing is found"
    grep -qF "[$kind]" found || echo "$damage: found is $(<found)"
    quiver check --repair --quiet </dev/null >/dev/null 2>&1 && echo "$damage: mended unasked"
    quiver --yes check --repair >mended 2>&1 || echo "$damage: $(<mended)"
    left=$(quiver check) || echo "$damage: left is $left"
    cmp -s <(state "$lost") <(cd "$work/whole" && QUIVER_ROOT=$PWD state "$lost") ||
        echo "$damage: another phone than before: $(state "$lost")"
    [[ $lost == - || -e $apps-aside/$lost || $kind == row-* ]] || echo "$damage: $lost is lost"
}

for name in Ant Bee Cat Dog; do
    package "$name" 1.0
done
package Bee 1.1
package Dog 2.0
package Dog 1.9
mkdir whole
(cd whole && fill) || complain 'the phone cannot be filled'
cd whole
diff - <(QUIVER_ROOT=$PWD state -) <<END || complain 'the filled phone'
Ant	1.0	card	Ant	menu
Bee	1.1	phone	Bee	menu
Cat	1.0	phone	Cat	
Dog	2.0	card	Dog	menu
Ant
Bee
Dog
4|4
END
QUIVER_ROOT=$PWD quiver check || complain 'the filled phone does not agree with itself'
cd ..
for ((way = 0; way < ${#ways[@]}; way++)); do
    try "$way" >"result$way" 2>&1 &
done
wait
cat result* >results
[[ ! -s results ]] || complain "$(<results)"
passed
