"""That tests/faults/oracle.py notices each thing that must not happen, and that every call has its errors."""

import unittest

import errors
import oracle
import shim
from commands import Command, many

ONE = Command(())
GOOD = oracle.Good(0, b"text", {"in": b"in"}, {"in": b"in", "out": b"new"}, [b"00ff"], ONE)
FAILING = oracle.Good(6, b"", {"in": b"in"}, {"in": b"in"}, [], ONE)
REPLACING = oracle.Good(0, b"", {"out": b"old"}, {"out": b"new"}, [], ONE)
ALONE, TOGETHER = (oracle.Good(0, b"", {"a": b"old", "b": b"old"}, {"a": b"new", "b": b"new", "a.~1~": b"old"}, [], command)
                   for command in many(outputs=("a", "b"), report="report"))
UNTOUCHED, COMPLETE = {"in": b"in"}, {"in": b"in", "out": b"new"}
MESSAGE = b"zuna-convert: in: cannot be read; try again\n"
OTHER = b"zuna-convert: it is lost\n"
FAULT = "read:1:5"


class Run:
    """A run that failed as it should, apart from `changes`."""

    def __init__(self, **changes):
        self.code, self.output, self.errors = 6, b"", MESSAGE
        self.fired, self.at_exit, self.descriptors = 1, 1, 0
        vars(self).update(changes)


class OracleTest(unittest.TestCase):
    def expect(self, problem, files, good=GOOD, fault=FAULT, **changes):
        found = oracle.problems(Run(**changes), fault, files, good)
        self.assertEqual(found, [problem] if problem else [])

    def test_failure_that_leaves_everything(self):
        self.expect(None, UNTOUCHED)

    def test_success_in_spite_of_the_fault(self):
        self.expect(None, COMPLETE, code=0, output=b"text", errors=b"")

    def test_process(self):
        self.expect("died of signal 6", UNTOUCHED, code=-6, at_exit=0)
        self.expect("did not end by itself", UNTOUCHED, at_exit=0)
        self.expect("left 2 descriptors open", UNTOUCHED, descriptors=2)
        self.expect("has made fewer calls than before", UNTOUCHED, fired=0)

    def test_command_that_fails_by_itself(self):
        self.expect(None, UNTOUCHED, FAILING)
        self.expect(None, UNTOUCHED, FAILING, fault="write:1:5", errors=b"")
        self.expect("exit code 0 for a command that fails", UNTOUCHED, FAILING, code=0)

    def test_files(self):
        self.expect("exit code 0 without the whole result", UNTOUCHED, code=0, output=b"text")
        self.expect("exit code 0 without the whole text", COMPLETE, code=0, output=b"te")
        self.expect("failed, but has changed files and does not say so", COMPLETE)
        self.expect(None, COMPLETE, fault="write:2:1+", errors=b"")
        self.expect("failed, but has changed files and does not say so", COMPLETE, fault="write:2:1+")
        self.expect("left ['.zuna-1.tmp']", {**UNTOUCHED, ".zuna-1.tmp": b""})
        for files in ({}, {"out": b"ne"}):
            self.assertIn("out is neither old nor complete", oracle.problems(Run(), FAULT, files, REPLACING))

    def test_files_where_the_tool_says_so(self):
        said = b"zuna-convert: out: is written, but its folder cannot be flushed\n"
        self.expect(None, COMPLETE, errors=said)
        self.expect(None, {**UNTOUCHED, ".zuna-1.tmp": b""}, fault="rmdir:1:5")

    def test_each_of_many_inputs(self):
        some = {"a": b"new", "a.~1~": b"old", "b": b"old"}
        self.expect("b is not made, and no message names it", some, ALONE, code=7, errors=OTHER)
        self.expect(None, some, ALONE, code=7, errors=b"zuna-convert: in/b: cannot be read; try again\n")
        self.expect(None, some, ALONE, code=70)
        self.expect("a is replaced, and its old content is not kept", {"a": b"new", "b": b"old"}, ALONE, code=70)
        self.expect(None, some, TOGETHER, code=70, fired=0)
        self.expect(None, {"a": b"new", "a.~2~": b"old", "b": b"old"}, ALONE, code=70)
        self.expect("left ['a.~2~']", {**some, "a.~2~": b"old"}, ALONE, code=70)

    def test_report(self):
        line = b'{"status": "done", "output": "%s"}\n'
        some = {"a": b"new", "a.~1~": b"old", "b": b"old"}
        self.expect(None, {**some, "report": line % b"a" + b'{"sta'}, ALONE, code=70)
        self.expect("b is reported and not there", {**some, "report": line % b"b"}, ALONE, code=70)
        complete = {**some, "b": b"new"}
        self.expect(None, {**complete, "report": line % b"a" + line % b"b"}, ALONE, code=0)
        self.expect("exit code 0 without the whole report", {**complete, "report": line % b"a"}, ALONE, code=0)
        self.assertIn("exit code 0 with a report that is cut off",
                      oracle.problems(Run(code=0), FAULT, {**complete, "report": (line % b"a")[:-1]}, ALONE))

    def test_messages(self):
        self.expect("failed without a message", UNTOUCHED, errors=b"")
        self.expect(None, UNTOUCHED, errors=b"", code=141)
        self.expect(None, UNTOUCHED, errors=b"", fault="write:1:5+")
        self.expect("printed something else than messages", UNTOUCHED, errors=MESSAGE + b"terminate called\n")
        self.expect("printed a secret", UNTOUCHED, errors=b"zuna-convert: key: 00FF\n")


class ErrorsTest(unittest.TestCase):
    def test_every_call_has_its_errors(self):
        calls = shim.run(["/bin/true"]).counts
        self.assertEqual({*errors.LISTED, "memory"}, set(calls))

    def test_interruptions_end(self):
        for call in errors.LISTED:
            self.assertNotIn("4+", errors.actions(call))
        self.assertIn("4x3", errors.actions("read"))
        self.assertIn("short+", errors.actions("write"))


if __name__ == "__main__":
    unittest.main()
