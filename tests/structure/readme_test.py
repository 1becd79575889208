#!/usr/bin/env python3
"""Runs the commands of the README's console blocks in order and compares what they print with what stands there.

    readme_test.py SOURCE_DIR ZUNA_CONVERT
"""

import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile

MARK = "--- next command ---"


def steps(readme):
    """(command, expected output) of every line that begins with "$ "."""
    found = []
    for block in re.findall(r"```console\n(.*?)```", readme, re.DOTALL):
        for line in block.splitlines(keepends=True):
            if line.startswith("$ "):
                found.append([line[2:].rstrip("\n"), ""])
            else:
                found[-1][1] += line
    return found


def main(source, tool):
    source = pathlib.Path(source)
    expected = steps((source / "README.md").read_text())
    assert len(expected) > 10, "where are the README's examples?"
    # One shell for all, so that a variable or an exit code lasts from line to line.
    script = "\n".join(f"{command}\n_code=$?; echo '{MARK}'; (exit $_code)" for command, output in expected)
    with tempfile.TemporaryDirectory() as folder:
        shutil.copytree(source / "examples", pathlib.Path(folder) / "examples")
        path = f"{pathlib.Path(tool).resolve().parent}:{os.environ['PATH']}"
        printed = subprocess.run(["sh", "-c", script], cwd=folder, env={**os.environ, "PATH": path}, text=True,
                                 stdout=subprocess.PIPE, stderr=subprocess.STDOUT).stdout
    wrong = 0
    for (command, output), real in zip(expected, printed.split(f"{MARK}\n")):
        if output != real:
            wrong += 1
            print(f"$ {command}\n--- the README says\n{output}--- it prints\n{real}")
    print(f"{len(expected)} commands run, {wrong} print something else")
    return 1 if wrong else 0


sys.exit(main(*sys.argv[1:]))
