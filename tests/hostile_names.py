#!/usr/bin/python3
"""Prints 200 names that are hard on programs, each ended by a zero byte.

They are the nasty pieces alone and in pairs, at most 251 bytes: ".zpk" or ".cfg" follows them.
"""
import itertools
import random
import sys

pieces = [
    b"'", b'"', b" ", b"  ", b"-", b"--", b"-rf", b"-o..", b"@", b"@x", b"*", b"?", b"[a]", b"{a,b}",
    b"$(touch harm)", b"`touch harm`", b"$HOME", b"${IFS}", b"\\", b"\\n", b"\n", b"\r", b"\t", b"\1",
    b"\x1b[2J", b"\x7f", b"..", b".", b"...", b"~", b"#", b"!", b"%1 %s", b"%4%n", b"&&", b"&", b";",
    b"; touch harm;", b"|", b">harm", b"<", b"=", b":", b"\xff\xfe", b"\xc3", b"\xed\xa0\x80",
    "Игра".encode(), "日本".encode(), "é".encode(), "e\u0301".encode(), "\u202Egpj".encode(),
    "\u200B\uFEFF".encode(), "👩🏽‍🚀".encode(), b"x" * 251, "я".encode() * 125, b".cfg", b".zpk", b"CON",
]
seeded = random.Random(7)
pairs = list(itertools.product(pieces, [b"", b"a"], pieces))
seeded.shuffle(pairs)
names = [piece for piece in pieces if piece not in (b".", b"..")]
for first, middle, last in pairs:
    name = first + middle + last
    if len(names) < 200 and len(name) <= 251 and name not in names:
        names.append(name)
sys.stdout.buffer.write(b"".join(name + b"\0" for name in names))
