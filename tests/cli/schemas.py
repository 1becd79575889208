"""The schemas of the tool's JSON (schemas/), and which of them its outputs have to follow."""

import functools
import json
import os
import pathlib

FOLDER = pathlib.Path(__file__).parents[2] / "schemas"
ENDING = ".schema.json"

# The commands with --json, whose lines have the schema of the same name. All codes of explain are one value.
COMMANDS = ("check", "diff", "explain", "info", "list", "rescue")

# The commands that write text forms.
TEXT_COMMANDS = ("decrypt", "dump")


def read(name):
    return json.loads((FOLDER / (name + ENDING)).read_text())


@functools.cache
def validator(name):
    """The validator of a schema. The schemas that it refers to are read from the same folder."""
    import jsonschema  # here, because programs that use the tests' helpers run without it

    schema = read(name)
    place = (FOLDER / (name + ENDING)).as_uri()
    return jsonschema.Draft202012Validator(schema, resolver=jsonschema.RefResolver(place, schema))


def problem(name, value):
    """What is wrong with a value by the schema of this name; None for nothing."""
    import jsonschema

    wrong = jsonschema.exceptions.best_match(validator(name).iter_errors(value))
    return wrong and f"{wrong.json_path}: {wrong.message}"


def check_text(name, text):
    """Requires that the text is JSON that follows the schema."""
    try:
        wrong = problem(name, json.loads(text))
    except ValueError as error:
        wrong = str(error)
    if wrong:
        raise AssertionError(f"{name}{ENDING}: {wrong[:2000]}\nin {text[:2000]!r}")


def check_text_form(text):
    """The same of a text form, whose schema is that of its kind and version."""
    version = "legacy-" if b'"fileVersion": "0.0"' in text else ""
    kind = "log" if b'"kind": "logdata"' in text else "show"
    check_text(f"text-{version}{kind}", text)


def check_lines(name, lines):
    """The same for each of the lines; the last one may be cut off."""
    for line in lines:
        if line.endswith(b"\n"):
            check_text(name, line)


def option(words, name):
    """The value of an option; None where it is not given."""
    for word, after in zip(words, [*words[1:], None]):
        if word == name:
            return after
        if word.startswith(name + "="):
            return word.partition("=")[2]
    return None


class Run:
    """A run of the tool in a folder, whose JSON has to follow its schemas."""

    def __init__(self, arguments, folder):
        """The run begins after this."""
        self.words = [os.fsdecode(word) for word in arguments]
        if "--" in self.words:
            self.words = self.words[:self.words.index("--")]
        self.output = pathlib.Path(folder, option(self.words, "-o") or "-")
        self.report = pathlib.Path(folder, option(self.words, "--report") or "")
        self.lines_before = set(self.lines_of_report())

    def lines_of_report(self):
        return self.report.read_bytes().splitlines(keepends=True) if self.report.is_file() else []

    def check(self, stdout, stderr):
        """Requires it of what the run has printed, and of the lines that the report has got."""
        self.check_output(stdout or b"")
        if option(self.words, "--progress") == "json":
            check_lines("progress", [line for line in (stderr or b"").splitlines(keepends=True) if line.startswith(b"{")])
        check_lines("report", [line for line in self.lines_of_report() if line not in self.lines_before])

    def check_output(self, stdout):
        command = next((word for word in self.words if word in (*COMMANDS, *TEXT_COMMANDS)), None)
        if "--offsets" in self.words:
            if "--json" in self.words and stdout.endswith(b"}\n"):
                check_text("offsets", stdout)
        elif command in TEXT_COMMANDS:
            written = self.output.read_bytes() if self.output.is_file() else stdout
            if written.startswith(b"{"):
                check_text_form(written)
        elif command in COMMANDS and "--json" in self.words:
            check_lines(command, [stdout] if stdout.startswith(b"[") else stdout.splitlines(keepends=True))
