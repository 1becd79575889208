"""What must hold after a command of which a call has failed."""

import json
import os
import re

# Calls that remove what is temporary. Where they fail, it stays.
REMOVING = ("unlink", "unlinkat", "rmdir")
# What the tool says where outputs have taken their places though something failed after that.
IN_PLACE = re.compile(rb"is written, but|is replaced, but")
LINE = re.compile(rb"zuna-convert: [^\n]+\n")
BACKUP = re.compile(r"\.~[0-9]+~$")
PART_FAILED, CLOSED_PIPE = 7, 141


class Good:
    """A command to which nothing happened: its exit code, what it printed, and the files before and after it. `command` is
    one of tests/faults/commands.py. A report is none of the files: it grows with each run."""

    def __init__(self, code, output, before, after, secrets, command):
        self.code, self.output, self.secrets, self.command = code, output, secrets, command
        self.before, self.after = ({name: content for name, content in files.items() if name != command.report}
                                   for files in (before, after))


def problems(run, fault, files, good):
    """What is wrong with a run that had this fault and left `files`, as texts."""
    files = {first_backup(name, files): content for name, content in files.items()}
    report = files.pop(good.command.report, b"")
    found = [*of_the_process(run, good), *of_the_files(run, fault, files, good), *of_the_messages(run, fault, good)]
    if good.command.is_many:
        found += [*of_each_input(run, fault, files, good), *of_the_report(run, report, files, good)]
    return found


def first_backup(name, files):
    """The name of the first backup for one with another number, which it has where that name seemed to be taken."""
    first = BACKUP.sub(".~1~", name)
    return name if first in files else first


def of_the_process(run, good):
    if run.code < 0:
        yield f"died of signal {-run.code}"
    elif not run.at_exit:
        yield "did not end by itself"
    elif run.descriptors:
        yield f"left {run.descriptors} descriptors open"
    if not run.fired and not good.command.has_threads:
        yield "has made fewer calls than before"


def of_the_files(run, fault, files, good):
    said = IN_PLACE.search(run.errors) is not None
    old = files.keys() >= good.before.keys() and all(files[name] == good.before[name] for name in good.before)
    known = good.before.keys() | good.after.keys()
    untouched = old and not files.keys() & (good.after.keys() - good.before.keys())
    complete = all(files.get(name) == content for name, content in good.after.items())
    for name in known:
        if files.get(name) not in (good.before.get(name), good.after.get(name)):
            yield f"{name} is neither old nor complete"
    if run.code == 0 and good.code != 0:
        yield "exit code 0 for a command that fails"
    if run.code == 0 and not complete:
        yield "exit code 0 without the whole result"
    if run.code == 0 and run.output != good.output:
        yield "exit code 0 without the whole text"
    if run.code != 0 and not untouched and not said and not good.command.is_many and not is_silenced(run, fault):
        yield "failed, but has changed files and does not say so"
    left = sorted(files.keys() - known)
    if left and fault.partition(":")[0] not in REMOVING and not said:
        yield f"left {left}"


def is_silenced(run, fault):
    """Whether the message, too, could not be written."""
    return fault.startswith("write:") and fault.endswith("+") and not run.errors


def of_the_messages(run, fault, good):
    fails_itself = fault.startswith("write:") and good.code != 0
    if not all(LINE.fullmatch(line) for line in run.errors.splitlines(keepends=True)):
        yield "printed something else than messages"
    if run.code not in (0, CLOSED_PIPE) and not run.errors and not is_silenced(run, fault) and not fails_itself:
        yield "failed without a message"
    for secret in good.secrets:
        if secret in run.errors.lower():
            yield "printed a secret"


def of_each_input(run, fault, files, good):
    complete = {name for name, content in good.after.items() if files.get(name) == content}
    for name in good.after.keys() - complete:
        path = BACKUP.sub("", name)
        folder, file = os.path.split(path)
        names = [file, f"/{os.path.basename(folder)}: "]  # A folder that cannot be read is told in place of its files.
        is_told = run.code != PART_FAILED or fault.startswith("write:")
        if not is_told and not any(name.encode() in run.errors for name in names):
            yield f"{name} is not made, and no message names it"
        if path != name and path in complete:
            yield f"{path} is replaced, and its old content is not kept"


def of_the_report(run, report, files, good):
    lines = report.splitlines(keepends=True)
    if run.code == 0 and report and not report.endswith(b"\n"):
        yield "exit code 0 with a report that is cut off"
    for line in lines:
        entry = json.loads(line) if line.endswith(b"\n") else {}
        output = entry.get("output")
        if entry.get("status") == "done" and files.get(output) != good.after[output]:
            yield f"{output} is reported and not there"
    if run.code == 0 and good.command.report and good.command.writes and len(lines) != len(good.command.outputs):
        yield "exit code 0 without the whole report"
