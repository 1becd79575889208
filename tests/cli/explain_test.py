"""explain of zuna-convert."""

import json
import os
import subprocess
import unittest

from tool import NEGATIVE, TOOL, USAGE, ToolTest


class ExplainTest(ToolTest):
    def explained(self, *arguments):
        return self.run_tool("explain", *arguments).stdout.decode()

    def test_tells_what_a_code_means(self):
        self.assertEqual(self.explained("wrong-key"),
                         "wrong-key (error): the file was encrypted with another key or IV\n"
                         "Why: it comes from another installation, the key was changed after it was written, or it was encrypted "
                         "without a key; where one file of "
                         "many fails, damage of its first bytes may look the same\n"
                         "What to do: give the right key file; of several, each is tried\n"
                         "  zuna-convert info FILE --key-file KEY --key-file OLDKEY\n")
        self.assertRegex(self.explained("empty-file"), r"^empty-file \(error\): .+\nWhy: .+\nWhat to do: .+\n$")
        self.assertRegex(self.explained("tempo-zero"),
                         r"^tempo-zero \(finding\): .+\nWhy: .+\nWhat to do: .+\n  zuna-convert edit FILE\n$")

    def test_has_commands_that_are_right(self):
        self.environment["PATH"] = f"{os.path.dirname(os.path.abspath(TOOL))}:{self.environment['PATH']}"
        commands = {command for code in json.loads(self.explained("--json")) for command in code["commands"]}
        self.assertGreater(len(commands), 30)
        for command in sorted(commands):
            if not command.startswith("zuna-convert"):
                continue
            done = subprocess.run(["sh", "-c", command], cwd=self.folder, env=self.environment, capture_output=True)
            if done.returncode == USAGE:  # The words in capitals are no names of commands.
                self.assertIn(b'"COMMAND" is not known here', done.stderr, command)

    def test_lists_all_codes_by_their_kind(self):
        lines = self.explained().splitlines()
        titles = [line for line in lines if line and not line.startswith(" ")]
        self.assertEqual(titles, ["Errors:", "Findings:", "Losses:"])
        codes = [line.split()[0] for line in lines if line.startswith(" ")]
        self.assertLess(codes.index("wrong-key"), codes.index("tempo-zero"))
        self.assertEqual(len(codes), len(json.loads(self.explained("--json"))))
        for code in codes:
            self.assertTrue(self.explained(code).startswith(f"{code} ("))

    def test_writes_json(self):
        wanted = {"code": "wrong-key", "kind": "error", "meaning": "the file was encrypted with another key or IV",
                  "cause": "it comes from another installation, the key was changed after it was written, or it was "
                           "encrypted without a key; where one file "
                           "of many fails, damage of its first bytes may look the same",
                  "remedy": "give the right key file; of several, each is tried",
                  "commands": ["zuna-convert info FILE --key-file KEY --key-file OLDKEY"]}
        self.assertEqual(json.loads(self.explained("wrong-key", "--json")), wanted)
        self.assertIn(wanted, json.loads(self.explained("--json")))

    def test_tells_what_several_codes_mean(self):
        one, other = self.explained("wrong-key"), self.explained("cut-off")
        self.assertEqual(self.explained("wrong-key", "cut-off"), one + "\n" + other)
        lines = self.explained("wrong-key", "cut-off", "--json").splitlines()
        self.assertEqual([json.loads(line)["code"] for line in lines], ["wrong-key", "cut-off"])
        done = self.run_tool("explain", "wrong-key", "frobnicate", "cut-off", code=NEGATIVE)
        self.assertEqual(done.stdout.decode(), one + "\n" + other)
        self.assertRegex(done.stderr, b'^zuna-convert: explain: there is no code "frobnicate"; zuna-convert explain lists all ')

    def test_suggests_a_code_that_may_be_meant(self):
        self.refuse("explain", "wrong-kye", code=NEGATIVE,
                    message='explain: there is no code "wrong-kye"; did you mean "wrong-key"?; zuna-convert explain lists all')
        self.refuse("explain", "frobnicate", code=NEGATIVE,
                    message='explain: there is no code "frobnicate"; zuna-convert explain lists all')


if __name__ == "__main__":
    unittest.main()
