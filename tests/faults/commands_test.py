"""That tests/faults/commands.py has every command of zuna-convert, and says what each of them writes."""

import os
import pathlib
import re
import shutil
import subprocess
import tempfile
import unittest

from commands import COMMANDS, environment, make_inputs

TOOL = os.environ["ZUNA_CONVERT"]


def subcommands(*path):
    """All commands below the command `path`, as tuples of words."""
    text = subprocess.run([TOOL, *path, "--help"], check=True, stdout=subprocess.PIPE, text=True).stdout
    names = re.findall(r"^  (\S+)", text.partition("\nCommands:\n")[2].partition("\n\n")[0], re.MULTILINE)
    return [found for name in names for found in subcommands(*path, name)] or [path]


def contents(folder):
    return {str(path.relative_to(folder)): path.read_bytes() for path in folder.rglob("*") if path.is_file()}


class CommandsTest(unittest.TestCase):
    def test_has_every_command(self):
        known = subcommands()
        self.assertIn(("midi", "export"), known)
        for words in known:
            self.assertTrue(any(command.arguments[:len(words)] == words for command in COMMANDS), words)

    def test_names_what_each_command_writes(self):
        with tempfile.TemporaryDirectory(prefix="zuna-commands-") as folder:
            inputs = pathlib.Path(folder) / "inputs"
            inputs.mkdir()
            make_inputs(TOOL, inputs)
            before = contents(inputs)
            for command in COMMANDS:
                place = shutil.copytree(inputs, pathlib.Path(folder) / "place")
                subprocess.run([TOOL, *command.arguments], input=before.get(command.stdin, b""), cwd=place,
                               env=environment(), check=True, capture_output=True)
                after = contents(place)
                changed = [name for name in after if after[name] != before.get(name)]
                self.assertEqual(set(changed) - {command.report}, set(command.outputs), command)
                self.assertLessEqual(set(before), set(after), command)
                shutil.rmtree(place)


if __name__ == "__main__":
    unittest.main()
