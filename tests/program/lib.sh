# shellcheck shell=bash
# Sourced by the tests of the real program, which are called as NAME.sh BUILD-FOLDER 7Z: starts the
# program without a display and looks at all that it leaves behind.
set -euo pipefail
umask 022
unset DISPLAY WAYLAND_DISPLAY QT_QPA_PLATFORM QUIVER_ROOT QUIVER_SCALE QUIVER_ARCHIVER LANG
export LC_ALL=C.UTF-8
build=$1
seven_zip=${2-}
repository=$(dirname "$(dirname "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")")")
source "$repository/scripts/wait.sh"
quiver=$build/bin/quiver
work=$(mktemp -d)
trap 'remove "$work"' EXIT
cd "$work"
mkdir -m 700 runtime
export XDG_RUNTIME_DIR=$work/runtime QUIVER_BUILD=$build
# shellcheck disable=SC2034
answers= # what is typed

# Removes a folder with all that is closed to its owner.
remove() {
    chmod -R u+rwX "$1"
    rm -rf "$1"
}

# Counts also within a pipeline.
complain() {
    printf 'FAILED: %s\n' "$*" | tee -a "$work/failures"
}

# The status of the whole test.
passed() {
    [[ ! -e $work/failures ]]
}

# start STATUS COMMAND...: the command ends so. Its outputs are in the files `out`, which it sees as
# a pipe, and `err`; `said` is its command line.
start() {
    local status=0 wanted=$1
    shift
    said=${*@Q}
    printf %s "$answers" >in
    timeout -k 5 100 "$@" <in 2>err | cat >out || status=${PIPESTATUS[0]}
    [[ $status =~ ^($wanted)$ ]] ||
        complain "status $status instead of $wanted: $said$(tail -n 20 out err)"
}

# same FILE: its whole content is what comes on standard input.
same() {
    diff -a - "$1" >difference ||
        complain "unexpected (>) or missing (<) in $1 of $said: $(<difference)"
}

# has FILE TEXT: the text is in the file.
has() {
    [[ $(tr -d '\0' <"$1") == *"$2"* ]] || complain "no \"$2\" in $1 of $said: $(tail -n 20 "$1")"
}

# A phone with a card, nothing installed, and a database.
new_phone() {
    [[ ! -e root ]] || remove root
    "$repository/scripts/phone" new "$work/root" --bare
    export QUIVER_ROOT=$work/root
    "$quiver" --install >out
}

# Everything in the phone: kind, mode and name, and the files' contents.
listing() {
    {
        find root -printf '%M %p %l\n' || :
        find root -type f -readable -exec sha256sum {} + || :
    } 2>&1 | LC_ALL=C sort
}

remember() {
    listing >before
}

# Nothing in the phone has changed since `remember`, apart from lines that match $1.
only_changed() {
    listing | diff -a before - | grep -a '^[<>]' | grep -avE -- "${1:-^$}" >difference || return 0
    complain "the phone has changed after $said: $(<difference)"
}

# All that is printed before an option or a package is acted upon: beginning ARGUMENT...
beginning() {
    cat <<END
DEBUG:: App Name : quiver
DEBUG:: App Path : $build/bin
DEBUG:: SD exists
DEBUG:: SD extended partition exists
Application Database Opened
DEBUG:: Current LanguageType : 'en'
DEBUG:: Checking for lng file : '$build/bin/quiver_en.lng'
DEBUG:: Checking for Customization file: $build/bin/quiver.custom
DEBUG:: Checking for Customization file: /ezxlocal/quiver/quiver.custom
DEBUG:: Customization file found. Loading custom parameters
DEBUG:: UNPACK_TOOLS::BIN_FULLPATH : '$seven_zip'
DEBUG:: Checking Parameters
END
    local i=0 argument
    for argument; do
        printf '\tParametro [%d] = %s\n' $((i += 1)) "$argument"
    done
}
