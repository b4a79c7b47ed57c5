"""check-examples must say no when the program does not keep what an example promises."""

import pathlib
import tempfile
import unittest

from tool import load

examples = load("tools/check-examples")

RIGHT = {
    "x.opt": "[ inf ]\n",
    "x.sol": "[ 1 ]\n",
    "README.md": "One variable.\n",
    "expected.out": "solutions\n",
    "expected.sol": "[ 1 ] | 1\n",
}


class CheckExamples(unittest.TestCase):
    def problems(self, program, changes=None):
        with tempfile.TemporaryDirectory() as scratch:
            binary = pathlib.Path(scratch) / "program"
            binary.write_text("#!/bin/sh\n" + program)
            binary.chmod(0o755)
            example = pathlib.Path(scratch) / "x"
            example.mkdir()
            for name, text in {**RIGHT, **(changes or {})}.items():
                if text is not None:
                    (example / name).write_text(text)
            return examples.check(binary, example)

    def test_kept_promise_passes(self):
        self.assertEqual(self.problems("echo solutions; echo '[ 1 ] | 1' > x.sol"), [])

    def test_other_output_is_noticed(self):
        self.assertEqual(len(self.problems("echo none; echo '[ 1 ] | 1' > x.sol")), 1)

    def test_other_file_is_noticed(self):
        self.assertEqual(len(self.problems("echo solutions")), 1)

    def test_removed_file_is_noticed_and_can_be_promised(self):
        self.assertEqual(len(self.problems("echo solutions; rm x.sol")), 1)
        self.assertEqual(self.problems("echo solutions; rm x.sol", {"expected.sol": None}), [])

    def test_failure_is_noticed(self):
        program = "echo solutions; echo '[ 1 ] | 1' > x.sol; exit 1"
        self.assertEqual(len(self.problems(program)), 1)

    def test_incomplete_example_is_noticed(self):
        self.assertEqual(self.problems("", {"README.md": None}), ["x: missing README.md"])


class CheckExamplesOfAnotherProgram(unittest.TestCase):
    def problems(self, program, changes=None):
        files = {**RIGHT, "command": "search --sol=2 x.opt\n", "x.sol": None}
        files["expected.out"] = "--sol=2 x.opt\nFound after: 0 sec(s)\n"
        with tempfile.TemporaryDirectory() as scratch:
            binary = pathlib.Path(scratch) / "search"
            binary.write_text("#!/bin/sh\n" + program)
            binary.chmod(0o755)
            example = pathlib.Path(scratch) / "x"
            example.mkdir()
            for name, text in {**files, **(changes or {})}.items():
                if text is not None:
                    (example / name).write_text(text)
            return examples.check(binary.with_name("sift"), example)

    def test_it_runs_with_its_arguments_and_its_times_do_not_matter(self):
        program = 'echo "$@"; echo "Found after: 4 sec(s)"; echo "[ 1 ] | 1" > x.sol'
        self.assertEqual(self.problems(program), [])

    def test_other_output_is_noticed(self):
        self.assertEqual(len(self.problems('echo "[ 1 ] | 1" > x.sol')), 1)

    def test_missing_problem_is_noticed(self):
        self.assertEqual(self.problems("", {"x.opt": None}), ["x: missing x.opt"])

    def test_it_finds_all_files_of_the_example_but_the_promises(self):
        program = 'ls; cat a.txt; echo "[ 1 ] | 1" > x.sol'
        files = {"a.txt": "a\n", "x.mps": "b\n", "expected.out": "a.txt\nx.mps\na\n", "x.opt": None}
        self.assertEqual(self.problems(program, files), [])


if __name__ == "__main__":
    unittest.main()
