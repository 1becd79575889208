#!/usr/bin/env python3
"""Kills zuna-convert at moments of its whole life, in every command that writes, and looks at what is left: each output is the
old file or the new one, nothing else has changed, and only private folders remain.

    ZUNA_CONVERT=TOOL ZUNA_FAULTS=LIBRARY tests/faults/kills.py [--kills N] [--calls N] [--seed N]
"""

import argparse
import collections
import json
import os
import pathlib
import random
import re
import shutil
import signal
import subprocess
import sys
import tempfile
import time

import shim
from commands import COMMANDS, environment, make_inputs

TOOL = os.environ["ZUNA_CONVERT"]
OLD = b"the old content"
OLD_MODE = 0o640
RESULTS = ("kills", "ended before", "old", "new", "some new", "with a private folder")
LEFT = re.compile(r"\.zuna-[0-9a-f]{16}\.tmp")
LEFT_FILE = re.compile(r"(new|old)-[0-9]+")


class Violation(Exception):
    """What must never be left."""


def files_and_left(folder):
    """The files below a folder with mode and content, and the private folders with their files."""
    files, left = {}, {}
    for place, folders, names in os.walk(folder):
        if LEFT.fullmatch(os.path.basename(place)):
            left[place] = folders + names
            continue
        for name in names:
            path = os.path.join(place, name)
            with open(path, "rb") as file:
                files[os.path.relpath(path, folder)] = (os.fstat(file.fileno()).st_mode & 0o7777, file.read())
    return files, left


class Case:
    """A command in a folder of its own, whose outputs are new or replace old files."""

    def __init__(self, command, replaces, inputs, folder):
        self.command, self.folder = command, shutil.copytree(inputs, folder)
        self.name = f"{command} ({'over old files' if replaces else 'new files'})"
        self.forced = [TOOL, *command.arguments] + ([] if command.in_place else ["--force"])
        self.arguments = self.forced if replaces else [TOOL, *command.arguments]
        self.again = self.arguments if command.report else self.forced
        if replaces and not command.in_place:
            for name in command.outputs:
                (self.folder / name).parent.mkdir(parents=True, exist_ok=True)
                (self.folder / name).write_bytes(OLD)
                (self.folder / name).chmod(OLD_MODE)
        self.old = files_and_left(self.folder)[0]
        self.life = min(self.run_to_the_end(self.arguments) for _ in range(2))
        self.results = collections.Counter()

    def stdin(self):
        return open(self.folder / self.command.stdin if self.command.stdin else os.devnull, "rb")

    def run_to_the_end(self, arguments):
        """Runs the command, learns or checks what is new, and puts everything back. Returns the seconds."""
        start = time.perf_counter()
        with self.stdin() as stdin:
            subprocess.run(arguments, cwd=self.folder, env=environment(), stdin=stdin, stderr=subprocess.DEVNULL,
                           check=True)
        life = time.perf_counter() - start
        files, left = files_and_left(self.folder)
        report = self.take_report(files)
        self.new = getattr(self, "new", None) or files
        if files != self.new:
            raise Violation("a run gives something else than the one before it")
        if left and self.command.is_many:
            raise Violation(f"a run has left {sorted(left)}")
        self.judge_report(report, files)
        self.restore()
        return life

    def take_report(self, files):
        """Takes the report out of the files; every run makes it longer."""
        return files.pop(self.command.report, (0, b""))[1]

    def judge_report(self, report, files):
        """Whatever the report has as done is there. Only its last line may be cut off."""
        for line in report.splitlines(keepends=True):
            if not line.endswith(b"\n"):
                continue
            entry = json.loads(line)
            if entry["status"] == "done" and files.get(entry["output"]) != self.new[entry["output"]]:
                raise Violation(f"{entry['output']} is reported and not there")

    def restore(self):
        """Makes the folder what it was before the command."""
        for path in files_and_left(self.folder)[1]:
            shutil.rmtree(path)
        for name in (*self.command.outputs, *filter(None, [self.command.report])):
            (self.folder / name).unlink(missing_ok=True)
            if name in self.old:
                (self.folder / name).write_bytes(self.old[name][1])
                (self.folder / name).chmod(self.old[name][0])

    def kill_after(self, part):
        """Kills the command after this part of its life, which is longer or shorter as the machine is busy or not."""
        seconds = part * self.life
        start = time.perf_counter()
        with self.stdin() as stdin, subprocess.Popen(self.arguments, cwd=self.folder, env=environment(), stdin=stdin,
                                                     stderr=subprocess.DEVNULL) as process:
            time.sleep(max(0, seconds - (time.perf_counter() - start)))
            process.kill()
        self.life *= 1.01 if process.returncode == -signal.SIGKILL else 0.95
        self.judge(process.returncode)

    def calls(self):
        """How many system calls the command makes."""
        calls = self.kill_at(0).calls
        self.restore()
        return calls

    def kill_at(self, call):
        with self.stdin() as stdin:
            return shim.run(self.arguments, f"any:{call}:kill" if call else "", folder=self.folder,
                            environment=environment(), stdin=stdin.read())

    def judge(self, code):
        """Counts what a killed process has left, and runs the command once more where that is not nothing."""
        self.results["kills" if code == -signal.SIGKILL else "ended before"] += 1
        files, left = files_and_left(self.folder)
        report = self.take_report(files)
        self.judge_report(report, files)
        outputs = set(self.command.outputs)
        for name in set(files) | set(self.old):
            allowed = [self.old.get(name)] + ([self.new[name]] if name in outputs else [])
            if files.get(name) not in allowed:
                raise Violation(f"{name} is neither old nor new")
        for place, names in left.items():
            if os.stat(place).st_mode & 0o077 or not all(LEFT_FILE.fullmatch(name) for name in names):
                raise Violation(f"{place} is open to others, or has other files")
        are_new = [files.get(name) == self.new[name] for name in outputs]
        self.results["new" if all(are_new) else "some new" if any(are_new) else "old"] += 1
        self.results["with a private folder"] += bool(left)
        if left or any(are_new) or report:
            self.run_to_the_end(self.again)


def cases(folder):
    """Every command that writes, for new files and over old ones."""
    inputs = pathlib.Path(folder) / "inputs"
    inputs.mkdir()
    make_inputs(TOOL, inputs)
    for command in COMMANDS:
        for replaces in (False, True):
            if command.writes and (replaces or not command.in_place):
                yield Case(command, replaces, inputs, pathlib.Path(folder) / "place")
                shutil.rmtree(pathlib.Path(folder) / "place")


def kill(case, kills, calls, chance):
    while case.results["kills"] < kills:
        case.kill_after(chance.uniform(0, 1.05))
    count = case.calls()
    for call in sorted(chance.sample(range(1, count + 1), min(calls, count))):
        case.judge(case.kill_at(call).code)


def text(results):
    return ", ".join(f"{results[name]} {name}" for name in RESULTS)


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--kills", type=int, default=1000, help="after random times, of each command")
    parser.add_argument("--calls", type=int, default=10**6, help="in place of so many of its system calls")
    parser.add_argument("--seed", type=int, default=time.time_ns())
    options = parser.parse_args()
    print("seed", options.seed)
    chance = random.Random(options.seed)
    total, failed = collections.Counter(), False
    with tempfile.TemporaryDirectory(prefix="zuna-kills-") as folder:
        for case in cases(folder):
            try:
                kill(case, options.kills, options.calls, chance)
            except Violation as violation:
                failed = True
                print(f"{case.name}: {violation}")
            total += case.results
            print(f"{case.name}: {text(case.results)}", flush=True)
    print(f"in all: {text(total)}")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
