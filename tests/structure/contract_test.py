#!/usr/bin/env python3
"""The headers that call themselves no part of the contract with the converter are those that interfaces/README.md lists,
and the converter includes none of them.

    contract_test.py SOURCE_DIR
"""

import pathlib
import re
import sys

MARK = re.compile(r"Not\s+part of the contract")
ROW = re.compile(r"^\| (`.*`) \|", re.MULTILINE)
INCLUDE = re.compile(r'^#include [<"]([^>"]+)', re.MULTILINE)


def first_comment(text):
    """The words before the first #include, without the marks of comments."""
    return re.sub(r"\n(// ?)?", " ", text.partition("#include")[0])


def listed(readme, headers):
    """The headers in the last table of the page; a folder stands for all in it."""
    names = re.findall("`([^`]+)`", " ".join(ROW.findall(readme.partition("not part of the contract")[2])))
    return {header for header in headers for name in names if header == name or name[-1] == "/" and header.startswith(name)}


def included(folder, headers):
    """The headers of the interfaces that a folder includes, directly or through each other."""
    found, left = set(), [text for path in folder.rglob("*") if path.suffix in (".h", ".cpp") for text in [path.read_text()]]
    while left:
        new = set(INCLUDE.findall(left.pop())) & headers.keys() - found
        found |= new
        left += [headers[name] for name in new]
    return found


def main(source):
    source = pathlib.Path(source)
    interfaces = source / "interfaces"
    headers = {str(path.relative_to(interfaces)): path.read_text() for path in interfaces.rglob("*.h")}
    marked = {name for name, text in headers.items() if MARK.search(first_comment(text))}
    in_readme = listed((interfaces / "README.md").read_text(), headers)
    needed = included(source / "format_converter", headers)
    assert "kit/error.h" in needed and "CL/song_log.h" in needed, "where are the headers that the converter includes?"

    wrong = [f"{name}: its first lines and interfaces/README.md disagree" for name in sorted(marked ^ in_readme)]
    wrong += [f"{name}: is no part of the contract, and the converter includes it" for name in sorted(marked & needed)]
    print("\n".join([*wrong, f"{len(headers)} headers, {len(marked)} of them no part of the contract"]))
    return 1 if wrong else 0


sys.exit(main(*sys.argv[1:]))
