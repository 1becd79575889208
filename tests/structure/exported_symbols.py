#!/usr/bin/env python3
"""Compares what the shared library exports with the list beside this file.

    exported_symbols.py LIBRARY LIST [--write]

Inline functions and implicit members of the exported classes come and go with the compiler's decisions; of them
(weak symbols) it is only checked that they belong to an exported class, apart from those that LISTED_WEAK names.
Vtables and type information are weak or not as the standard library wants it. Every name carries the symbol version,
and the library its SONAME, by which a program finds an interface that it was built for. A library for macOS is held
against the same list (with Debian's package llvm). --write makes the list anew.
"""

import re
import subprocess
import sys

SYMBOL_VERSION = "ZUNA_FORMAT_CONVERTER_1"
WEAK_OR_STRONG = re.compile(r"(typeinfo|typeinfo name|vtable) for ")
WEAK_ALLOWED = re.compile(r"(typeinfo for |typeinfo name for |vtable for )?(version0::|FormatConverter\w*Error|kit::)")
LISTED_WEAK = re.compile(r"typeinfo for (version0::\w*Error|FormatConverter\w*Error)|version0::PairedEvent<.*>::"
                         r"(eventCode|write_binary|PairedEvent\((std::istream&|.*, .*, .*)\))")
REPLACEMENTS = [
    (re.compile(r"\[abi:cxx11\]"), ""),
    (re.compile(r"std::__cxx11::|std::__1::"), "std::"),
    (re.compile(r"std::basic_string<char, std::char_traits<char>, std::allocator<char> ?>"), "std::string"),
    (re.compile(r"std::basic_(\w+)<char, std::char_traits<char> ?>"), r"std::\1"),
    (re.compile(r"std::vector<unsigned char, std::allocator<unsigned char> ?>"), "std::vector<unsigned char>"),
    (re.compile(r"std::deque<unsigned char, std::allocator<unsigned char> ?>"), "std::deque<unsigned char>"),
]


def output(*command, **options):
    return subprocess.run(command, check=True, capture_output=True, text=True, **options).stdout


class Elf:
    """Every name carries the symbol version."""

    SONAME = "libzuna_format_converter.so.1"

    @staticmethod
    def symbols(library):
        """For each visible symbol: its name, whether it is weak, its version."""
        for line in output("nm", "-D", "-C", "--defined-only", library).splitlines():
            kind, name, version = re.fullmatch(r"[0-9a-f]+ (\w) (.*?)(?:@@(\w+))?", line).groups()
            if kind != "A":  # the symbol version itself
                yield name, kind in "WVu", version

    @staticmethod
    def soname(library):
        return "".join(re.findall(r"\(SONAME\).*\[(.*)\]", output("readelf", "-d", library)))


class MachO:
    """There are no symbol versions here; every name counts as having the right one."""

    SONAME = "@rpath/libzuna_format_converter.1.dylib"
    LINKERS_OWN = {"__mh_dylib_header", "___dso_handle"}

    @classmethod
    def symbols(cls, library):
        lines = output("llvm-nm", "-m", "-g", "--defined-only", library).splitlines()
        found = [re.fullmatch(r"[0-9a-f]+ \(.*\) (weak )?external .*?(\S+)", line).groups() for line in lines]
        found = [(weak, name) for weak, name in found if name not in cls.LINKERS_OWN]
        names = output("c++filt", "--strip-underscore", input="".join(f"{name}\n" for _, name in found)).splitlines()
        for (weak, _), name in zip(found, names, strict=True):
            yield name, bool(weak), SYMBOL_VERSION

    @staticmethod
    def soname(library):
        return output("llvm-objdump", "--macho", "--dylib-id", library).splitlines()[-1]


def kind_of(library):
    with open(library, "rb") as file:
        return Elf if file.read(4) == b"\x7fELF" else MachO


def exports(library):
    """The strong and the weak names, and those without the symbol version."""
    strong, weak, unversioned = set(), set(), set()
    for name, is_weak, version in kind_of(library).symbols(library):
        for pattern, text in REPLACEMENTS:
            name = pattern.sub(text, name)
        (weak if is_weak or WEAK_OR_STRONG.match(name) else strong).add(name)
        if version != SYMBOL_VERSION:
            unversioned.add(name)
    return strong, weak, unversioned


def main(library, listing, *options):
    strong, weak, unversioned = exports(library)
    listed_weak = {name for name in weak if LISTED_WEAK.match(name)}
    if "--write" in options:
        with open(listing, "w") as file:
            file.write("".join(f"{name}\n" for name in sorted(strong | listed_weak)))
        return 0
    with open(listing) as file:
        expected = set(file.read().splitlines())
    problems = [f"not exported: {name}" for name in sorted(expected - strong - weak)]
    problems += [f"exported, but not on the list: {name}" for name in sorted(strong - expected)]
    problems += [f"exported by accident: {name}" for name in sorted(weak) if not WEAK_ALLOWED.match(name)]
    problems += [f"without the symbol version {SYMBOL_VERSION}: {name}" for name in sorted(unversioned)]
    kind = kind_of(library)
    if kind.soname(library) != kind.SONAME:
        problems.append(f"the SONAME is not {kind.SONAME} but {kind.soname(library)}")
    print(*problems, sep="\n")
    print(f"{len(expected)} names on the list, {len(strong)} strong and {len(weak)} weak exported, "
          f"{len(problems)} problems")
    return 1 if problems else 0


sys.exit(main(*sys.argv[1:]))
