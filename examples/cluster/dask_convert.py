#!/usr/bin/env python3
"""Runs zuna-convert over many files on the machines of a Dask cluster.

    dask_convert.py archive --report up.json -- up --out-dir new
    dask_convert.py --files-from list.txt --report up.json --scheduler tcp://10.0.0.1:8786 -- up --out-dir new

After "--" comes a command of zuna-convert with its options, without inputs and report. Folders are searched for files
that end in .showdata or .logdata. All machines need the files, the report's folder and the key file under the same
paths. Each task takes 100 files and works on one at a time; the cluster decides how many tasks run at once. The report
has the lines that --report writes. Given again, the same command goes on where it was, as --resume does. The task of a
worker that dies is given to another one. Without --scheduler, a cluster of this machine is used.
"""

import argparse
import collections
import json
import os
import pathlib
import subprocess
import sys
import time

from dask.distributed import Client, as_completed

SUFFIXES = (".showdata", ".logdata")
DONE, REFUSED, PART_FAILED = 0, 3, 7  # exit codes of zuna-convert
FIRST_WAIT, LONGEST_WAIT = 0.1, 10.0  # seconds
RETRIES = 10


def files_below(path):
    """The file itself, or the shows and logs in the folder, without hidden ones."""
    if not os.path.isdir(path):
        return [path]
    found = []
    for folder, below, names in os.walk(path):
        below[:] = sorted(name for name in below if not name.startswith("."))
        found += [os.path.join(folder, name) for name in sorted(names)
                  if name.lower().endswith(SUFFIXES) and not name.startswith(".")]
    return found


def path_of(line):
    """The input that a line of a report is about; None for a line about none."""
    values = json.loads(line)
    if values.get("pathBytes"):
        return os.fsdecode(bytes.fromhex(values["pathBytes"]))
    return values.get("path")


def lines_of(report):
    """The lines of a report; one that was cut off is left out."""
    content = report.read_bytes() if report.exists() else b""
    return [line + b"\n" for line in content.split(b"\n")[:-1]]


def run_part(folder, command, paths, part):
    """Runs the command over some files, on a worker. Whatever an earlier try has done is in the report `part`."""
    names = b"".join(os.fsencode(path) + b"\0" for path in paths)
    wait = FIRST_WAIT
    while True:
        done = subprocess.run([*command, "--files-from", "-", "-0", "-j", "1", "--report", part, "--resume", "-q"], cwd=folder,
                              input=names, stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, check=False)
        if done.returncode < 0:
            raise RuntimeError(f"{command[0]} was ended by signal {-done.returncode}")
        if done.returncode != REFUSED or b"[report-in-use]" not in done.stderr:
            return done.returncode, done.stderr
        time.sleep(wait)  # the command of a worker that died is still at work
        wait = min(2 * wait, LONGEST_WAIT)


class Parts:
    """The reports of the parts, in a folder beside the report, into which their new lines are taken."""

    def __init__(self, report):
        self.report, self.folder = report, pathlib.Path(f"{report}.parts")
        self.folder.mkdir(exist_ok=True)
        if report.exists():  # without a line that was cut off when a run was killed
            os.truncate(report, sum(map(len, lines_of(report))))
        self.earlier = collections.defaultdict(list)
        for part in sorted(self.folder.iterdir()):  # of a run that was killed
            self.take(part)
        for line in lines_of(report):
            self.earlier[path_of(line)].append(line)

    def begin(self, number, paths):
        """Makes the report of a part, with what the report has about its files."""
        part = self.folder / f"{number}.json"
        part.write_bytes(b"".join(line for path in paths for line in self.earlier[path]))
        return part

    def take(self, part):
        """Adds what is new in the report of a part to the report."""
        known = set(lines_of(self.report))
        self.add(part, [line for line in lines_of(part) if line not in known])

    def end(self, part, paths):
        """The same for a part that this run has begun."""
        self.add(part, lines_of(part)[sum(len(self.earlier[path]) for path in paths):])

    def add(self, part, lines):
        with open(self.report, "ab") as report:
            report.write(b"".join(lines))
            report.flush()
            os.fsync(report.fileno())
        part.unlink()

    def close(self):
        self.folder.rmdir()


def convert(client, command, paths, report, size):
    """Runs the command over all files, in parts of `size` files. Returns the first part that could not begin, or None."""
    parts = Parts(report)
    tasks = {}
    for number, begin in enumerate(range(0, len(paths), size)):
        some = paths[begin:begin + size]
        part = parts.begin(number, some)
        task = client.submit(run_part, os.getcwd(), command, some, str(part.resolve()), pure=False, retries=RETRIES)
        tasks[task] = part, some
    refused = None
    for task in as_completed(list(tasks)):
        code, said = task.result()
        part, some = tasks.pop(task)
        parts.end(part, some)
        if code not in (DONE, PART_FAILED) and len(some) > 1:
            refused = refused or (code, said)
    parts.close()
    return refused


def tell(report):
    """Prints how many files have which status, and the failures. Returns the exit code."""
    last = {}
    for line in lines_of(report):
        values = json.loads(line)
        last[path_of(line)] = values["status"], values.get("error", {}).get("message")
    last.pop(None, None)
    counts = collections.Counter(status for status, _ in last.values())
    print(f"{len(last)} files: " + ", ".join(f"{count} {status}" for status, count in sorted(counts.items())))
    for status, message in last.values():
        if status == "failed":
            print(message, file=sys.stderr)
    return PART_FAILED if counts["failed"] else DONE


def parse(arguments):
    at = arguments.index("--") if "--" in arguments else len(arguments)
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("inputs", nargs="*", help="files and folders")
    parser.add_argument("--files-from", type=pathlib.Path, help="a list of files, one in each line")
    parser.add_argument("--report", type=pathlib.Path, required=True, help="where each file gets a line in JSON")
    parser.add_argument("--scheduler", help="the address of the cluster")
    parser.add_argument("--part", type=int, default=100, help="how many files are one task (100)")
    parser.add_argument("--tool", default="zuna-convert", help="the path of zuna-convert on all machines")
    options = parser.parse_args(arguments[:at])
    command = arguments[at + 1:]
    if not command:
        parser.error('give a command of zuna-convert after "--"')
    return options, [options.tool, *command]


def main(arguments):
    options, command = parse(arguments)
    listed = options.files_from.read_bytes().splitlines() if options.files_from else []
    paths = [path for given in options.inputs for path in files_below(given)] + [os.fsdecode(line) for line in listed]
    with Client(options.scheduler) as client:
        refused = convert(client, command, paths, options.report, options.part)
    if refused:
        sys.stderr.buffer.write(refused[1])
        return refused[0]
    return tell(options.report)


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
