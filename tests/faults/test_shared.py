"""A search whose solution file others write at the worst moment."""

import pathlib
import shutil
import unittest

from faulty import PROGRAM, ROOT, FaultCase

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
