#!/usr/bin/python3
"""Makes packages that an installer should fear: bad_packages.py FOLDER OUTSIDE 7Z

Each comes as FOLDER/NUMBER-what.zpk or .zsk. The lines on standard output tell, divided by tabs,
its name, what is expected, and what it may leave in the folder that it is installed into, as a
pattern:
  installed  it is harmless, if odd
  tried      the archiver says what it thinks of it
  refused    nothing is run
  full       nothing is run since there is no room
OUTSIDE is the absolute path of the folder that they try to reach.
"""
import gzip
import io
import itertools
import os
import shutil
import stat
import struct
import subprocess
import sys
import tarfile
import zipfile
import zlib

folder, outside, seven_zip = sys.argv[1:]
LINK = 0o120777
CFG = ("Demo/Demo.cfg", b"Name = Demo\nIcon = ../../../../outside/file\n")
numbers = itertools.count(1)


def package(what, data, expected="refused", leaves="Demo", kind=None):
    number = next(numbers)
    kind = kind or ("zpk", "zsk")[number % 2]
    name = f"{number:03}-{what}.{kind}"
    with open(os.path.join(folder, name), "wb") as file:
        file.write(data)
    print(name, expected, leaves, sep="\t")


def tar(*entries):
    """Entries: (name, content), a mode behind them, or a type of tar with what it links to."""
    out = io.BytesIO()
    with tarfile.open(fileobj=out, mode="w", format=tarfile.GNU_FORMAT) as archive:
        for name, content, *rest in entries:
            info = tarfile.TarInfo(name)
            kind = rest[0] if rest else 0o644
            if isinstance(kind, bytes):
                info.type, info.linkname = kind, content
            elif stat.S_ISLNK(kind):
                info.type, info.linkname = tarfile.SYMTYPE, content.decode()
            else:
                info.mode, info.size = kind, len(content)
            if name.endswith("/"):
                info.type = tarfile.DIRTYPE
            archive.addfile(info, io.BytesIO(content) if info.size else None)
    return out.getvalue()


def zipped(*entries, method=8):
    """Entries: (name, content), a mode and the size that is claimed behind them."""
    body, directory = bytearray(), bytearray()
    for name, content, *rest in entries:
        name = name if isinstance(name, bytes) else name.encode()
        mode = rest[0] if rest else 0o100644
        size = rest[1] if len(rest) > 1 else len(content)
        press = zlib.compressobj(9, zlib.DEFLATED, -15)
        raw = press.compress(content) + press.flush() if method else content
        extra = struct.pack("<HHQ", 1, 8, size) if size >= 2**32 else b""
        common = struct.pack("<HHHHHIIIHH", 20, 0x800, method, 0, 33, zlib.crc32(content), len(raw),
                             min(size, 2**32 - 1), len(name), len(extra))
        directory += b"PK\1\2" + struct.pack("<H", 0x314) + common + struct.pack(
            "<HHHII", 0, 0, 0, mode << 16, len(body)) + name + extra
        body += b"PK\3\4" + common + name + extra + raw
    end = struct.pack("<HHHHIIH", 0, 0, len(entries), len(entries), len(directory), len(body), 0)
    return bytes(body + directory + b"PK\5\6" + end)


def seven(*entries, switches=()):
    """As zipped, by way of files: the archiver renames them to what no file may be called."""
    if os.path.exists("made"):
        shutil.rmtree("made")
    os.makedirs("made")
    renames = []
    for number, (name, content, *mode) in enumerate(entries):
        path = f"made/{number}"
        if mode:
            os.symlink(content, path)
        else:
            with open(path, "wb") as file:
                file.write(content)
        renames += [str(number), name]
    quiet = [*switches, "-bso0", "-bsp0", "-spd"]
    subprocess.run([seven_zip, "a", "-snl", *quiet, "made.7z", "-r", "./made/."], check=True)
    quiet = [switch for switch in quiet if switch != "-mhe"]
    subprocess.run([seven_zip, "rn", *quiet, "--", "made.7z", *renames], check=True)
    with open("made.7z", "rb") as file:
        data = file.read()
    os.remove("made.7z")
    return data


DATA = os.urandom(20000)
good = {"7z": seven(CFG, ("Demo/data", DATA)), "zip": zipped(CFG, ("Demo/data", DATA)),
        "tar": tar(CFG, ("Demo/data", DATA))}
makers = itertools.cycle([seven, zipped, tar])
linkers = itertools.cycle([zipped, tar])

# What is fine, so that a refusal of everything would be noticed.
for form, data in good.items():
    package(f"good-{form}", data, "installed", kind="zpk")
package("dots", tar(*[("./" + name, content) for name, content in (CFG, ("Demo/./x", b"x"))]),
        "tried", kind="zpk")
package("inner-link", zipped(CFG, ("Demo/l", b"lib/l", LINK), ("Demo/lib/l", b"x")), "installed",
        kind="zpk")
package("twin", tar(CFG, ("Demo/twin", "Demo/Demo.cfg", tarfile.LNKTYPE)), "installed", kind="zpk")

# Names that leave the folder.
for name in (f"{outside}/evil", "/evil", "../evil", "..", "Demo/..", "Demo/../../evil",
             "../../../../../../outside/file", "Demo/a/../../../x", "Demo/../Kept/Kept.cfg",
             "./../evil", "Demo/./.././../x", "//evil", "Demo//../../x"):
    make = next(makers)
    package(f"name-{make.__name__}", make(CFG, (name, b"evil")))

# Links that leave it, or that something lies below.
for name, target in (("l", outside), ("Demo/l", outside), ("Demo/l", "../Kept"), ("Kept", "Demo"),
                     ("Demo", "../../outside"), ("Demo/a/l", "../../Kept"),
                     ("Demo/l", "a/../../Kept"),
                     ("Demo/l", ".."), ("Demo/l", "x" * 5000), ("Demo/./././l", "../../.."),
                     ("Demo///l", "../../Kept")):
    make = next(linkers)
    package(f"link-{make.__name__}", make(CFG, (name, target.encode(), LINK)))
package("link-7z", seven(("Demo/l", "../../outside", LINK), CFG))
package("link-empty", zipped(CFG, ("Demo/l", b"", LINK)))
for make in (seven, zipped, tar):
    inner = "a" if make is seven else b"a"
    package(f"below-{make.__name__}", make(CFG, ("Demo/l", inner, LINK), ("Demo/l/x", b"x")))
    package(f"below-before-{make.__name__}", make(("Demo/l/x", b"x"), ("Demo/l", inner, LINK), CFG))
package("below-other-case", zipped(CFG, ("Demo/L", b"a", LINK), ("Demo/l/x", b"x")))
package("below-dots", zipped(CFG, ("Demo/./l", b"a", LINK), ("Demo/l/x", b"x")))
package("link-then-file", zipped(CFG, ("Demo/l", b"a", LINK), ("Demo/l", b"x")))
package("chain", zipped(CFG, ("Demo/a/up", b"..", LINK), ("Demo/b", b"a/up/..", LINK)))
package("same-link-thrice", zipped(CFG, ("Demo/l", b"a", LINK), ("Demo/l", b"b", LINK),
                                   ("Demo/m", b"../../outside", LINK)))
package("link-sizes", zipped(CFG, ("Demo/a/l", b"x", LINK, 4), ("Demo/a/m", b"../../p", LINK, 4)))
package("links-501", zipped(CFG, *[(f"Demo/{i}", b"Demo.cfg", LINK) for i in range(501)]))
inner = ("Demo/l", "Demo.cfg", tarfile.SYMTYPE)
for target in (f"{outside}/file", "../../outside/file", "../Kept/Kept.cfg", "Kept/file", "Demo/l"):
    package("twin", tar(CFG, inner, ("Demo/t", target, tarfile.LNKTYPE)))
climbing = (CFG, ("Demo/l", b"../../outside", LINK), ("Demo/l/evil", b"evil"), ("Demo/data", DATA))
package("damaged-link", tar(*climbing)[:-15000])
package("garbage-behind-link", zipped(*climbing) + b"garbage")
endless = [(f"Demo/{i:0250}", b"") for i in range(65000)]
package("endless", zipped(*endless, ("../evil", b""), method=0))

# What leads out of the folder lies there already.
package("through-link", zipped(("Linked/file", b"evil")))
package("through-empty-folder", tar(("Linked/", b""), ("Linked/sub/", b"")))
package("through-inner-link", seven(("Kept/out/file", b"evil")))
package("up-through-link", zipped(("Kept/p/q/r/s", b"../../..", LINK)))
package("instead-of-link", zipped(("Kept/file", b"theirs")), "tried", "Kept")

# Odd names and kinds of entries.
for name in ("-o..", "@x", "-o../x", "$(touch evil)", "a'b", "new\nline", "\x01\x1b[2J\x7f", " ",
             "\u202Ecod", "x" * 255, "x" * 300, "/".join(["d" * 200] * 25), "C:\\evil",
             "..\\..\\evil", "Demo.cfg/x", "x:y"):
    make = next(makers) if len(name) < 300 and "\n" not in name else zipped
    package("odd-name", make(CFG, ("Demo/" + name, b"x")),
            "tried" if len(name) < 4000 else "refused", kind="zpk")
package("not-utf8", zipped((b"Demo/\xff\xfe", b"x"), CFG), "tried")
package("twice", zipped(CFG, CFG, ("demo/demo.CFG", b"x"), ("Demo/DEMO.cfg", b"")), "tried",
        "Demo|demo")
package("file-and-folder", tar(("Demo/a", b"x"), ("Demo/a/b", b"x"), ("Demo/a/b/c", b"x")), "tried")
package("file-for-folder", zipped(("Kept", b"x")), "tried", "Kept")
package("folder-for-file", zipped(("Kept/Kept.cfg/x", b"x")), "tried", "Kept")
for kind in (tarfile.FIFOTYPE, tarfile.CHRTYPE, tarfile.BLKTYPE):
    package("special", tar(CFG, ("Demo/special", "", kind)), "tried", kind="zpk")
for mode in (stat.S_IFIFO, stat.S_IFCHR, stat.S_IFSOCK, stat.S_IFDIR, 0o106777, 0o100000):
    package(f"mode-{mode:o}", zipped(CFG, ("Demo/special", b"", mode)), "tried", kind="zpk")
package("setuid", tar(CFG, ("Demo/run", b"x", 0o6777), ("Demo/closed/", b"", 0)), "tried")

# What is no whole archive.
for form, data in good.items():
    for size in (0, 32, len(data) // 2):
        package(f"cut-{form}-{size}", data[:size], "tried", f"Demo|*{form}")
    for place in (1, len(data) // 2, len(data) - 30):
        flipped = bytearray(data)
        flipped[place] ^= 0x55
        package(f"flip-{form}-{place}", bytes(flipped), "tried", "Demo|*")
package("text", b"Name = Demo\n", "tried")
package("gz", gzip.compress(good["tar"]), "tried", "*")
package("encrypted", seven(CFG, switches=("-psecret",)), "tried")
package("hidden", seven(CFG, switches=("-psecret", "-mhe")), "tried")
package("claims-terabytes", zipped(CFG, ("Demo/data", DATA, 0o100644, 2**45)), "full")
package("claims-everything", zipped(CFG, *[(f"Demo/{i}", DATA, 0o100644, 2**63 - i) for i in (1, 2)]),
        "full")
package("claims-little", zipped(CFG, ("Demo/data", bytes(50_000_000), 0o100644, 10)), "tried")
package("thousands", zipped(CFG, *endless[:3000]), "installed", kind="zpk")
package("deep", tar(CFG, ("Demo/" + "d/" * 300 + "x", b"x")), "installed", kind="zpk")

# Folders and descriptors.
package("no-folder", zipped(("one", b"1"), ("two", b"2")), "tried", "one|two")
package("two-folders", zipped(CFG, ("Other/Other.cfg", b"Name = Other\n")), "tried", "Demo|Other")
package("folder-blank", zipped((" / .cfg", b"Name = Blank\n")), "tried", " ")
package("folder-quiver", zipped(("quiver/quiver.cfg", b"Name = quiver\n")), "tried", "quiver")
package("empty-archive", zipped(), "tried")
package("cfg-link", zipped(("Demo/Demo.cfg", b"real", LINK), ("Demo/real", CFG[1])), "tried",
        kind="zpk")
package("cfg-folder", zipped(("Demo/Demo.cfg/x", b"x")), "tried", kind="zpk")
package("cfg-huge", zipped(("Demo/Demo.cfg", b"Name = " + bytes(5_000_000))), "tried", kind="zpk")
