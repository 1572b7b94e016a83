"""The phone's system plays a desktop: what the kernel tells of a card in a slot makes it the memory card
of a user's own phone, which is a folder in his home."""

import sys
import tempfile

from card import due, wait_for
from machine import Phone

# Without the folders of a phone, as on any other machine.
DESKTOP = "umount /ezxlocal; HOME=/tmp/home exec /usr/phone/cli/quiver \"$@\""
QUIVER = "unshare -m sh /tmp/desktop"
PACKAGE = "/run/media/card/download/torch-1.0.zpk"
MOUNT = "mount -t vfat -o utf8,umask=000 /dev/mmcblk0 /run/media/card"
ENTRY = "/tmp/home/.local/share/applications/quiver-*.desktop"
CAN_START = f"[ -x \"$(sed -n 's/^TryExec=//p' {ENTRY})\" ] && echo yes || echo no"


def says(phone, command, text):
    said = phone.run(f"{QUIVER} {command}")
    due(text in said, f"{command}: no '{text}' in {said!r}")


def put_in(phone):
    phone.insert_card()
    wait_for(phone, "ls /dev/mmcblk0 2>&1", "/dev/mmcblk0", "the kernel has no card")
    due(phone.run(MOUNT) == "", "the card cannot be mounted")


def take_out(phone):
    phone.pull_card()
    wait_for(phone, "ls /dev/mmcblk0 2>/dev/null", "", "the kernel still has the card")
    phone.run("umount -l /run/media/card")


def road(build):
    """From a removable storage into the menu of a session, and out and in with the storage."""
    with tempfile.TemporaryDirectory() as folder:
        with Phone(build, folder, options=["START=/bin/true"]) as phone:
            phone.run(f"echo '{DESKTOP}' >/tmp/desktop; mkdir /tmp/home;"
                      f" mkdir -p /run/media/card; {MOUNT}")
            says(phone, f"install --yes --to card {PACKAGE}", "Torch 1.0 is on the card.")
            due("torch" in phone.run("ls /run/media/card/quiver/Torch"), "nothing is on the storage")
            says(phone, "menu add --yes Torch", "Torch is in the phone's menu.")
            due(phone.run(CAN_START) == "yes", f"the session does not show it: {phone.run(CAN_START)}")
            take_out(phone)
            listed = phone.run(f"{QUIVER} list")
            due("NAME" in listed and "Torch" not in listed, f"without its storage: {listed}")
            due(phone.run(CAN_START) == "no", "the session shows it without its storage")
            put_in(phone)
            says(phone, "list", "Torch")
            due(phone.run(CAN_START) == "yes", "the session does not show it again")
            says(phone, "move --yes Torch --to phone", "Torch is on the phone.")
            says(phone, "menu remove --yes Torch", "Torch is out of the phone's menu.")
            due(phone.run(f"ls {ENTRY} 2>/dev/null") == "", "its entry is left")
    print("a card in a slot is the card of a user's own phone, and comes and goes", flush=True)


if __name__ == "__main__":
    road(sys.argv[1])
