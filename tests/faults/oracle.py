"""What must hold after a command of which a call has failed."""

import re

# Calls that remove what is temporary. Where they fail, it stays.
REMOVING = ("unlink", "unlinkat", "rmdir")
# What the tool says where outputs have taken their places though something failed after that.
IN_PLACE = re.compile(rb"is written, but|is replaced, but")
LINE = re.compile(rb"zuna-convert: [^\n]+\n")
CLOSED_PIPE = 141


class Good:
    """A command to which nothing happened: its exit code, what it printed, and the files before and after it."""

    def __init__(self, code, output, before, after, secrets):
        self.code, self.output, self.before, self.after, self.secrets = code, output, before, after, secrets


def problems(run, fault, files, good):
    """What is wrong with a run that had this fault and left `files`, as texts."""
    return [*of_the_process(run), *of_the_files(run, fault, files, good), *of_the_messages(run, fault, good)]


def of_the_process(run):
    if run.code < 0:
        yield f"died of signal {-run.code}"
    elif not run.at_exit:
        yield "did not end by itself"
    elif run.descriptors:
        yield f"left {run.descriptors} descriptors open"
    if not run.fired:
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
    if run.code != 0 and not untouched and not said:
        yield "failed, but has changed files and does not say so"
    left = sorted(files.keys() - known)
    if left and fault.partition(":")[0] not in REMOVING and not said:
        yield f"left {left}"


def of_the_messages(run, fault, good):
    writes_nothing = fault.startswith("write:") and (fault.endswith("+") or good.code != 0)
    if not all(LINE.fullmatch(line) for line in run.errors.splitlines(keepends=True)):
        yield "printed something else than messages"
    if run.code not in (0, CLOSED_PIPE) and not run.errors and not writes_nothing:
        yield "failed without a message"
    for secret in good.secrets:
        if secret in run.errors.lower():
            yield "printed a secret"
