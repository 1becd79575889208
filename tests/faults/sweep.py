#!/usr/bin/env python3
"""Lets every call of every command of zuna-convert fail, each in a run of its own, and looks at what is left.

    sweep.py [--sample RUNS] [--seed NUMBER] [--skip RUNS] [--commands TEXT] [--calls NAME,...] [-j JOBS]

A call fails at its Nth time, and from its Nth time on, with each error of its manual page; it transfers one byte; it is
interrupted once and three times; an allocation fails. Before a command line is read, the tool describes all commands to
the parser; the allocations of that are the same in each run and fail with the first command only. A whole sweep takes
some 70,000 runs, half an hour of one processor; --sample takes as many of them as told, chosen by --seed. Interrupted,
it reports what it has done; --skip goes on after as many runs. --commands and --calls choose by name. ZUNA_CONVERT and
ZUNA_FAULTS name the tool and the library of tests/faults/shim/.
"""

import argparse
import collections
import concurrent.futures
import os
import pathlib
import random
import re
import shutil
import sys
import tempfile
import time

import commands
import errors
import oracle
import shim

TOOL = os.environ["ZUNA_CONVERT"]
OLD = b"what was there before"
CHUNK = 200
SECONDS_BETWEEN_REPORTS = 10
FIRST_CALLS_OF_THE_WORK = ("stat", "open", "write")
# More than any command line of tests/faults/commands.py takes to be read.
ALLOCATIONS_OF_PARSING = 150


# Commands that fail by themselves.
FAILING = (
    commands.Command(("up", "--companion", "old.logdata")),
    commands.Command(("convert", "old.showdata", "-o", "out")),
    commands.Command(("decrypt", "plain.json", "-o", "out")),
    commands.Command(("info", "missing", "new.logdata")),
    commands.Command(("up", "old.showdata", "plain.json", "--out-dir", "out", "-j", "1"), is_many=True),
    commands.Command(("print", "new.logdata", "--song", "99")),
    commands.Command(("--key-file", "plain.json", "print", "new.logdata")),
)


class Case:
    """A command, and whether its outputs exist before."""

    def __init__(self, command, replaces):
        self.command = command
        self.arguments = (*command.arguments, "--force") if replaces else command.arguments
        self.stdin = command.stdin
        self.old = dict.fromkeys(command.outputs, OLD) if replaces else {}

    def __str__(self):
        return " ".join(self.arguments)


def cases(text):
    found = [Case(command, False) for command in (*commands.COMMANDS, *FAILING)]
    found += [Case(command, True) for command in commands.COMMANDS if command.writes and not command.in_place]
    return [case for case in found if text in str(case)]


class Place:
    """A folder that commands run in, made anew where one has changed it."""

    def __init__(self, inputs, case):
        self.root = pathlib.Path(tempfile.mkdtemp(prefix="zuna-sweep-"))
        self.inputs, self.case = inputs, case
        self.folder = self.root / "folder"
        self.stdin = (inputs / case.stdin).read_bytes() if case.stdin else b""
        self.make()

    def make(self):
        shutil.rmtree(self.folder, ignore_errors=True)
        shutil.copytree(self.inputs, self.folder)
        for name, content in self.case.old.items():
            (self.folder / name).parent.mkdir(parents=True, exist_ok=True)
            (self.folder / name).write_bytes(content)
        self.before, self.names = self.files(), self.all_names()

    def all_names(self):
        return {str(path) for path in self.folder.rglob("*")}

    def files(self):
        """The files with their contents, and whatever else has a name that begins with a dot."""
        return {str(path.relative_to(self.folder)): path.read_bytes() if path.is_file() else b""
                for path in self.folder.rglob("*") if path.is_file() or path.name.startswith(".")}

    def run(self, fault=""):
        return shim.run([TOOL, *self.case.arguments], fault, self.folder, commands.environment(), self.stdin)

    def remove(self):
        shutil.rmtree(self.root)


def secrets(inputs):
    """The key and the IV as the key file has them."""
    return [digits.lower() for digits in re.findall(rb"= *([0-9a-fA-F]{8,})", (inputs / "key").read_bytes())]


def good_run(inputs, case):
    """How the command goes by itself, how often it makes each call, and how many allocations all commands begin with."""
    place = Place(inputs, case)
    run = place.run()
    good = oracle.Good(run.code, run.output, place.before, place.files(), secrets(inputs), case.command)
    before_work = min(place.run(f"{call}:1:kill").counts["memory"] for call in FIRST_CALLS_OF_THE_WORK)
    fails = case.arguments in [command.arguments for command in FAILING]
    place.remove()
    assert (run.code != 0) == fails and run.descriptors == 0, (str(case), run.code, run.errors)
    return good, run.counts, before_work - ALLOCATIONS_OF_PARSING


def faults(counts, passed_over, calls):
    """All faults of a command, as tests/faults/shim/plan.h writes them, without some allocations."""
    return [f"{call}:{number}:{action}" for call, count in counts.items() if not calls or call in calls
            for number in range(1 + (passed_over if call == "memory" else 0), count + 1)
            for action in errors.actions(call)]


def run_faults(inputs, case, good, chosen):
    """The problems of each fault that has some, and how many runs ended with success."""
    place = Place(inputs, case)
    found, successes = [], 0
    for fault in chosen:
        run = place.run(fault)
        files = place.files()
        texts = oracle.problems(run, fault, files, good)
        found += [(str(case), fault, text, run.errors.decode(errors="replace")) for text in texts]
        successes += run.code == 0
        if files != place.before or place.all_names() != place.names:
            place.make()
    place.remove()
    return str(case), collections.Counter(fault.partition(":")[0] for fault in chosen), successes, found


def chunks(inputs, arguments):
    """The work: pairs of a case and some of its faults."""
    work = []
    for case in cases(arguments.commands):
        good, counts, common = good_run(inputs, case)
        work += [(case, good, fault) for fault in faults(counts, common if work else 0, arguments.calls)]
    if arguments.sample:
        work = random.Random(arguments.seed).sample(work, min(arguments.sample, len(work)))
    by_case = collections.defaultdict(list)
    for case, good, fault in work[arguments.skip:]:
        by_case[case, good].append(fault)
    return [(case, good, some[i:i + CHUNK]) for (case, good), some in by_case.items()
            for i in range(0, len(some), CHUNK)]


def report(runs, successes, found):
    kinds = sorted({kind for counts in runs.values() for kind in counts})
    for case, counts in runs.items():
        print(f"{sum(counts.values()):7} {case}: " + ", ".join(f"{kind} {counts[kind]}" for kind in kinds if counts[kind]))
    for case, fault, text, messages in found:
        print(f"{case} [{fault}]: {text}\n    {messages.strip()}")
    print(f"{sum(sum(counts.values()) for counts in runs.values())} runs, {successes} with the whole result, "
          f"{len(found)} problems")


def parse(arguments):
    parser = argparse.ArgumentParser(description=__doc__.partition("\n")[0])
    parser.add_argument("--sample", type=int, default=0)
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--skip", type=int, default=0)
    parser.add_argument("--commands", default="")
    parser.add_argument("--calls", type=lambda names: names.split(","), default=[])
    parser.add_argument("-j", dest="jobs", type=int, default=1)
    return parser.parse_args(arguments)


class Tally:
    """What has been done so far."""

    def __init__(self, total):
        self.total, self.done, self.successes = total, 0, 0
        self.runs, self.problems = collections.defaultdict(collections.Counter), []
        self.reported = time.monotonic()

    def add(self, case, counts, successes, problems):
        self.runs[case] += counts
        self.done += sum(counts.values())
        self.successes += successes
        self.problems += problems
        if time.monotonic() > self.reported + SECONDS_BETWEEN_REPORTS:
            self.reported = time.monotonic()
            print(f"{self.done} of {self.total} runs, {len(self.problems)} problems", file=sys.stderr, flush=True)


def sweep(inputs, arguments):
    """Does the work, in its order, and tells what was done when it is interrupted."""
    work = chunks(inputs, arguments)
    tally = Tally(sum(len(chosen) for _, _, chosen in work))
    with concurrent.futures.ProcessPoolExecutor(arguments.jobs) as pool:
        try:
            for future in [pool.submit(run_faults, inputs, *item) for item in work]:
                tally.add(*future.result())
        except KeyboardInterrupt:
            pool.shutdown(wait=False, cancel_futures=True)
    return tally


def main(arguments):
    if not arguments.sample:  # a whole sweep takes long; everything else goes first
        os.nice(19)
    with tempfile.TemporaryDirectory(prefix="zuna-sweep-") as folder:
        inputs = pathlib.Path(folder)
        commands.make_inputs(TOOL, inputs)
        tally = sweep(inputs, arguments)
    report(tally.runs, tally.successes, tally.problems)
    return 0 if not tally.problems and tally.done == tally.total else 1


if __name__ == "__main__":
    sys.exit(main(parse(sys.argv[1:])))
