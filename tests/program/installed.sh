#!/bin/bash
# The installed command: whose phone it takes, how it makes one, what it hands to the phone's own
# program. installed.sh BUILD-FOLDER 7Z
source "$(dirname "$(readlink -f "$0")")/lib.sh"

cmake --install "$build" --prefix "$work/a place" >/dev/null
quiver=$work/a\ place/bin/quiver
export HOME=$work/home XDG_DATA_HOME="$work/my \"data\""
own=$XDG_DATA_HOME/quiver/phone
apps=ezxlocal/download/mystuff/quiver

start 0 "$quiver" --help
has out 'usage: quiver'
[[ ! -e $HOME && ! -e $XDG_DATA_HOME ]] || complain 'a phone is made before it is needed'

# Two at once, so that neither takes the other's phone away.
LC_ALL=de_DE.UTF-8 "$quiver" list >first 2>&1 &
LC_ALL=de_DE.UTF-8 "$quiver" --list-apps-in-db >second 2>&1 || complain "a first start: $(<second)"
wait $! || complain "the other first start: $(<first)"
has second 'Parametro [1] = --list-apps-in-db'
[[ $(ls "$XDG_DATA_HOME/quiver") == phone ]] || complain 'more than a phone is left'

# The language is the session's, as long as the user chooses none for his phone.
settings=$own/ezx_user/download/appwrite/setup/ezx_system.cfg
speaks() { grep -qx "LanguageType = $1" "$settings" || complain "not $1: $(<"$settings")"; }
speaks de
start 0 env LC_ALL=pl_PL.UTF-8 LANGUAGE=tlh:fr_CA:es "$quiver" list
speaks fr
start 0 env LC_ALL=C.UTF-8 LANGUAGE=es "$quiver" list
speaks fr
sed -i 's/^LanguageType = .*/LanguageType = ru/' "$settings"
start 0 env LC_ALL=de_DE.UTF-8 "$quiver" list
speaks ru
sed -i 's/^LanguageType = .*/LanguageType = fr/' "$settings"
start 0 env LC_ALL=de_DE.UTF-8 "$quiver" list
speaks de

# The phone's customization is read, and the machine's archiver used.
mkdir Demo
printf 'Name = Demo\nExec = demo\n' >Demo/Demo.cfg
"$seven_zip" a -bso0 -bsp0 'a demo.ZPK' Demo
printf '[UNPACK_TOOLS]\nBIN_FULLPATH = /of/the/phone\n[MENU_CFGS]\nAPP_MENU_UUID = own\n' \
    >"$own/ezxlocal/quiver/quiver.custom"
answers=$'y\n1\n' start 0 "$quiver" 'a demo.ZPK'
has out "APP_MENU_UUID : 'own'"
diff -r Demo "$own/$apps/Demo" || complain 'the package is not on the own phone'

# The window leaves the phone to others while nobody uses it, there is one of it, and it ends with
# the command that opened it.
QUIVER_HEADLESS=1 QT_QPA_PLATFORM=offscreen "$quiver" >window 2>&1 &
# To ask by a second window before the first is there would be to open it in its place.
is_open() { grep -q ":$(stat -c %i "$own/$apps") " /proc/locks; }
wait_for 60 is_open || complain "the window does not open: $(<window)"
[[ $(QT_QPA_PLATFORM=minimal "$quiver" 2>&1 </dev/null) == *'bereits geöffnet'* ]] ||
    complain 'a second window opens'
wait_for 30 "$quiver" scan >/dev/null || complain 'an idle window keeps the phone'
[[ $("$quiver" list) == Demo* ]] || complain 'nothing can be read beside the window'
kill $!
wait $! || true
is_gone() { ! is_open; }
wait_for 30 is_gone || complain 'the window goes on'
[[ -z $(find /tmp -maxdepth 2 -lname "$own" 2>/dev/null) ]] || complain 'links to the phone are left'
passed
