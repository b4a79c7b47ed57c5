"""The three files of a base, which starport replaces together: all of them, or none."""

import itertools
import pathlib
import signal
import subprocess
import unittest

from faulty import NOBODY, PROGRAM, FaultCase, error, has_mounts, is_root, met

PORT = pathlib.Path(PROGRAM).with_name("starport")
MODEL = "maximize\n obj: x\nsubject to\n row: x + y <= {}\nbounds\n x <= 9\ngeneral\n x y\nend\n"
SOLUTION = "=obj= {0}\nx {0}\ny 1\n"
ENDINGS = ("names", "opt", "sol")
# Calls by which a text comes into its place, or fails to.
WRITING = ("create", "faccessat", "fchmod", "fsync", "linkat", "renameat", "write")


class Base(FaultCase):
    argument = "model.lp"

    def setUp(self):
        super().setUp()
        self.wholes = []
        for number in (4, 5):
            self.write_inputs(number)
            self.assertEqual(self.import_model().status, 0)
            self.wholes.append(self.texts())

    def write_inputs(self, number):
        (self.folder / "model.lp").write_text(MODEL.format(number))
        (self.folder / "model.out").write_text(SOLUTION.format(number))

    def import_model(self, fault=None, **options):
        command = (PORT, "--force", "--solution=model.out")
        return self.run_with(fault, command=command, **options)

    def texts(self):
        return [
            path.read_bytes() if path.exists() else None
            for path in (self.folder / f"model.{ending}" for ending in ENDINGS)
        ]

    def put(self, texts):
        for ending, text in zip(ENDINGS, texts):
            path = self.folder / f"model.{ending}"
            if text is None:
                path.unlink(missing_ok=True)
            else:
                path.write_bytes(text)

    def logged_run(self, old):
        """The calls of a run, and what it makes of the texts."""
        self.put(old)
        log = self.scratch / "log"
        log.write_text("")
        self.import_model(log=log)
        return log.read_text().split(), self.texts()

    def assert_all_or_none(self, old, new, fault):
        """Returns the status."""
        self.put(old)
        result = self.import_model(fault)
        self.assertEqual(self.texts(), new if result.status == 0 else old, result)
        self.assertIn(result.status, (0, 2))
        self.assert_nothing_left(result)
        return result.status

    def assert_each_call_may_fail(self, old):
        calls, new = self.logged_run(old)
        self.assertEqual(calls.count("renameat"), 3)
        for call in WRITING:
            for number in range(1, calls.count(call) + 1):
                with self.subTest(call=call, number=number):
                    status = self.assert_all_or_none(old, new, error(call, number, "EIO"))
                    if call == "renameat":
                        self.assertEqual(status, 2)
                    if call == "linkat":
                        self.assertEqual(status, 0)

    def test_files_that_are_there_stay_if_one_of_them_must(self):
        self.assert_each_call_may_fail(self.wholes[0])

    def test_new_files_go_if_an_old_one_must_stay(self):
        self.assert_each_call_may_fail([self.wholes[0][0], None, None])
        self.assert_each_call_may_fail([None, self.wholes[0][1], None])
        self.assert_each_call_may_fail([None, None, None])

    def explain_records(self):
        """What --explain says of what is there."""
        command = [PORT, "--explain", "model.sol"]
        return subprocess.run(command, cwd=self.folder, capture_output=True, check=False)

    def test_killed_run_leaves_whole_files_and_takes_no_names_for_those_of_another_problem(self):
        old, new = self.wholes
        for when, number in itertools.product(("before", "after"), (1, 2, 3)):
            with self.subTest(when=when, number=number):
                self.put(old)
                result = self.import_model(met(when, signal.SIGKILL, "renameat", number))
                self.assertEqual(result.status, -signal.SIGKILL)
                self.clear(result)
                # First the records come into their place, then the problem, last the names.
                done = number if when == "after" else number - 1
                left = [new[2 - k] if k < done else old[2 - k] for k in (2, 1, 0)]
                self.assertEqual(self.texts(), left)
                # The records are wrong; 2: the names are those of another problem.
                self.assertEqual(self.explain_records().returncode, 2 if done == 2 else 1)
                self.assertEqual(self.import_model().status, 0)
                self.assertEqual(self.texts(), new)

    def test_killed_first_run_leaves_what_needs_force_once_the_problem_is_there(self):
        new = self.wholes[1]
        for number, status in ((1, 0), (2, 2), (3, 0)):
            with self.subTest(number=number):
                self.put([None, None, None])
                result = self.import_model(met("after", signal.SIGKILL, "renameat", number))
                self.clear(result)
                again = self.run_with(command=(PORT, "--solution=model.out"))
                self.assertEqual(again.status, status, again)
                self.assertEqual(self.import_model().status, 0)
                self.assertEqual(self.texts()[:2], new[:2])

    @is_root
    @has_mounts
    def test_files_that_are_rewritten_in_place_get_their_texts_back(self):
        self.give_to_nobody()
        self.folder.chmod(0o555)
        for call in ("fsync", "ftruncate", "write"):
            for number in (1, 2, 3):
                with self.subTest(call=call, number=number):
                    self.put(self.wholes[0])
                    result = self.import_model(error(call, number, "EIO"), user=NOBODY)
                    self.assertEqual(result.status, 2)
                    self.assertEqual(self.texts(), self.wholes[0], result)


if __name__ == "__main__":
    unittest.main()
