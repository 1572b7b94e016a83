"""Pulls the memory card of the emulated phone at the wrong moment, and puts it back."""

import sys
import tempfile
import time

from machine import Failed, Phone

QUIVER = "/usr/phone/cli/quiver"
EMPTY = "ls -A /mmc/mmca1 | wc -l"  # where nothing is mounted: what was written into the phone
PHONE = "find /ezxlocal/download/mystuff/quiver -type f -exec md5sum {} + | sed 's|  .*/|  |'"
BOTH = PHONE.replace("quiver -type", "quiver /mmc/mmca1/quiver -type")
# What is going on meanwhile, and how many seconds after its start the card goes.
MEANWHILE = {
    "move to the card": ("move --yes Calculator --to card", 0.9),
    "move to the phone": ("move --yes CityMap --to phone", 0.9),
    "installation": ("install --yes --to card /mmc/mmca1/download/torch-1.0.zpk", 1.5),
    "save": ("save WorldClock --to card", 1.2),
    "delete": ("remove --yes CityMap", 0.7),
}


def due(condition, what):
    if not condition:
        raise Failed(what)


def wait_for(phone, command, answer, what):
    end = time.monotonic() + 30
    said = None
    while time.monotonic() < end:
        said = phone.run(command)
        if said == answer:
            return
        time.sleep(0.3)
    raise Failed(f"{what}: {said!r} instead of {answer!r}")


def out(phone):
    phone.pull_card()
    wait_for(phone, "grep -c mmca1 /proc/mounts", "0", "the card is still mounted")


def back(phone):
    phone.insert_card()
    wait_for(phone, "grep -c mmca1 /proc/mounts", "1", "the card is not mounted again")


def idle(phone):
    """The window is open when the card goes; its applications go and come with it."""
    phone.wait("Quiver", program="am")
    phone.press_and_wait("select")
    phone.wait("City Map", without=["Loading"])
    out(phone)
    phone.press("soft1", "9")
    phone.wait("Block Drop", without=["City Map", "Loading"])
    due(phone.run(EMPTY) == "0", "something was written where no card is")
    back(phone)
    phone.press("soft1", "9")
    phone.wait("Block Drop", "City Map", without=["Loading"])


def during(phone, operation, seconds):
    """What lay in the phone is whole afterwards, whatever became of the operation."""
    phone.run(f"{QUIVER} scan --yes --quiet")
    is_move = operation.startswith("move")
    before = set(phone.run(BOTH if is_move else PHONE).splitlines())
    phone.run(f"({QUIVER} {operation} >/tmp/said 2>&1; echo $? >/tmp/status) & :")
    time.sleep(seconds)
    out(phone)
    wait_for(phone, "ls /tmp/status 2>/dev/null", "/tmp/status", "the operation does not end")
    said = phone.run("cat /tmp/status /tmp/said | tr '\\n' ' '")
    due(phone.run(EMPTY) == "0", f"written where no card is: {phone.run('ls -A /mmc/mmca1')}")
    back(phone)
    phone.run(f"{QUIVER} scan --yes --quiet")
    after = set(phone.run(BOTH).splitlines())
    lost = before - after
    listed = phone.run(f"{QUIVER} list")
    for app in ("Block Drop", "Calculator", "World Clock"):
        due(app in listed, f"{app} is gone: {said}; {listed}")
    due(not lost, f"lost: {sorted(lost)}; {said}")
    due(not is_move or after == before, f"half of a file: {sorted(after - before)}; {said}")
    return said


def sweep(build):
    """All of it; prints what each operation says."""
    with tempfile.TemporaryDirectory() as folder, Phone(build, folder) as phone:
        idle(phone)
        print("idle: ok", flush=True)
    for name, (operation, seconds) in MEANWHILE.items():
        for delay in (seconds / 2, seconds):
            with tempfile.TemporaryDirectory() as folder:
                with Phone(build, folder, options=["START=/bin/true"]) as phone:
                    print(f"{name} at {delay:.1f} s: {during(phone, operation, delay)}", flush=True)


if __name__ == "__main__":
    sweep(sys.argv[1])
