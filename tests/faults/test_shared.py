"""A search whose solution file others write at the worst moment."""

import fcntl
import pathlib
import shutil
import signal
import time
import unittest

from faulty import PROGRAM, ROOT, FaultCase, error, failure

SEEK = pathlib.Path(PROGRAM).with_name("starseek")
SOLUTION = "[ 0 0 0 0 1 1 1 1 0 1 1 0 0 1 1 1 0 0 0 1 ]"


class SearchCase(FaultCase):
    """A market split with one solution, which a search finds at once."""

    argument = "knapsack.opt"

    def setUp(self):
        super().setUp()
        shutil.copyfile(
            ROOT / "examples/market-split/market-split.opt", self.folder / "knapsack.opt"
        )
        self.sol.unlink()

    def start(self, fault=None, command=(SEEK, "--sol=1"), **options):
        return super().start(fault, command=command, **options)

    def replace_file(self, text):
        beside = self.folder / "beside"
        beside.write_text(text)
        beside.rename(self.sol)


def record(time):
    return f"{SOLUTION} | 0 | [ ] | 0 | {time} | --beta={time} | 1.0\n"


class OtherWriters(SearchCase):
    def assert_both_are_there(self, result, *records):
        self.assertEqual((result.status, result.stderr), (0, ""))
        lines = self.text().decode().splitlines(keepends=True)
        self.assertEqual(lines[1:], list(records))
        self.assertTrue(lines[0].startswith(SOLUTION), lines)
        self.assert_nothing_left(result)

    def test_file_that_comes_between_looking_and_replacing_stays(self):
        # Writing to the disk takes long; behind it there is only the replacement.
        process = self.stopped("fsync")
        self.replace_file(record(99))
        self.assert_both_are_there(self.go_on(process), record(99))

    def test_file_that_is_replaced_between_looking_and_replacing_stays(self):
        self.sol.write_text(record(98))
        process = self.stopped("fsync")
        self.replace_file(record(98) + record(99))
        self.assert_both_are_there(self.go_on(process), record(98), record(99))

    def test_record_that_is_added_between_looking_and_replacing_stays(self):
        self.sol.write_text(record(98))
        process = self.stopped("fsync")
        with self.sol.open("a") as file:
            file.write(record(99))
        self.assert_both_are_there(self.go_on(process), record(98), record(99))


class StoppedHolder(SearchCase):
    def test_search_leaves_its_stars_beside_the_file_of_a_stopped_one(self):
        self.sol.write_text(record(98))
        process = self.stopped("fsync")
        other = self.run_with()
        self.assertEqual(other.status, 1)
        (found,) = self.folder.glob("knapsack.sol.found.*")
        self.assertEqual(
            other.stderr,
            f"*** File {self.sol.name} is locked by process {process.pid}, which is stopped\n"
            f"*** The stars of this search are in {found.name}.\n",
        )
        lines = found.read_text().splitlines(keepends=True)
        self.assertTrue(lines[0].startswith(SOLUTION))
        self.assertEqual(lines[1:], [record(98)])
        self.assertEqual(self.text().decode(), record(98))
        result = self.go_on(process)
        self.assertEqual((result.status, result.stderr), (0, ""))
        self.assertEqual(len(self.text().splitlines()), 2)

    def test_second_interrupt_of_a_search_that_waits_leaves_its_stars_beside(self):
        self.sol.write_text(record(98))
        with self.sol.open() as lock:
            fcntl.flock(lock, fcntl.LOCK_EX)
            process = self.start()
            # The rescue file is there before the line about the wait.
            self.assertIn("Waiting for process", process.stderr.readline())
            for _ in range(2):
                process.send_signal(signal.SIGINT)
                time.sleep(0.7)
            result = self.finish(process)
        self.assertEqual(result.status, -signal.SIGINT)
        (found,) = self.folder.glob("knapsack.sol.found.*")
        self.assertTrue(found.read_text().startswith(SOLUTION))


class FatalReport(SearchCase):
    def test_fatal_report_leaves_what_was_not_saved_beside_the_file(self):
        # The search finds its solution, can't save it, as the file is locked, and ends where the
        # next lattice is made.
        made = self.calls(command=(SEEK, "--sol=1"))
        number = made[: made.index("renameat")].count("sem_open") + 1
        self.sol.write_text(record(98))
        with self.sol.open() as lock:
            fcntl.flock(lock, fcntl.LOCK_EX)
            result = self.run_with(
                error("sem_open", number, "EIO"), command=(SEEK, "--sol=2")
            )
        (found,) = self.folder.glob("knapsack.sol.found.*")
        self.assertEqual(result.status, 1)
        self.assertEqual(
            result.stderr,
            failure("SEM could not be opened", "EIO")
            + f"The stars of this search are in {found.name}.\n",
        )
        self.assertTrue(found.read_text().startswith(SOLUTION))


class SameStars(SearchCase):
    def test_file_that_holds_all_stars_already_is_not_written(self):
        self.run_with()
        written = self.sol.stat()
        result = self.run_with()
        self.assertEqual((result.status, result.stderr), (0, ""))
        self.assertEqual(self.sol.stat().st_ino, written.st_ino)
        self.assert_nothing_left(result)


if __name__ == "__main__":
    unittest.main()
