#!/bin/bash
# The installed command: whose phone it takes, how it makes one, what it hands to the program.
# front_door.sh BUILD-FOLDER 7Z
source "$(dirname "$(readlink -f "$0")")/lib.sh"

cmake --install "$build" --prefix "$work/a place" >/dev/null
quiver=$work/a\ place/bin/quiver
export HOME=$work/home XDG_DATA_HOME="$work/my \"data\""
own=$XDG_DATA_HOME/quiver/phone
apps=ezxlocal/download/mystuff/quiver

start 0 "$quiver" --help
has out 'usage: quiver'
start 2 "$quiver" --root
has err 'needs a folder'
[[ ! -e $HOME && ! -e $XDG_DATA_HOME ]] || complain 'a phone is made before it is needed'

# Two at once, so that neither takes the other's phone away.
LC_ALL=de_DE.UTF-8 "$quiver" list >first 2>&1 &
LC_ALL=de_DE.UTF-8 "$quiver" list >second 2>&1 || complain "a first start: $(<second)"
wait $! || complain "the other first start: $(<first)"
has second 'Parametro [1] = --list-apps-in-db'
[[ $(ls "$XDG_DATA_HOME/quiver") == phone ]] || complain 'more than a phone is left'
grep -qx 'LanguageType = de' "$own"/ezx_user/download/appwrite/setup/ezx_system.cfg ||
    complain 'the language is not the session'\''s'

# The phone's customization is read, and the machine's archiver used.
mkdir Demo
printf 'Name = Demo\nExec = demo\n' >Demo/Demo.cfg
"$seven_zip" a -bso0 -bsp0 'a demo.ZPK' Demo
printf '[UNPACK_TOOLS]\nBIN_FULLPATH = /of/the/phone\n[MENU_CFGS]\nAPP_MENU_UUID = own\n' \
    >"$own/ezxlocal/quiver/quiver.custom"
answers=$'y\n1\n' start 0 "$quiver" 'a demo.ZPK'
has out "APP_MENU_UUID : 'own'"
diff -r Demo "$own/$apps/Demo" || complain 'the package is not on the own phone'

# The window ends with the command that opened it.
QUIVER_HEADLESS=1 QT_QPA_PLATFORM=offscreen "$quiver" list more >window 2>&1 &
is_listed() { "$quiver" list | grep -aq 'AppName.*Demo'; }
is_over() { ! pgrep -f "^$work/a place/lib/quiver/quiver " >/dev/null; }
wait_for 30 is_listed || complain 'the window does not find the application'
kill $! || complain "the window is closed: $(<window)"
wait $! || true
wait_for 30 is_over || complain 'the window goes on'

"$repository/scripts/phone" new "it's blank" --bare
QUIVER_ROOT=$own start 0 "$quiver" --root "it's blank" list
[[ -s "it's blank/ezxlocal/quiver/AppMan.db" ]] || complain '--root is not used'
start 1 "$quiver" --root='not there' list
has err "'not there' is not a folder"
passed
