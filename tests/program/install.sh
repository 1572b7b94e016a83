#!/bin/bash
# Packages made by the real archiver, installed by command line: all output, all files.
source "$(dirname "$(readlink -f "$0")")/lib.sh"

apps=root/ezxlocal/download/mystuff/quiver
skins=root/ezxlocal/download/mystuff/skins
card_apps=root/mmc/mmca1/quiver
environment=()

make_packages() {
    mkdir -p Demo/data Night Other
    printf 'Name = Demo\nAuthor = Ann\nExec = demo\n' >Demo/Demo.cfg
    echo data | tee Demo/demo >Demo/data/файл
    echo dark >Night/skin.ini
    "$seven_zip" a -bso0 -bsp0 zpk.7z Demo
    "$seven_zip" a -bso0 -bsp0 zsk.7z Night
    "$seven_zip" a -bso0 -bsp0 beside.zpk Other
}

# installs PATH FOLDER: the package at PATH goes to the FOLDER that `answers` choose, and nowhere
# else; the archiver's output comes at the end.
installs() {
    local path=$1 folder=$2 safe=$1 options='' kind=ZPK content=Demo
    [[ $path == *[*?]* ]] && options=' -spd'
    [[ $path != [-@]* ]] || safe=./$path
    [[ ${path,,} == *.zpk ]] || { kind=ZSK && content=Night; }
    cp "${kind,,}.7z" "$safe"
    remember
    start 0 "${environment[@]}" "$quiver" x "$path"
    {
        beginning x "$path"
        echo "DEBUG:: $kind Installer Mode from Console"
        printf 'DEBUG:: Install %s (%s)\n' $kind "$path"
        printf "DEBUG:: Exec command ( %s x -y '%s' -o%s%s )\n" \
            "$seven_zip" "$safe" "$work/$folder" "$options"
        echo 'DEBUG:: Command executed returned 0'
        "$seven_zip" x -y -spd "$safe" -oelsewhere </dev/null
    } | same out
    only_changed " $folder/"
    diff -r $content "$folder/$content" || complain "the files of $path"
    has err " ${path##*/}"
    [[ $kind == ZSK || -x $folder/Demo/demo ]] || complain "no program from $path"
    rm -r "${folder:?}/$content" "$safe"
}

# The other applications of the chosen folder become executable, too, but no skins.
check_places() {
    touch {$apps,$card_apps,$skins}/other
    answers=$'y\n1\n'
    installs a.zpk $apps
    has err $'Demo\nAuthor: Ann\nUnpacked: '
    [[ -x $apps/other && ! -x $card_apps/other ]] || complain 'what was made executable'
    installs a.zsk $skins
    [[ ! -x $skins/other ]] || complain 'a skin was made executable'
    answers=$'maybe\nYES\n0\n4\ntwo\n2\n'
    installs a.zpk $card_apps
    answers=$' Y \r\n 3 \r\n'
    installs a.ZsK root/mmc/mmcb1/skins
    grep -qzP '1\. Phone memory, .* free\n2\. Memory card, .* free\n3\. Card, second partition, ' \
        err || complain 'the places and their free space'
}

# The archiver would take some of them for patterns and unpack what lies beside them, too.
check_names() {
    local name
    answers=$'y\n1\n'
    for name in A.ZPK '%1 %s `touch touched`;touch touched;.zpk' $'line\nend \xff.zpk' -oa.zpk \
        @a.zpk 'b*.zpk' '?eside.zpk' "$work/absolute path.zpk"; do
        installs "$name" $apps
    done
    environment=(env LC_ALL=POSIX)
    installs Пакет.zpk $apps
    environment=()

    name="it's.zpk; touch touched.zpk"
    cp zpk.7z "$name"
    remember
    start 0 "$quiver" x "$name"
    ! grep -q 'Exec command' out || complain "a command with the name $name"
    has err $'Error\nThe name contains a single quote'
    only_changed
    [[ ! -e touched ]] || complain 'a shell has read a name'
}

# refuses FILE ANSWERS...: nothing is installed with any of them.
refuses() {
    local file=$1
    shift
    for answers; do
        start 0 "$quiver" x "$file"
        ! grep -q 'Exec command' out || complain "installed with ${answers@Q}"
        only_changed
    done
}

check_refusals() {
    cp zpk.7z a.zpk
    cp zsk.7z a.zsk
    remember
    refuses a.zpk '' $'n\n' $'maybe\n1\nn\ny\n1\n' y $'y\n\n1\n' $'y\n3\n0\n-1\n1.5\n99999999999\n'
    # What is not mounted is not offered.
    echo '/dev/mmcb1 /mmc/mmcb1 vfat rw 0 0' >root/etc/mtab
    remember
    refuses a.zpk $'y\n2\n'
    refuses a.zsk $'y\n2\n'
}

# The questions are in the phone's language, and so may be the answers. Nobody reads the output.
check_language() {
    sed -i 's/^LanguageType = .*/LanguageType = de_AT/' \
        root/ezx_user/download/appwrite/setup/ezx_system.cfg
    printf 'ja\n1\n' | "$quiver" x a.zpk 2>err | head -n 1 >out
    has err "$(sed -n 's/^POP_INSTALL_ZPK_CONFIRM_TEXT = //p' "$build/bin/quiver_de.lng") a.zpk"
    [[ -x $apps/Demo/Demo.cfg ]] || complain 'with a closed output the files are not executable'
}

make_packages
new_phone
check_places
check_names
check_refusals
check_language
passed
