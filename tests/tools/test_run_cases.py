"""The case runner must notice each kind of difference."""

import pathlib
import subprocess
import sys
import tempfile
import unittest

from tool import ROOT

# Stands in for the command: prints its argument, rewrites the file.
PROGRAM = """#!/bin/sh
echo "read $1"
echo changed > "$1"
"""

RIGHT = {
    "about": "the program rewrites its file",
    "in/p.sol": "old\n",
    "stdout": "read p.sol\n",
    "out/p.sol": "changed\n",
    "no-star-check": "the program is a stand-in",
}


class RunCases(unittest.TestCase):
    def run_case(self, changes=None, program=PROGRAM):
        with tempfile.TemporaryDirectory() as scratch:
            binary = pathlib.Path(scratch) / "program"
            binary.write_text(program)
            binary.chmod(0o755)
            case = pathlib.Path(scratch) / "case"
            for name, text in {**RIGHT, **(changes or {})}.items():
                if text is not None:
                    (case / name).parent.mkdir(parents=True, exist_ok=True)
                    (case / name).write_text(text)
            command = [sys.executable, "-B", ROOT / "tests" / "run-cases", binary, case]
            return subprocess.run(command, capture_output=True, text=True, check=False)

    def assert_fails(self, hint, changes=None, program=PROGRAM):
        result = self.run_case(changes, program)
        self.assertEqual(result.returncode, 1, result.stdout)
        self.assertIn(hint, result.stdout)
        self.assertTrue(result.stdout.endswith("0 passed, 1 failed\n"), result.stdout)

    def test_right_case_passes(self):
        result = self.run_case()
        self.assertEqual(result.returncode, 0, result.stdout)
        self.assertEqual(result.stdout, "1 passed, 0 failed\n")

    def test_no_cases_is_a_failure(self):
        command = [sys.executable, "-B", ROOT / "tests" / "run-cases", "/bin/true"]
        result = subprocess.run(
            command + ["--only", "no such case"], capture_output=True, text=True, check=False
        )
        self.assertEqual(result.returncode, 1)
        self.assertEqual(result.stdout, "0 passed, 0 failed\n")

    def test_other_output_is_noticed(self):
        self.assert_fails("-read q.sol", {"stdout": "read q.sol\n"})

    def test_missing_line_feed_is_noticed(self):
        self.assert_fails("no line feed", {"stdout": "read p.sol"})

    def test_output_on_the_error_stream_is_noticed(self):
        self.assert_fails("+oops", program=PROGRAM + "echo oops >&2\n")

    def test_other_status_is_noticed(self):
        self.assert_fails("status 3, not 0", program=PROGRAM + "exit 3\n")

    def test_signal_goes_by_its_name(self):
        self.assert_fails("status SIGABRT, not 0", program=PROGRAM + "kill -ABRT $$\n")
        result = self.run_case({"status": "SIGABRT\n"}, PROGRAM + "kill -ABRT $$\n")
        self.assertEqual(result.returncode, 0, result.stdout)

    def test_other_file_content_is_noticed(self):
        self.assert_fails("+changed", {"out/p.sol": "unchanged\n"})

    def test_surplus_file_is_noticed(self):
        self.assert_fails("q.tmp should not be there", program=PROGRAM + "touch q.tmp\n")

    def test_missing_file_is_noticed(self):
        self.assert_fails("p.sol is missing", program=PROGRAM + "rm p.sol\n")

    def test_without_out_nothing_may_change(self):
        self.assert_fails("+changed", {"out/p.sol": None})

    def test_file_that_should_be_gone_is_noticed(self):
        changes = {"out/p.sol": None, "gone": "p.sol\n"}
        self.assert_fails("p.sol should not be there", changes)
        result = self.run_case(changes, PROGRAM + "rm p.sol\n")
        self.assertEqual(result.returncode, 0, result.stdout)

    def test_failing_check_is_noticed(self):
        self.assert_fails("check ended with status 1", {"check": "exit 1\n"})

    def test_failing_setup_is_noticed(self):
        self.assert_fails("setup ended with status 1", {"setup": "false\n"})

    def test_scripts_find_the_commands(self):
        result = self.run_case({"setup": "command -v program", "check": "command -v program"})
        self.assertEqual(result.returncode, 0, result.stdout)

    def test_standard_input_is_what_the_case_holds(self):
        program = '#!/bin/sh\nread name\necho "read $name"\necho changed > "$1"\n'
        result = self.run_case({"stdin": "p.sol\n"}, program)
        self.assertEqual(result.returncode, 0, result.stdout)
        self.assert_fails("+read \n", program=program)

    def test_case_must_say_what_it_pins(self):
        self.assert_fails("about is missing", {"about": None})

    def test_time_limit_ends_the_program(self):
        self.assert_fails("still running", {"timeout": "0.2"}, "#!/bin/sh\nexec sleep 5\n")

    def test_memory_limit_of_the_case_holds(self):
        hungry = "#!/usr/bin/env python3\ntext = bytearray(150 << 20)\n"
        changes = {"stdout": "", "stderr": None, "out/p.sol": "old\n"}
        self.assert_fails("MemoryError", {**changes, "memory": "100\n"}, hungry)
        result = self.run_case({**changes, "memory": "400\n"}, hungry)
        self.assertEqual(result.returncode, 0, result.stdout)


PROBLEM = "[ inf ] [ [ 1 2 ] ] [ ] [ ] [ ] [ ] [ ] [ ] [ 0 0 ] [ 0 0 ] [ 5 5 ]\n"
STAR = "[ 5 5 ] | -15 | [ 15 ] | 0 | 0 | \n"

# Stands in for a search that took three seconds.
SEARCH = """#!/bin/sh
echo "Found after: 3 sec(s)"
echo "{ 3 sec(s) 4 sec(s) }"
echo '[ 5 5 ] | -15 | [ 15 ] | 0 | 3 | ' > p.sol
echo basis > p.lat
"""

FOUND = {
    "about": "a search finds the best point",
    "command": "search\n",
    "in/p.opt": PROBLEM,
    "stdout": "Found after: 0 sec(s)\n{ 0 sec(s) }\n",
    "out/p.opt": PROBLEM,
    "out/p.sol": STAR,
    "any": "p.lat\n",
}


class RunCasesOfAnotherCommand(unittest.TestCase):
    def run_case(self, changes=None, search=SEARCH, sift="#!/bin/sh\n"):
        with tempfile.TemporaryDirectory() as scratch:
            for name, program in (("search", search), ("sift", sift)):
                binary = pathlib.Path(scratch) / name
                binary.write_text(program)
                binary.chmod(0o755)
            case = pathlib.Path(scratch) / "case"
            for name, text in {**FOUND, **(changes or {})}.items():
                if text is not None:
                    (case / name).parent.mkdir(parents=True, exist_ok=True)
                    (case / name).write_text(text)
            command = [sys.executable, "-B", ROOT / "tests" / "run-cases", binary, case]
            return subprocess.run(command, capture_output=True, text=True, check=False)

    def assert_fails(self, hint, **changes):
        result = self.run_case(**changes)
        self.assertEqual(result.returncode, 1, result.stdout)
        self.assertIn(hint, result.stdout)

    def test_short_times_and_named_files_do_not_matter(self):
        result = self.run_case()
        self.assertEqual(result.returncode, 0, result.stdout)

    def test_long_time_is_noticed(self):
        self.assert_fails("+Found after: 31 sec(s)", search=SEARCH.replace("3 sec", "31 sec"))
        self.assert_fails("| 31 |", search=SEARCH.replace("| 3 |", "| 31 |"))

    def test_other_time_is_noticed_where_nothing_may_change(self):
        changes = {"in/p.sol": STAR, "in/p.lat": "basis\n", "any": None}
        changes.update({"out/p.opt": None, "out/p.sol": None})
        self.assert_fails("| 3 |", changes=changes)

    def test_missing_named_file_is_noticed(self):
        self.assert_fails("p.lat is missing", search=SEARCH.replace("> p.lat", "> /dev/null"))

    def test_wrong_star_is_noticed(self):
        wrong = STAR.replace("5 5", "5 4")
        search = SEARCH.replace("5 5", "5 4")
        self.assert_fails("star-check says no", changes={"out/p.sol": wrong}, search=search)

    def test_lost_star_is_noticed(self):
        self.assert_fails("star-check says no", changes={"in/p.sol": "[ 1 1 ]\n"})

    def test_file_that_is_not_final_is_noticed(self):
        self.assert_fails("sifted again", sift="#!/bin/sh\necho >> $1\n")


if __name__ == "__main__":
    unittest.main()
