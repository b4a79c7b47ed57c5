"""A search whose solution file can't be written: its solutions must not be lost."""

import fcntl
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import time
import unittest

from test_search import PROGRAM, SOLUTION, SearchCase

NOBODY = 65534
TOLD_BEFORE = (
    "*** File {} can't be written: what is found will be in a file of its own, "
    "or in the report only\n"
)


class Unwritable(SearchCase):
    def setUp(self):
        super().setUp()
        self.work = pathlib.Path(tempfile.mkdtemp(prefix="search-"))
        self.addCleanup(shutil.rmtree, self.work)
        # The user of the search, whom modes stop.
        self.user = {}
        if os.geteuid() == 0:
            self.user = {"user": NOBODY, "group": NOBODY, "extra_groups": []}
            os.chown(self.folder, NOBODY, NOBODY)
            os.chown(self.work, NOBODY, NOBODY)
        self.addCleanup(self.folder.chmod, 0o755)
        self.addCleanup(self.work.chmod, 0o755)

    def search(self, folder, file="p.opt"):
        result = subprocess.run(
            [PROGRAM, "--sol=1", file],
            cwd=folder,
            capture_output=True,
            stdin=subprocess.DEVNULL,
            text=True,
            timeout=120,
            **self.user,
        )
        self.assertEqual(result.returncode, 1, result)
        self.assertIn(f"\nx = {SOLUTION}\n", result.stdout)
        return result.stderr

    def assert_found_in(self, folder, errors, shown):
        (found,) = folder.glob("p.sol.found.*")
        self.assertTrue(found.read_text().startswith(SOLUTION))
        self.assertIn(f"*** The stars of this search are in {shown}{found.name}.\n", errors)

    def test_directory_in_place_of_the_file(self):
        self.sol.mkdir()
        errors = self.search(self.folder)
        self.assertTrue(errors.startswith(TOLD_BEFORE.format("p.sol")), errors)
        self.assert_found_in(self.folder, errors, "")

    def test_read_only_file_of_somebody_else(self):
        wrong = SOLUTION.replace("1", "0") + "\n"
        self.sol.write_text(wrong)
        self.sol.chmod(0o444)
        errors = self.search(self.folder)
        self.assertTrue(errors.startswith(TOLD_BEFORE.format("p.sol")), errors)
        self.assertEqual(self.sol.read_text(), wrong)
        self.assert_found_in(self.folder, errors, "")

    def test_read_only_folder_leaves_them_in_the_current_one(self):
        self.folder.chmod(0o555)
        path = self.folder / "p.opt"
        errors = self.search(self.work, path)
        self.assertTrue(errors.startswith(TOLD_BEFORE.format(path.with_suffix(".sol"))), errors)
        self.assert_found_in(self.work, errors, "")

    def test_without_any_folder_they_are_in_the_report(self):
        self.folder.chmod(0o555)
        self.work.chmod(0o555)
        errors = self.search(self.work, self.folder / "p.opt")
        self.assertIn("*** The stars of this search are in its report only\n", errors)

    def test_search_that_finds_nothing_new_succeeds(self):
        (self.folder / "p.opt").write_text("[ ] [ ] [ [ 2 ] ] [ 3 ] [ ] [ ] [ ] [ ] [ 0 ] [ 0 ] [ 5 ]")
        self.folder.chmod(0o555)
        result = subprocess.run(
            [PROGRAM, "p.opt"], cwd=self.folder, capture_output=True, text=True, **self.user
        )
        self.assertNotIn("stars of this search", result.stderr)


HOLDER = """
import fcntl, sys, time
lock = open(sys.argv[1])
fcntl.flock(lock, fcntl.LOCK_EX)
print("locked", flush=True)
time.sleep(float(sys.argv[2]))
"""


class LockHolders(SearchCase):
    def hold(self, path, seconds):
        holder = subprocess.Popen(
            [sys.executable, "-c", HOLDER, path, str(seconds)], stdout=subprocess.PIPE, text=True
        )
        self.addCleanup(holder.communicate)
        self.addCleanup(holder.kill)
        self.assertEqual(holder.stdout.readline(), "locked\n")
        return holder

    def test_search_waits_for_a_live_holder_and_says_so(self):
        self.sol.write_text(f"{SOLUTION} | 0 | [ ] | 0 | 99 | --beta=7 | 1.0\n")
        holder = self.hold(self.sol, 4)
        began = time.monotonic()
        process = self.start("--sol=1")
        _, errors = self.finish(process)
        self.assertEqual(process.returncode, 0)
        self.assertGreater(time.monotonic() - began, 2)
        self.assertEqual(
            errors, f"*** Waiting for process {holder.pid}, which has locked p.sol\n"
        )
        self.assertEqual(len(self.sol.read_text().splitlines()), 2)
        self.assertEqual(sorted(os.listdir(self.folder)), ["p.lat", "p.opt", "p.sol"])

    def test_first_solutions_wait_at_the_problem(self):
        holder = self.hold(self.folder / "p.opt", 2)
        process = self.start("--sol=1")
        time.sleep(0.5)
        self.assertFalse(self.sol.exists())
        self.finish(process)
        holder.wait()
        self.assertEqual(process.returncode, 0)
        self.assertTrue(self.sol.read_text().startswith(SOLUTION))

    def test_lock_on_the_folder_is_nobodys_business(self):
        lock = os.open(self.folder, os.O_RDONLY)
        self.addCleanup(os.close, lock)
        fcntl.flock(lock, fcntl.LOCK_EX)
        process = self.start("--sol=1")
        self.assertEqual(self.finish(process)[1], "")
        self.assertTrue(self.sol.exists())


if __name__ == "__main__":
    unittest.main()
