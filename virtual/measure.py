"""What Quiver costs on the emulated phone: memory, and time as ratios to a bare list of Qt's."""

import sys
import tempfile
import time

from machine import Failed, Phone

MOST = 8 * 1024  # KB of anonymous memory
WINDOW = "/usr/phone/bin/quiver"
HELLO = "/usr/phone/bin/hello"
APPS = "/ezxlocal/download/mystuff/quiver"
GROUP = "/sys/fs/cgroup"
# One small application more, without a copy of a program.
ONE_MORE = ("mkdir {apps}/App{n}; sed 's/^Name = .*/Name = App {n}/' {apps}/Calculator/Calculator.cfg"
            " > {apps}/App{n}/App{n}.cfg; cp {apps}/Calculator/icon.svg {apps}/App{n}")


def add_apps(phone, count):
    """Applications until there are `count`."""
    one = ONE_MORE.format(apps=APPS, n="$n")
    phone.run(f"n=5; while [ $n -lt {count} ]; do n=$((n + 1)); {one}; done; sync", patience=300)


def memory_of(phone, program="quiver"):
    """Anonymous and resident memory of the program in KB."""
    said = phone.run(f"cat /proc/$(pidof {program})/smaps_rollup")
    sizes = dict(line.split(":", 1) for line in said.splitlines() if ":" in line)
    return [int(sizes[kind].split()[0]) for kind in ("Anonymous", "Rss")]


def visit_screens(phone):
    """Every screen that the window has, without doing anything to an application."""
    for keys in (("soft1", "4"), ("soft1",), ("soft1", "2"), ("soft2",), ("soft1", "7"),
                 ("soft2", "soft2"), ("soft1", "0"), ("soft1",), ("soft1", "8"), ("soft2",),
                 ("soft1", "3"), ("soft2",), ("right",), ("soft1",), ("soft2",), ("left",)):
        for key in keys:
            phone.press_and_wait(key)


def memory(build, count):
    with tempfile.TemporaryDirectory() as folder:
        with Phone(build, folder, options=["START=/bin/true"]) as phone:
            add_apps(phone, count)
        with Phone(build, folder, options=[f"START={WINDOW}"]) as phone:
            phone.wait("Exit", without=["Loading"], patience=300)
            visit_screens(phone)
            phone.wait("Exit")
            anonymous, resident = memory_of(phone)
            print(f"memory with {count} applications: {anonymous} KB anonymous,"
                  f" {resident} KB resident", flush=True)
            if anonymous > MOST:
                raise Failed(f"more than {MOST} KB")


def memory_until(phone, *words, patience=900):
    """The most anonymous and resident memory until the words are on the screen."""
    most, end = [0, 0], time.monotonic() + patience
    while not all(word in phone.words() for word in words):
        if time.monotonic() > end:
            raise Failed(f"not in time: {words}\n  seen: {phone.screen()}")
        most = [max(pair) for pair in zip(most, memory_of(phone))]
        if most[0] > MOST:
            raise Failed(f"more than {MOST} KB")
    return most


def large_package(build, megabytes=20):
    """Makes a package of an application that cannot be compressed, and installs it again."""
    sums = f"cd {APPS}/Big && md5sum * 2>&1"
    with tempfile.TemporaryDirectory() as folder:
        with Phone(build, folder, options=["START=/bin/true"]) as phone:
            phone.run(f"mkdir {APPS}/Big; cd {APPS}/Big; echo 'Name = Big' >Big.cfg;"
                      f" head -c {megabytes}000000 /dev/urandom >data; sync", 300)
        with Phone(build, folder, options=[f"START={WINDOW}"]) as phone:
            phone.wait("Big", without=["Loading"])
            phone.go_to("Big")
            before = phone.run(sums)
            for key in ("soft1", "6", "1"):
                phone.press_and_wait(key)
            print(f"making a package of {megabytes} MB: {memory_until(phone, 'Success')} KB"
                  " anonymous, resident", flush=True)
            phone.press_and_wait("soft1")
            time.sleep(1)  # the window leaves the phone to others
            phone.run("/usr/phone/cli/quiver remove --yes Big", 300)
            phone.press("up")  # the window takes the phone back and sees what has changed
            phone.wait("Block Drop", "Exit", without=["Big", "Loading"])
            phone.rest()
            phone.press_and_wait("right")
            for row in ("zpk_files", "Big.zpk"):
                phone.go_to(row)
                phone.press_and_wait("select")
            phone.wait("Yes", "No")
            phone.press_and_wait("soft1")
            phone.wait("Memory card")
            phone.press_and_wait("soft1")
            print(f"installing it: {memory_until(phone, 'Success')} KB anonymous, resident",
                  flush=True)
            if phone.run(sums) != before:
                raise Failed("it is not what it was")


def seconds_to(build, folder, program, *words):
    """From power-on to the words on the screen, and from a key to the next screen, in seconds."""
    with Phone(build, folder, options=[f"START={program}"]) as phone:
        started = time.monotonic()
        phone.wait(*words, program=program.rsplit("/", 1)[1], without=["Loading"])
        until = time.monotonic() - started
        time.sleep(2)
        started = time.monotonic()
        for _ in range(10):
            phone.press_and_wait("down")
        return until, (time.monotonic() - started) / 10


def times(build, rounds=3):
    with tempfile.TemporaryDirectory() as folder:
        totals = [0.0] * 4
        for _ in range(rounds):
            quiver = seconds_to(build, folder, WINDOW, "Block Drop")
            hello = seconds_to(build, folder, HELLO, "Application 0")
            totals = [total + one for total, one in zip(totals, quiver + hello)]
    print(f"boot to the list: {totals[0] / totals[2]:.2f} of that to a bare list of Qt's;"
          f" a key to its screen: {totals[1] / totals[3]:.2f}", flush=True)


def instructions(build, folder, program):
    """Of the processor, in all threads until the program rests: each takes a nanosecond of this
    phone's time. A control group of the kernel counts them."""
    begin = (f"mount -t cgroup2 none {GROUP}; mkdir {GROUP}/tried; "
             "QT_QPA_GENERIC_PLUGINS=evdevkeyboard:/dev/input/event1 "
             f"sh -c 'echo $$ >{GROUP}/tried/cgroup.procs; exec setsid {program}' >/dev/null 2>&1 & :")
    with Phone(build, folder, ["START=/bin/true"], extra=["-icount", "shift=0,sleep=off"]) as phone:
        phone.run(begin, 300)
        spent, last = 0, -1
        while spent == 0 or spent != last:
            last = spent
            said = phone.run(f"sleep 3; head -n 1 {GROUP}/tried/cpu.stat", 300).split()
            spent = int(said[1]) * 1000 if len(said) == 2 else 0
        return spent


def start(build, count=200):
    with tempfile.TemporaryDirectory() as folder:
        with Phone(build, folder, options=["START=/bin/true"]) as phone:
            add_apps(phone, count)
            phone.run("/usr/phone/cli/quiver scan --yes --quiet; sync", 300)
        quiver = instructions(build, folder, WINDOW)
        hello = instructions(build, folder, HELLO)
    print(f"instructions to a list of {count}: {quiver / 1e6:.0f} million,"
          f" {quiver / hello:.2f} of those of a bare list of Qt's", flush=True)


if __name__ == "__main__":
    for applications in (10, 100, 500):
        memory(sys.argv[1], applications)
    large_package(sys.argv[1])
    times(sys.argv[1])
    start(sys.argv[1])
