#!/usr/bin/env python3
"""Looks into a Windows program: what it is built for, and that it runs alone.

usage: program_check.py PROGRAM MACHINE

MACHINE is "x86_64" or "i686". The program must be a console program for that machine which needs no library but
those that lie on every Windows.
"""

import pathlib
import struct
import sys

MACHINES = {"x86_64": 0x8664, "i686": 0x14C}
PE32_PLUS = 0x20B
CONSOLE = 3
EVERYWHERE = {"kernel32.dll", "msvcrt.dll"}
SECTION_BYTES = 40
IMPORT_BYTES = 20


class Program:
    """What stands in the headers of a Windows program."""

    def __init__(self, data):
        self.data = data
        start = self.number("<I", 0x3C)
        if data[:2] != b"MZ" or data[start:start + 4] != b"PE\0\0":
            raise ValueError("this is no Windows program")
        self.machine = self.number("<H", start + 4)
        sections = self.number("<H", start + 6)
        optional = start + 24
        self.subsystem = self.number("<H", optional + 68)
        is_64_bit = self.number("<H", optional) == PE32_PLUS
        self.directories = optional + (112 if is_64_bit else 96)
        first = optional + self.number("<H", start + 20)
        self.sections = [
            struct.unpack_from("<III", data, first + i * SECTION_BYTES + 12) for i in range(sections)
        ]

    def number(self, form, position):
        return struct.unpack_from(form, self.data, position)[0]

    def position(self, address):
        """Where in the file the bytes of an address of the running program stand."""
        for begin, size, place in self.sections:
            if begin <= address < begin + size:
                return address - begin + place
        raise ValueError(f"no section holds the address {address:#x}")

    def libraries(self):
        """The names of the libraries that the program asks for, in small letters."""
        entry = self.position(self.number("<I", self.directories + 8))
        names = set()
        while (name := self.number("<I", entry + 12)) != 0:
            begin = self.position(name)
            names.add(self.data[begin:self.data.index(b"\0", begin)].decode("ascii").lower())
            entry += IMPORT_BYTES
        return names


def complaints(program, machine):
    if program.machine != MACHINES[machine]:
        yield f"it is built for the machine {program.machine:#x}, not for {machine}"
    if program.subsystem != CONSOLE:
        yield "it is no console program"
    names = program.libraries()
    if not names:
        yield "it needs no library at all, so it was not understood"
    for name in sorted(names - EVERYWHERE):
        yield f"it needs {name} beside it"


def main(words):
    if len(words) != 3 or words[2] not in MACHINES:
        print(__doc__)
        return 2
    program = Program(pathlib.Path(words[1]).read_bytes())
    found = list(complaints(program, words[2]))
    for text in found:
        print(f"{words[1]}: {text}")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv))
