#!/usr/bin/python3
"""Makes packages that an installer should fear: bad_packages.py FOLDER OUTSIDE 7Z

Each comes as FOLDER/NUMBER-what.zpk. The lines on standard output tell, divided by tabs, its name,
what is expected, and what it may leave in the folder that it is installed into, as a pattern:
  installed  it is harmless, if odd
  tried      the archiver says what it thinks of it
  refused    nothing is run
  full       nothing is run since there is no room
OUTSIDE is the absolute path of the folder that they try to reach.
"""
import io
import itertools
import os
import stat
import subprocess
import sys
import tarfile
import zipfile

folder, outside, seven_zip = sys.argv[1:]
LINK = 0o120777
CFG = ("Demo/Demo.cfg", b"Name = Demo\nIcon = ../../../../outside/file\n")
DATA = os.urandom(20000)
numbers = itertools.count(1)


def package(what, data, expected="refused", leaves="Demo"):
    name = f"{next(numbers):03}-{what}.zpk"
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
            archive.addfile(info, io.BytesIO(content) if info.size else None)
    return out.getvalue()


def zipped(*entries):
    """Entries: (name, content), a mode and the size that is claimed behind them."""
    out = io.BytesIO()
    with zipfile.ZipFile(out, "w", zipfile.ZIP_DEFLATED) as archive:
        for name, content, *rest in entries:
            info = zipfile.ZipInfo(name)
            info.external_attr = (rest[0] if rest else 0o100644) << 16
            archive.writestr(info, content, zipfile.ZIP_DEFLATED)
            info.file_size = rest[1] if len(rest) > 1 else len(content)
    return out.getvalue()


def seven(*entries):
    """As zipped, by way of files: the archiver renames them to what no file may be called."""
    os.makedirs("made")
    renames = []
    for number, (name, content, *mode) in enumerate(entries):
        if mode:
            os.symlink(content, f"made/{number}")
        else:
            with open(f"made/{number}", "wb") as file:
                file.write(content)
        renames += [str(number), name]
    quiet = ["-bso0", "-bsp0", "-spd"]
    subprocess.run([seven_zip, "a", "-snl", *quiet, "made.7z", "-r", "./made/."], check=True)
    subprocess.run([seven_zip, "rn", *quiet, "--", "made.7z", *renames], check=True)
    with open("made.7z", "rb") as file:
        data = file.read()
    subprocess.run(["rm", "-r", "made", "made.7z"], check=True)
    return data


# What is fine, so that a refusal of everything would be noticed.
good = seven(CFG, ("Demo/data", DATA))
package("good", good, "installed")
package("inner-link", zipped(CFG, ("Demo/l", b"lib/l", LINK), ("Demo/lib/l", b"x")), "installed")
package("twin", tar(CFG, ("Demo/twin", "Demo/Demo.cfg", tarfile.LNKTYPE)), "installed")

# Names that leave the folder.
makers = itertools.cycle([seven, zipped, tar])
for name in (f"{outside}/evil", "../evil", "./../evil", "Demo//../../x"):
    package("name", next(makers)(CFG, (name, b"evil")))

# Links that leave it, or that something lies below.
makers = itertools.cycle([zipped, tar])
for name, target in (("l", outside), ("Demo/l", "../Kept"), ("Demo/l", "x" * 5000),
                     ("Demo/./././l", "../../.."), ("Demo///l", "../../Kept")):
    package("link", next(makers)(CFG, (name, target.encode(), LINK)))
package("link-7z", seven(("Demo/l", "../../outside", LINK), CFG))
package("below", tar(CFG, ("Demo/l", b"a", LINK), ("Demo/l/x", b"x")))
package("below-other-case", zipped(CFG, ("Demo/L", b"a", LINK), ("Demo/l/x", b"x")))
package("link-sizes", zipped(CFG, ("Demo/a/l", b"x", LINK, 4), ("Demo/a/m", b"../../p", LINK, 4)))
package("links-501", zipped(CFG, *[(f"Demo/{i}", b"Demo.cfg", LINK) for i in range(501)]))
package("other-twin", tar(CFG, ("Demo/t", "../Kept/Kept.cfg", tarfile.LNKTYPE)))
climbing = (CFG, ("Demo/l", b"../../outside", LINK), ("Demo/l/evil", b"evil"), ("Demo/data", DATA))
package("damaged-link", tar(*climbing)[:-15000])

# What leads out of the folder lies there already.
package("through-link", zipped(("Linked/file", b"evil")))
package("through-inner-link", seven(("Kept/out/file", b"evil")))
package("instead-of-link", zipped(("Kept/file", b"theirs")), "tried", "Kept")

# Odd names and kinds of entries.
for name in ("-o..", "@x", "$(touch evil)", "a'b", "new\nline", "x" * 300, "..\\..\\evil"):
    package("odd-name", zipped(CFG, ("Demo/" + name, b"x")), "tried")
package("too-long", zipped(CFG, ("/".join(["Demo"] + ["d" * 200] * 25), b"x")))
package("not-utf8", tar(("Demo/\udcff\udcfe", b"x"), CFG), "tried")
package("file-for-folder", zipped(("Kept", b"x")), "tried", "Kept")
package("special", tar(CFG, ("Demo/special", "", tarfile.FIFOTYPE)), "tried")
package("setuid", tar(CFG, ("Demo/run", b"x", 0o6777)), "tried")

# What is no whole archive, or claims what it is not.
for size in (0, len(good) // 2):
    package(f"cut-{size}", good[:size], "tried", "Demo|*")
for place in (1, len(good) // 2, len(good) - 30):
    flipped = bytearray(good)
    flipped[place] ^= 0x55
    package(f"flip-{place}", bytes(flipped), "tried", "Demo|*")
package("claims-terabytes", zipped(CFG, ("Demo/data", DATA, 0o100644, 2**45)), "full")
package("claims-everything",
        zipped(CFG, *[(f"Demo/{i}", DATA, 0o100644, 2**63 - i) for i in (1, 2)]), "full")
package("claims-little", zipped(CFG, ("Demo/data", bytes(9_000_000), 0o100644, 10)), "tried")
package("no-folder", zipped(("one", b"1"), ("two", b"2")), "tried", "one|two")
