#!/usr/bin/env python3
"""The command line on a terminal: terminal.py BUILD-FOLDER 7Z"""
import os, pty, select, signal, subprocess, sys, tempfile, time

build, seven_zip = sys.argv[1:3]
quiver = build + "/cli/quiver"
work = tempfile.TemporaryDirectory()
os.chdir(work.name)
os.environ.update(QUIVER_ARCHIVER=seven_zip, QUIVER_ROOT=work.name + "/root", LC_ALL="C.UTF-8")
failures = []


def dialog(arguments, answers, limit=60, **environment):
    """The status of the command and what came to the terminal. Of the answers, each is typed when
    the text before it has come."""
    process, terminal = pty.fork()
    if process == 0:
        os.environ.update(environment)
        os.execv(quiver, [quiver] + arguments)
    printed, start, answers = b"", 0, list(answers)
    end = time.monotonic() + limit
    while time.monotonic() < end:
        if select.select([terminal], [], [], 0.05)[0]:
            try:
                printed += os.read(terminal, 4096)
            except OSError:  # the other end is closed
                break
        if answers and answers[0][0] in printed[start:].decode(errors="replace"):
            start = len(printed)
            os.write(terminal, answers.pop(0)[1])
    else:
        os.kill(process, signal.SIGKILL)
    status = os.waitstatus_to_exitcode(os.waitpid(process, 0)[1])
    return status, printed.decode(errors="replace").replace("\r\n", "\n")


def check(what, got, *wanted):
    status, printed = got
    if status != wanted[0] or any(text not in printed for text in wanted[1:]):
        failures.append(f"{what}: status {status}, {printed!r}")


subprocess.run([quiver, "--quiet", "new", work.name + "/root"], check=True)
os.mkdir("Big")
with open("Big/Big.cfg", "w") as file:
    file.write("Name = 大 Big\nVersion = 1.0\nExec = run\n")
with open("Big/run", "wb") as file:
    file.write(b"\x7fELF")
os.chmod("Big/run", 0o755)
with open("slow", "w") as file:  # an archiver that has unpacked all and does not end
    file.write(f"#!/bin/sh\n{seven_zip} \"$@\" || exit\n[ $1$2 != x-y ] || sleep 50\n")
os.chmod("slow", 0o755)
subprocess.run([quiver, "--quiet", "pack", "Big"], check=True)

check("cancelled on the way", dialog(["--yes", "install", "--to", "phone", "Big.zpk"],
                                     [("%, 1 s", b"\x03")], QUIVER_ARCHIVER=work.name + "/slow"),
      1, "Cancelled")
if os.listdir("root/ezxlocal/download/mystuff/quiver"):
    failures.append("a cancelled installation leaves something")
check("a choice and a no", dialog(["install", "Big.zpk"], [("1-2: ", b"2\n"), (": ", b"n\n")]),
      1, "1. phone\n2. card\n", "Install 1 package?\nBig.zpk: 大 Big 1.0, ", "nothing was done")
check("a choice and a yes", dialog(["install", "Big.zpk"], [("1-2: ", b"2\n"), (": ", b"y\n")]),
      0, "大 Big 1.0 is on the card.")
check("columns", dialog(["list"], [], NO_COLOR="1"), 0,
      "NAME    VERSION  PLACE  FOLDER  MENU\n大 Big  1.0      card   Big     \n")
check("colour", dialog(["list"], []), 0, "\033[1mNAME")
check("a question that is left", dialog(["remove", "Big"], [(": ", b"\x03")]), -signal.SIGINT)
check("still there", dialog(["--yes", "remove", "Big"], []), 0, "大 Big is removed.")
sys.exit("\n".join(failures) or 0)
