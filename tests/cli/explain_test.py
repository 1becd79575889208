"""explain of zuna-convert."""

import json
import unittest

from tool import NEGATIVE, ToolTest


class ExplainTest(ToolTest):
    def explained(self, *arguments):
        return self.run_tool("explain", *arguments).stdout.decode()

    def test_tells_what_a_code_means(self):
        self.assertEqual(self.explained("wrong-key"),
                         "wrong-key (error): the file was encrypted with another key or IV\n"
                         "What to do: give the right key file\n")
        self.assertRegex(self.explained("tempo-zero"), r"^tempo-zero \(finding\): .+\nWhat to do: .+\n$")

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
                  "remedy": "give the right key file"}
        self.assertEqual(json.loads(self.explained("wrong-key", "--json")), wanted)
        self.assertIn(wanted, json.loads(self.explained("--json")))

    def test_suggests_a_code_that_may_be_meant(self):
        self.refuse("explain", "wrong-kye", code=NEGATIVE,
                    message='explain: there is no code "wrong-kye"; did you mean "wrong-key"?; zuna-convert explain lists all')
        self.refuse("explain", "frobnicate", code=NEGATIVE,
                    message='explain: there is no code "frobnicate"; zuna-convert explain lists all')


if __name__ == "__main__":
    unittest.main()
