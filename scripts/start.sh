# shellcheck shell=bash
# Sourced by what starts Quiver for a user.

# Width and height of the display in `desktop`, where X tells them.
read_desktop() {
    desktop=(0 0)
    if [[ -n ${DISPLAY-} ]]; then
        read -r -a desktop < <(xdpyinfo 2>/dev/null |
            sed -n 's/^ *dimensions: *\([0-9]*\)x\([0-9]*\) .*/\1 \2/p') || desktop=(0 0)
    elif [[ -n ${WAYLAND_DISPLAY-} ]]; then
        desktop=(0 1000)
    fi
}

# Twice the size where that fits, with the display in `desktop`: a screen of 320 lines is a stamp on
# a desktop of today.
choose_scale() {
    read_desktop
    if [[ -z ${QUIVER_SCALE-} && ${desktop[1]} -ge 1000 ]]; then
        export QUIVER_SCALE=2
    fi
}

# The archiver of this machine; a phone's own files name that of the phone.
choose_archiver() {
    export QUIVER_ARCHIVER=${QUIVER_ARCHIVER:-$(type -P 7z || type -P 7zz || true)}
}

# lead_to_phone FOLDER: makes it QUIVER_ROOT. Quiver refuses a phone whose path the shell would take
# apart; a link leads to it then, until the script ends.
lead_to_phone() {
    local LC_ALL=C
    export QUIVER_ROOT=$1
    [[ ! $1 =~ ^[A-Za-z0-9/._,+=:@%-]+$ ]] || return 0
    links=$(mktemp -d /tmp/quiver-XXXXXX)
    trap 'rm -rf "$links"' EXIT
    ln -s "$1" "$links/phone"
    QUIVER_ROOT=$links/phone
}
