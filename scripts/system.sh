# shellcheck shell=bash
# Sourced by what makes a phone.

find_archiver() {
    type -P 7z || type -P 7zz
}

# make_phone_system ROOT TEMPLATES CARD LANGUAGE: makes the phone's folders and its system's files,
# with a memory card where CARD is true. There must be an archiver.
make_phone_system() {
    local root=$1 templates=$2 card=$3 language=$4 seven_zip file
    local folders=(
        etc ezxlocal ezxlocal/quiver ezxlocal/download
        ezxlocal/download/mystuff ezxlocal/download/mystuff/{quiver,skins,zpk_files}
        ezxlocal/download/appwrite ezxlocal/download/appwrite/am
        ezx_user ezx_user/download ezx_user/download/appwrite ezx_user/download/appwrite/{am,setup}
        mmc
    )
    if $card; then
        folders+=(mmc/mmca1 mmc/mmca1/{quiver,skins,zpk_files,download} mmc/mmcb1 mmc/mmcb1/skins)
    fi
    seven_zip=$(find_archiver)
    mkdir -p "$root"
    install -d -m 0755 "$root" "${folders[@]/#/"$root/"}"
    install -d -m 1777 "$root/tmp"

    for file in "$templates"/{etc/mtab,ezx*/download/appwrite/*/*,usr/phone/*/*.svg}; do
        [[ ! -e $file ]] || install -D -m 0644 "$file" "$root/${file#"$templates"/}"
    done
    if $card; then
        cat "$templates/etc/mtab.card" >>"$root/etc/mtab"
    fi
    printf '[UNPACK_TOOLS]\nBIN_FULLPATH = %s\n' "$seven_zip" >"$root/ezxlocal/quiver/quiver.custom"
    sed -i "s/^LanguageType = .*/LanguageType = $language/" \
        "$root/ezx_user/download/appwrite/setup/ezx_system.cfg"
}
