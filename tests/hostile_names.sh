#!/bin/bash
# Applications of any name are installed from packages of that name, and everything is done to them;
# nothing else changes. hostile_names.sh BUILD-FOLDER 7Z DRIVER
[[ ! -w /dev/shm ]] || export TMPDIR=/dev/shm # where no file system has to be waited for
source "$(dirname "$(readlink -f "$0")")/console_lib.sh"
driver=$3
apps=root/ezxlocal/download/mystuff/quiver
packages=root/ezxlocal/download/mystuff/zpk_files

# Packs the folder $1 of `made` into the package $2.
pack() {
    (cd made && "$seven_zip" a -t7z -bso0 -bsp0 -spd -- "$2" "./$1")
}

# Installs the application $1, which is shown as $2. In the name of a package, a single quote is
# refused.
install_named() {
    local name=$1 package=$1.zpk
    mkdir "made/$name"
    printf 'Name = %s\nExec = run\nIcon = %s\n' "$2" "$name" >"made/$name/$name.cfg"
    printf '%s' "$name" | tee "made/$name/run" "made/$name/$name" >/dev/null
    if [[ $name == *\'* ]]; then
        pack "$name" "$work/here/quoted.zpk"
        cp here/quoted.zpk "here/$package"
        start 0 env -C here "$quiver" x "$package"
        has err $'Error\nThe name contains a single quote'
        [[ ! -e $apps/$name ]] || complain "installed nevertheless: ${name@Q}"
        rm "here/$package"
        package=quoted.zpk
    else
        pack "$name" "$work/here/$package"
    fi
    start 0 env -C here "$quiver" x "$package"
    has err Success
    diff -r "made/$name" "$apps/$name" || complain "what was installed of ${name@Q}"
    rm "here/$package"
}

new_phone
mkdir made here $apps/Bystander
printf 'Name = Bystander\n' >$apps/Bystander/Bystander.cfg
chmod +x $apps/Bystander/*
remember
answers=$'y\n1\n'
mapfile -d '' -t names < <("$repository/tests/hostile_names.py")
for i in "${!names[@]}"; do
    shown=${names[i]//$'\n'/ }
    shown=${shown:0:25}
    ((i % 2)) && shown=$i$shown || shown+=$i # no two are the same
    install_named "${names[i]}" "$shown"
done
installed=$(find $apps -mindepth 1 -maxdepth 1 -printf x)
[[ ${#names[@]} == 200 && ${#installed} == 201 ]] || complain "installed: $(ls $apps)"

start 0 env -C here SEVEN_ZIP="$seven_zip" "$driver" everything
has err '200 applications'
for name in "${names[@]}"; do
    if [[ $name == *\'* ]]; then
        remove "$apps/$name"
    else
        "$seven_zip" x -y -spd -bso0 -bsp0 -ounpacked "$packages/$name.zpk"
        diff -r "made/$name" "unpacked/$name" || complain "what was saved of ${name@Q}"
        rm "$packages/$name.zpk"
    fi
done
only_changed AppMan.db
[[ -z $(ls -A here) ]] || complain "left in the working folder: $(ls -A here)"
[[ -z $(find . -name harm) ]] || complain 'a shell has read a name'
passed
