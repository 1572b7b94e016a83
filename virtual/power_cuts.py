"""Cuts the power of the emulated phone at many moments of each operation, and boots it again."""

import concurrent.futures
import json
import os
import shutil
import subprocess
import sys
import time

from machine import Failed, Phone

QUIVER = "/usr/phone/cli/quiver"
DOWNLOADS = "/mmc/mmca1/download"
OPERATIONS = {
    "register": "menu add --yes Calculator",
    "unregister": "menu remove --yes Calculator",
    "rename": "rename Calculator Abacus",
    "move-to-card": "move --yes Calculator --to card",
    "move-to-phone": "move --yes CityMap --to phone",
    "save": "save WorldClock --to card",
    "install": f"install --yes --to card {DOWNLOADS}/torch-1.0.zpk",
    "upgrade": f"install --yes {DOWNLOADS}/games/block-drop-1.3.zpk",
    "upgrade-on-card": f"install --yes --to card {DOWNLOADS}/city-map-0.9.zpk",
    "delete": "remove --yes WorldClock",
}
BEFORE = {"unregister": "menu add --yes Calculator"}
# Beside those during the operation, cuts after it has said that it is done, in seconds: the kernel
# writes what it holds back after up to half a minute.
AFTERWARDS = (0.05, 0.3, 1, 3, 6, 12, 20, 33)
FILES = ("cd /; find ezxlocal/download/mystuff mmc/mmca1 -type f ! -name 'FSCK*.REC'"
         " -exec md5sum {} + | sort -k 2")


def state(phone):
    """What there is on the phone: the applications as Quiver lists them, and every file."""
    phone.run(f"{QUIVER} scan --yes --quiet")
    listed = json.loads(phone.run(f"{QUIVER} list --json"))
    apps = sorted((app["name"], app["path"], app["menu"]) for app in listed["applications"])
    apps += phone.run(f"{QUIVER} menu").splitlines()
    return {"apps": apps, "files": phone.run(FILES).splitlines()}


def boot(build, folder):
    """The phone without its home screen, which only takes time here."""
    return Phone(build, folder, options=["START=/bin/true"])


def mend_disks(folder):
    """What a phone does with its disks before it mounts them."""
    status = subprocess.run(["e2fsck", "-p", f"{folder}/data.img"], capture_output=True)
    if status.returncode > 1:
        raise Failed(f"e2fsck: {status.stdout.decode()}")
    status = subprocess.run(["fsck.vfat", "-a", f"{folder}/card.img"], capture_output=True)
    if status.returncode > 1:
        raise Failed(f"fsck.vfat: {status.stdout.decode()}")


def copy_disks(phone, folder):
    """The disks as a cut at this moment leaves them: what the phone has not yet written is not in
    them. The phone stands still meanwhile and then goes on, so that one run gives many cuts."""
    os.makedirs(folder)
    phone.qmp("stop")
    for disk in ("data.img", "card.img"):
        subprocess.run(["cp", "--sparse=always", phone.path(disk), folder], check=True)
    phone.qmp("cont")


def cut(build, folder, name, during):
    """Runs the operation once; gives the folders of the cuts, and the states before and after."""
    with boot(build, f"{folder}/run") as phone:
        phone.run(f"{QUIVER} scan --yes --quiet")
        if name in BEFORE:
            phone.run(f"{QUIVER} {BEFORE[name]}")
        old = state(phone)
        phone.run("sync")
        copy_disks(phone, f"{folder}/rehearsal")
        with boot(build, f"{folder}/rehearsal") as rehearsal:
            started = time.monotonic()
            rehearsal.run(f"{QUIVER} {OPERATIONS[name]}")
            takes = time.monotonic() - started
            new = state(rehearsal)
        shutil.rmtree(f"{folder}/rehearsal")
        moments = [takes * (number + 0.5) / during for number in range(during)]
        phone.run(f"({QUIVER} {OPERATIONS[name]} >/tmp/said 2>&1; touch /tmp/done) & :")
        folders = []
        passed, last = 0, time.monotonic()
        for moment in moments + [takes + after for after in AFTERWARDS]:
            time.sleep(max(0, moment - passed - (time.monotonic() - last)))
            done = "-done" if phone.run("ls /tmp/done 2>/dev/null") else ""
            passed += time.monotonic() - last
            folders.append(f"{folder}/cut-{len(folders):02d}-at-{passed:.2f}s{done}")
            copy_disks(phone, folders[-1])
            last = time.monotonic()
        said = phone.run("cat /tmp/said; ls /tmp/done")
        if not said.endswith("/tmp/done"):
            raise Failed(f"{name} was not done: {said}")
    return folders, old, new


def differences(seen, due):
    lines = [f"{'+' if item in seen[part] else '-'} {item}" for part in ("apps", "files")
             for item in seen[part] + due[part] if (item in seen[part]) != (item in due[part])]
    return "; ".join(lines)


def verdict(build, folder, old, new):
    """"old" or "new" where the phone is whole after this cut, else what is wrong."""
    try:
        mend_disks(folder)
        with boot(build, folder) as phone:
            seen = state(phone)
    except Failed as error:
        return f"FAILED {error}"
    if seen == old:
        return "old"
    if seen == new:
        return "new"
    return f"BROKEN against old: {differences(seen, old)} AGAINST NEW: {differences(seen, new)}"


def sweep(build, folder, names=tuple(OPERATIONS), during=12):
    """All cuts of the operations; gives the number of those after which something was broken."""
    broken = 0
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        for name in names:
            shutil.rmtree(f"{folder}/{name}", ignore_errors=True)
            folders, old, new = cut(build, f"{folder}/{name}", name, during)
            if old == new and not name.startswith("upgrade-on"):
                raise Failed(f"{name} changes nothing")
            verdicts = list(pool.map(lambda one: verdict(build, one, old, new), folders))
            for one, said in zip(folders, verdicts):
                if said not in ("old", "new"):
                    broken += 1
                    print(f"{os.path.basename(one)}: {said}", flush=True)
            late = sum(said == "old" and one.endswith("-done")
                       for one, said in zip(folders, verdicts))
            print(f"{name}: {len(folders)} cuts, {verdicts.count('old')} old ({late} of them after"
                  f" it was done), {verdicts.count('new')} new", flush=True)
            shutil.rmtree(f"{folder}/{name}")
    return broken


if __name__ == "__main__":
    found = sweep(sys.argv[1], sys.argv[2], tuple(sys.argv[3:]) or tuple(OPERATIONS))
    print(f"{found} cuts have left something broken")
    sys.exit(found > 0)
