#!/usr/bin/env python3
"""Checks that not_covered.py finds what a list of uncovered code lacks and what it has too much."""

import pathlib
import subprocess
import sys
import tempfile
import unittest

import not_covered

SOURCE = """\
int sign(int x) {
  if (x < 0) return -1;
  return 1;
  if (x < 0) return -1;
}
"""

CHECK = "branch a/b.cpp: if (x < 0) return -1;"
LINE = "line a/b.cpp: return 1;"


def branch(count, throw=False):
    return {"count": count, "fallthrough": False, "throw": throw}


def line(number, count, *branches, noncode=False, excluded=False):
    return {"line_number": number, "count": count, "branches": list(branches), "gcovr/noncode": noncode,
            "gcovr/excluded": excluded}


def report(*lines):
    return {"files": [{"file": "a/b.cpp", "lines": list(lines)}]}


def problems(of, text):
    """What compare() says about a report and the text of a list."""
    with tempfile.TemporaryDirectory() as folder:
        source = pathlib.Path(folder)
        (source / "a").mkdir()
        (source / "a/b.cpp").write_text(SOURCE)
        missed, where = not_covered.not_covered(of, source)
    return list(not_covered.compare(missed, where, not_covered.read_list(text)[0]))


class Compare(unittest.TestCase):
    def test_everything_is_covered(self):
        self.assertEqual(problems(report(line(2, 4, branch(1), branch(3))), ""), [])

    def test_a_branch_is_missing(self):
        self.assertEqual(problems(report(line(2, 4, branch(4), branch(0))), ""),
                         ["a/b.cpp:2: not covered: branch x1, listed x0: if (x < 0) return -1;"])

    def test_a_line_is_missing_and_its_branches_are_not_told_too(self):
        self.assertEqual(problems(report(line(3, 0, branch(0))), ""),
                         ["a/b.cpp:3: not covered: line x1, listed x0: return 1;"])

    def test_what_is_listed_passes(self):
        of = report(line(2, 4, branch(4), branch(0)), line(3, 0))
        self.assertEqual(problems(of, f"A reason.\n  {CHECK}\n\nAnother.\n  {LINE}\n"), [])

    def test_what_is_listed_and_covered_fails(self):
        of = report(line(2, 4, branch(2), branch(2)), line(3, 1))
        self.assertEqual(problems(of, f"A reason.\n  {CHECK}\n  {LINE}\n"),
                         ["a/b.cpp: listed, but covered: branch x1, found x0: if (x < 0) return -1;",
                          "a/b.cpp: listed, but covered: line x1, found x0: return 1;"])

    def test_a_file_that_is_not_in_the_report_fails(self):
        self.assertEqual(problems(report(), f"A reason.\n  {LINE}\n"),
                         ["a/b.cpp: listed, but covered: line x1, found x0: return 1;"])

    def test_lines_that_read_the_same_are_counted_together(self):
        of = report(line(2, 4, branch(4), branch(0)), line(4, 4, branch(4), branch(0)))
        self.assertEqual(problems(of, f"A reason.\n  {CHECK}\n"),
                         ["a/b.cpp:2, 4: not covered: branch x2, listed x1: if (x < 0) return -1;"])
        self.assertEqual(problems(of, f"A reason.\n  {CHECK.replace('branch', 'branch x2')}\n"), [])

    def test_branches_of_exceptions_and_lines_without_code_do_not_count(self):
        of = report(line(2, 4, branch(4), branch(0, throw=True)), line(1, 0, noncode=True), line(3, 0, excluded=True))
        self.assertEqual(problems(of, ""), [])


class List(unittest.TestCase):
    def test_reasons_are_counted(self):
        text = f"# A remark.\nA reason\nin two lines.\n  {CHECK.replace('branch', 'branch x2')}\n  {LINE}\n"
        self.assertEqual(not_covered.read_list(text)[1], {"A reason in two lines.": 3})

    def test_what_is_no_list_is_refused(self):
        for text in [f"  {LINE}\n", "A reason.\n", "A reason.\n  lines a/b.cpp: return 1;\n",
                     f"A reason.\n  {LINE}\n\nAnother.\n  {LINE}\n"]:
            with self.assertRaises(not_covered.ListError, msg=text):
                not_covered.read_list(text)


class Program(unittest.TestCase):
    def run_with(self, text):
        with tempfile.TemporaryDirectory() as folder:
            files = pathlib.Path(folder)
            (files / "a").mkdir()
            (files / "a/b.cpp").write_text(SOURCE)
            (files / "report.json").write_text(str(report(line(2, 4, branch(4), branch(0)), line(3, 1)))
                                               .replace("'", '"').replace("False", "false"))
            (files / "list.txt").write_text(text)
            return subprocess.run([sys.executable, "-B", not_covered.__file__, files / "report.json",
                                   files / "list.txt", files], capture_output=True, text=True, check=False)

    def test_prints_figures_and_fails_where_something_is_missing(self):
        ended = self.run_with("")
        self.assertEqual(ended.returncode, 1)
        self.assertRegex(ended.stdout, r"\na +2/2 +1/2\n")
        self.assertIn("a/b.cpp:2: not covered", ended.stderr)

    def test_passes_where_all_is_listed(self):
        ended = self.run_with(f"A reason.\n  {CHECK}\n")
        self.assertEqual((ended.returncode, ended.stderr.strip()), (0, ""))
        self.assertIn("   1 not covered: A reason.\n", ended.stdout)

    def test_refuses_what_is_no_list(self):
        ended = self.run_with("A reason.\n")
        self.assertEqual(ended.returncode, 1)
        self.assertIn("a block needs a reason and entries", ended.stderr)


if __name__ == "__main__":
    unittest.main()
