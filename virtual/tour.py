"""Goes through Quiver on the emulated phone by the keys of a phone alone."""

import os

from machine import Failed

APPS = "/ezxlocal/download/mystuff/quiver"


def type_name(phone):
    """Types "Mia 2" over what the field holds: letters by repeated presses, a digit by a long one."""
    phone.press(*["clear"] * 12)
    phone.press("star")                  # Abc: the first letter is a capital
    phone.press("6")                     # M
    phone.press("4", "4", "4")           # i
    phone.press("2")                     # a
    phone.press("0")                     # the blank
    phone.press("2", hold=1200)          # the digit itself


class Tour:
    """Presses keys, waits for what is due and takes a picture of it."""

    def __init__(self, phone, pictures):
        self.phone = phone
        self.pictures = pictures
        self.taken = 0
        os.makedirs(pictures, exist_ok=True)

    def see(self, name, *texts, program="quiver", without=()):
        self.phone.wait(*texts, program=program, without=without)
        self.phone.rest()
        self.phone.wait(*texts, program=program, without=without)
        self.taken += 1
        label = f"{self.taken:02d}-{name}"
        self.phone.picture(f"{self.pictures}/{label}.png")
        print(f"{label}: {self.phone.screen()}", flush=True)

    def row(self, row, program="quiver"):
        self.phone.go_to(row, program)

    def press(self, *keys):
        """Each key after the phone has shown what the last one did."""
        for key in keys:
            self.phone.press_and_wait(key)

    def insist(self, key, *texts, program="quiver"):
        """Presses the key again where it comes while the phone still works, which drops keys."""
        for patience in (5, 5, 30):
            self.press(key)
            try:
                return self.phone.wait(*texts, program=program, patience=patience)
            except Failed:
                continue
        raise Failed(f"{key} does not lead to {texts}\n  seen: {self.phone.screen()}")

    def check(self, what, command, answer):
        """The shell of the phone has to answer so."""
        said = self.phone.run(command)
        if said != answer:
            raise AssertionError(f"{what}: {said!r} instead of {answer!r}")


def looks_around(tour):
    tour.see("home", "Main Menu", "Quiver", "Open", program="am")
    tour.press("select")
    tour.see("list", "Block Drop", "Заметки", "Options", "Exit", without=["Loading"])
    tour.press("9")
    tour.see("jump", "World Clock")
    tour.press("soft1")
    tour.see("options", "Move", "Rename", "Delete", "About", "Select", "Cancel")
    tour.press("4")
    tour.see("properties", "World Clock")
    tour.press("soft1", "soft1", "7")
    tour.see("view", "On the memory card")
    tour.press("soft2", "soft2", "soft1", "0")
    tour.see("about", "About Quiver")
    tour.press("soft1", "right")
    tour.see("browser", "/mmc/mmca1", "download", "zpk_files")


def installs(tour):
    tour.row("download")
    tour.press("select")
    tour.row("torch-1.0.zpk")
    tour.press("soft1")
    tour.see("package-options", "Install", "Cancel")
    tour.press("1")
    tour.see("install", "torch-1.0.zpk", "Yes", "No")
    tour.press("soft1")
    tour.see("place", "OK", "Cancel")
    tour.press("down", "soft1")
    tour.see("installed", "Success")
    tour.press("soft1")
    tour.phone.rest()
    tour.insist("soft1", "Show all files")
    tour.press("2")
    tour.row("dusk.zsk")
    tour.see("all-files", "dusk.zsk", without=["Loading"])
    tour.insist("left", "Torch")
    tour.see("list-again", "Torch", without=["Loading"])
    tour.check("Torch is on the card", "ls /mmc/mmca1/quiver/Torch/torch",
               "/mmc/mmca1/quiver/Torch/torch")


def renames_and_moves(tour):
    tour.row("Torch")
    tour.press("soft1", "2")
    tour.see("rename", "Torch", "OK", "Cancel")
    type_name(tour.phone)
    tour.see("typed", "Mia 2")
    tour.press("soft1")
    tour.see("renamed", "Mia 2", "Options")
    tour.row("Mia 2")
    tour.press("soft1", "1")
    tour.see("move", "Yes", "No")
    tour.press("soft1")
    tour.see("moved", "Success")
    tour.press("soft1")
    tour.check("Torch is in the phone", "ls -d /*/*/mystuff/quiver/Torch /mmc/mmca1/quiver/Torch"
               " 2>/dev/null", "/ezxlocal/download/mystuff/quiver/Torch")


def saves(tour):
    tour.row("World Clock")
    tour.press("soft1", "6")
    tour.see("save-where", "Phone memory", "Memory card")
    tour.press("1")
    tour.see("saved", "Success")
    tour.press("soft1")
    tour.check("World Clock is packed", "ls /mmc/mmca1/zpk_files", "WorldClock.zpk")


def cancels(tour):
    """The making of a package that takes long leaves nothing behind."""
    tour.phone.run(f"head -c 6000000 /dev/urandom >{APPS}/WorldClock/data")
    tour.row("World Clock")
    tour.press("soft1", "6", "2")
    tour.phone.wait("Please wait", "Cancel")
    tour.press("soft2")
    tour.see("cancelled", "Cancelled")
    tour.press("soft1")
    tour.phone.wait("Options", "Exit", without=["Please wait"])
    tour.check("no package is left", f"rm {APPS}/WorldClock/data; ls -A {APPS}/../zpk_files 2>&1 |"
               " grep -c World", "0")


def starts_from_list(tour):
    tour.row("World Clock")
    tour.press("select")
    tour.see("launched", "World Clock", program="worldclock")
    tour.press("end")
    tour.see("list-after", "World Clock", "Options")
    tour.phone.run(f"chmod a-x {APPS}/WorldClock/worldclock")
    tour.press("select")
    tour.see("cannot-start", "Error", "is not executable")
    tour.phone.run(f"chmod a+x {APPS}/WorldClock/worldclock")
    tour.press("soft1")


def asks_before_upgrade(tour):
    """The question tells what lies there already."""
    tour.press("right")
    tour.row("torch-1.0.zpk")
    tour.press("select")
    tour.see("again", "1.0, the same as installed", "Yes", "No")
    tour.press("soft2", "left")


def registers(tour):
    tour.row("Mia 2")
    tour.press("soft1", "5")
    tour.see("register", "Yes", "No")
    tour.press("soft1")
    tour.see("registered", "Success")
    tour.press("soft1", "soft2")
    tour.see("leave", "Yes", "No")
    tour.press("soft1")
    tour.see("restarted", "Success")
    tour.press("soft1")
    tour.see("home-again", "Main Menu", program="am")
    tour.press("down", "down", "down", "down", "down", "select")
    tour.see("in-menu", "Sudoku", "Mia 2", program="am")
    tour.row("Mia 2", program="am")
    tour.press("select")
    tour.see("started", "Torch", program="torch")
    tour.press("end")
    tour.see("back-home", "Mia 2", program="am")
    tour.press("end", "up", "up", "up", "up", "up", "select")


def several_at_once(tour):
    tour.see("list-at-last", "Block Drop", "Mia 2", without=["Loading"])
    tour.press("soft1", "8")
    tour.see("several", "Options", "Cancel")
    tour.press("select", "down", "select", "soft1")
    tour.see("several-options", "Select all", "Cancel")
    tour.press("2")
    tour.see("delete", "Yes", "No")
    tour.press("soft1")
    tour.see("fewer", "City Map", "Mia 2", without=["Block Drop", "Calculator", "Loading"])
    tour.press("soft2")


def refreshes(tour):
    """What another program has done shows after a refresh."""
    tour.phone.run("rm -r /ezxlocal/download/mystuff/quiver/WorldClock")
    tour.press("soft1", "9")
    tour.see("refreshed", "City Map", without=["World Clock", "Loading"])


def takes_out_of_menu(tour):
    tour.row("Mia 2")
    tour.press("soft1", "5")
    tour.see("unregister", "Yes", "No")
    tour.press("soft1")
    tour.see("unregistered", "Success")
    tour.press("soft1", "soft2", "soft1")
    tour.see("restarted-again", "Success")
    tour.press("soft1")
    tour.see("home-at-last", "Main Menu", program="am")
    tour.press("down", "down", "down", "down", "down", "select")
    tour.see("not-in-menu", "Sudoku", program="am", without=["Mia 2"])


def walk(phone, pictures):
    """All of it; leaves the phone at its home screen."""
    tour = Tour(phone, pictures)
    for part in (looks_around, installs, renames_and_moves, saves, cancels, starts_from_list,
                 asks_before_upgrade, registers, several_at_once, refreshes, takes_out_of_menu):
        part(tour)
    return tour
