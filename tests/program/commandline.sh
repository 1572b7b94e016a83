#!/bin/bash
# The command line, on a phone with a card and six applications: a transcript of what is typed and
# what comes of it. commandline.sh BUILD-FOLDER 7Z
#   $ COMMAND   quiver with these arguments, or another command behind "!"
#   ? STATUS    its exit status, where that is not 0
# All that a command prints stands below it; what differs from run to run has a name instead.
source "$(dirname "$(readlink -f "$0")")/lib.sh"
export QUIVER_ARCHIVER=$seven_zip PATH=$build/cli:$PATH
memory=root/ezxlocal/download/mystuff
card=root/mmc/mmca1
system=root/ezxlocal/quiver
am=root/ezxlocal/download/appwrite/am
export memory card system am

# application FOLDER NAME VERSION
application() {
    mkdir -p "$1"
    printf '%s\n' "Name = $2" 'Author = A' "Version = $3" 'Exec = run' 'Icon =' 'Comment = C' \
        >"$1/$1.cfg"
    printf '#!/bin/sh\n' >"$1/run"
    chmod +x "$1/run"
}

# package FILE FOLDER NAME VERSION
package() {
    application "${@:2}"
    quiver --quiet pack "$2" -o "$1"
    rm -r "$2"
}

# completions WORD...: of the last one
completions() {
    source "$repository/packaging/completion.bash"
    COMP_WORDS=(quiver "$@")
    COMP_CWORD=$#
    _quiver
    printf '%s\n' "${COMPREPLY[@]}" | sort
}

named() {
    sed -E "s|$work|WORK|g; s|$seven_zip|7Z|g; s/8e10aded-f8ee-[0-9a-f-]{22}/UUID/g
        s/, process [0-9]+/, process N/"
}

# Runs the commands of a transcript and prints the transcript of that.
play() {
    local line status
    while IFS= read -r line; do
        [[ $line == '$ '* ]] || continue
        printf '%s\n' "$line"
        line=${line#'$ '}
        [[ $line == '! '* ]] && line=${line#'! '} || line="quiver --root root $line"
        status=0
        eval "$line" </dev/null >printed 2>&1 || status=$?
        named <printed
        [[ $status == 0 ]] || printf '? %s\n' "$status"
    done
}

quiver new --quiet root
package dice-1.zpk Dice Dice 1.0
package dice-2.zpk Dice Dice 2.0
package torch.zpk Torch Torch 1.0~rc1
package other.zpk Torch2 Torch 1.0
application "It's" Quoted 1 # which no command could name, and so no package of `pack`
"$seven_zip" a -bso0 -bsp0 -t7z quote.zpk "It's"
mkdir Dusk Up
echo dark >Dusk/skin.ini
"$seven_zip" a -bso0 -bsp0 -t7z dusk.zsk Dusk
"$seven_zip" a -bso0 -bsp0 -t7z none.zpk Dusk
touch evil
(cd Up && "$seven_zip" a -bso0 -bsp0 -t7z ../evil.zpk ../evil -spf2)
"$seven_zip" rn -bso0 -bsp0 evil.zpk evil ../evil
head -c 100 dice-1.zpk >damaged.zpk

cat >wanted <<'END'
$ list
$ install torch.zpk --to card
quiver: nothing was done: there is no terminal to ask on, and no --yes
? 1
$ --yes install torch.zpk
quiver: torch.zpk: say where to with --to
? 1
$ --yes install --to phone dice-1.zpk damaged.zpk none.zpk nothing.zpk evil.zpk quote.zpk
quiver: WORK/damaged.zpk: this is no package, or a damaged one
quiver: WORK/none.zpk: holds no application: there is no Dusk/Dusk.cfg in it
quiver: WORK/nothing.zpk: No such file or directory
quiver: WORK/evil.zpk: The package would write outside its own folder. It was not installed.
Dice 1.0 is on the phone.
Quoted 1 is on the phone.
? 1
$ --yes install --to card torch.zpk dusk.zsk other.zpk
Torch 1.0~rc1 is on the card.
dusk.zsk is in /mmc/mmca1/skins.
Torch 1.0 is on the card.
$ --yes --quiet install --to ext dusk.zsk
$ ! ls root/mmc/mmcb1/skins $card/skins $card/quiver/Torch
root/mmc/mmca1/quiver/Torch:
Torch.cfg
run

root/mmc/mmca1/skins:
Dusk

root/mmc/mmcb1/skins:
Dusk
$ list
Dice	1.0	phone	Dice	
Quoted	1	phone	It's	
Torch	1.0~rc1	card	Torch	
Torch	1.0	card	Torch2	
$ list --place card --long
Torch	1.0~rc1	card	Torch		A	UUID	/mmc/mmca1/quiver/Torch
Torch	1.0	card	Torch2		A	UUID	/mmc/mmca1/quiver/Torch2
$ info Torch
quiver: Torch: fits 2 applications, /mmc/mmca1/quiver/Torch and /mmc/mmca1/quiver/Torch2; name one by its path
? 1
$ info Dice --json
{
    "application": {
        "author": "A",
        "bytes": 77,
        "comment": "C",
        "exec": "run",
        "files": 2,
        "folder": "Dice",
        "icon": "",
        "menu": false,
        "name": "Dice",
        "path": "/ezxlocal/download/mystuff/quiver/Dice",
        "place": "phone",
        "uuid": "UUID",
        "version": "1.0"
    }
}
$ info dice-2.zpk
File:       WORK/dice-2.zpk
Name:       Dice
Version:    2.0
Author:     A
Comment:    C
Folder:     Dice
Size:       77 bytes in 2 files
Installing: would replace the older 1.0
$ upgrade --dry-run . --json
quiver: WORK/damaged.zpk: this is no package, or a damaged one
quiver: WORK/evil.zpk: The package would write outside its own folder. It was not installed.
quiver: WORK/none.zpk: holds no application: there is no Dusk/Dusk.cfg in it
{
    "upgrades": [
        {
            "file": "WORK/dice-2.zpk",
            "folder": "Dice",
            "from": "1.0",
            "to": "2.0"
        }
    ]
}
? 1
$ --yes upgrade dice-1.zpk dice-2.zpk torch.zpk
Dice 2.0 is on the phone.
$ upgrade dice-1.zpk
Nothing is newer than what is installed.
$ menu add Dice Torch2 nothing
quiver: nothing: there is no such application
Dice is in the phone's menu.
Torch is in the phone's menu.
quiver: the phone shows it when its menu has started again
? 1
$ menu
Dice	UUID
Torch	UUID
$ rename /mmc/mmca1/quiver/Torch2/ 'Big Torch'
Torch is called Big Torch.
$ move 'Big Torch' Dice --to phone
Big Torch is on the phone.
Dice is on the phone.
$ list --menu
Big Torch	1.0	phone	Torch2	menu
Dice	2.0	phone	Dice	menu
$ ! grep -E '^(Name|Directory)' $am/InstalledDB
Directory = /ezxlocal/download/mystuff/quiver/Dice
Name = Dice
Directory = /ezxlocal/download/mystuff/quiver/Torch2
Name = Big Torch
$ menu remove Dice
Dice is out of the phone's menu.
quiver: the phone shows it when its menu has started again
$ ! completions --root root remove D
Dice
$ ! completions ins; completions install di; completions install --to ca; completions check --re
install
dice-1.zpk
dice-2.zpk
card
--repair
$ save Dice Torch2
WORK/root/ezxlocal/download/mystuff/zpk_files/Dice.zpk
WORK/root/ezxlocal/download/mystuff/zpk_files/Torch2.zpk
$ save Dice --to Up && ls Up
WORK/Up/Dice.zpk
Dice.zpk
$ save Dice --to nowhere
quiver: 'nowhere' is neither phone nor card nor a folder
? 2
$ --yes --json remove Dice "It's"
quiver: Quoted: The name contains a single quote ('), which the command cannot take. Rename the file and try again.
{
    "results": [
        {
            "done": true,
            "subject": "Dice"
        },
        {
            "done": false,
            "reason": "The name contains a single quote ('), which the command cannot take. Rename the file and try again.",
            "subject": "Quoted"
        }
    ]
}
? 1
$ ! mkdir $memory/quiver/$'bad\xff' && cp $memory/quiver/Torch2/Torch2.cfg $memory/quiver/$'bad\xff/bad\xff.cfg' && quiver --root root list --json | grep -aE 'bad|base64'
            "folder": "bad�",
            "folder_base64": "YmFk/w==",
            "path": "/ezxlocal/download/mystuff/quiver/bad�",
            "path_base64": "L2V6eGxvY2FsL2Rvd25sb2FkL215c3R1ZmYvcXVpdmVyL2JhZP8=",
$ ! rm -r $memory/quiver/bad*
$ ! printf 'Name = a\tb\033[31m\nExec = run\n' >$memory/quiver/Torch2/Torch2.cfg && quiver --root root list --place phone | cat -A
Quoted^I1^Iphone^IIt's^I$
a bM-oM-?M-=[31m^I^Iphone^ITorch2^Imenu$
$ ! sed -i /mmc/d root/etc/mtab
$ move Torch --to phone
quiver: Torch: is on the memory card, which is not in the phone
? 1
$ move Torch2 --to card
quiver: there is no memory card in the phone
? 2
$ scan
2 applications, 0 of them new
$ check
/ezxlocal/download/mystuff/quiver/Torch2: the phone's menu has another name, program, icon or place of it
    to mend it: bring the menu in line [menu-outdated]
? 1
$ move --help
usage: quiver move APP... --to PLACE

moves them to the phone or the card
  --to phone|card                    where to
$ list --color
quiver: Unknown option 'color'; see quiver help
? 2
$ lst
quiver: there is no command 'lst'; see quiver help
? 2
$ rename Torch2
quiver: rename needs APP NAME; see quiver help
? 2
$ rename Torch2 ' '
quiver: a name is one line of at most 127 bytes, and not blank
? 2
$ list extra
quiver: list takes no arguments; see quiver help
? 2
$ install torch.zpk --to moon
quiver: 'moon' is no place: phone, card or ext
? 2
$ not.zpk
quiver: there is no file 'not.zpk'
? 1
$ list >/dev/full
quiver: not all could be written to the standard output
? 1
$ ! quiver --root nowhere list
quiver: the phone's root 'nowhere' is not a folder
? 1
$ ! quiver --root Up list
quiver: 'Up' is no phone's root: there is no folder ezxlocal in it
? 1
$ ! echo broken >$system/AppMan.db; quiver --root root info nothing --json
quiver: the phone's database cannot be used; see quiver help check
quiver: nothing: there is no such application
{
    "results": [
        {
            "done": false,
            "reason": "there is no such application",
            "subject": "nothing"
        }
    ]
}
? 1
$ scan
quiver: the phone's database cannot be used; see quiver help check
? 1
$ ! rm -r $system && quiver --root root scan
2 applications, 2 of them new
$ ! quiver new root
quiver: WORK/root cannot be made: Directory not empty
? 1
$ ! mkdir Lame && quiver pack Lame
quiver: Lame: there is no Lame.cfg in it, so it is no application [descriptor-missing]
? 1
$ ! flock $system sleep 100 & while flock -n $system true; do sleep 0.1; done; quiver --root root scan; echo $?; kill $!
quiver: another program has this phone: flock, process N
1
END
play <wanted >played
diff -a wanted played || complain 'another transcript (>) than wanted (<)'
passed
