"""Errors of single calls: the report, and the old file whole."""

import os
import signal
import unittest

from faulty import NOBODY, FaultCase, NoRightStarCase, error, short

# In the order in which a write meets them.
DISK_ERRORS = ("EIO", "ENOSPC", "EDQUOT")


def assert_each_refused(test, calls):
    """Each disk error of the first of each of the calls leaves the file as it was."""
    for call in calls:
        for code in DISK_ERRORS:
            with test.subTest(call=call, code=code):
                test.assert_not_written(test.run_with(error(call, 1, code)))


class Reading(FaultCase):
    locked = "flock"  # what comes before the solutions are read

    def read_fault(self, call, code, file):
        """Calls about the problem come first, those about the solutions last."""
        number = 1 if file == "opt" else self.number_of(call, behind=self.locked)
        return self.run_with(error(call, number, code))

    def test_unreadable_problem_ends_the_run(self):
        for call, code in (("openat", "EACCES"), ("openat", "EIO"), ("fstat", "EIO"), ("read", "EIO")):
            with self.subTest(call=call, code=code):
                result = self.read_fault(call, code, "opt")
                self.assert_refused(result, "Could not read opt file: knapsack.opt")

    def test_unreadable_solutions_end_the_run_and_stay(self):
        for call, code in (("openat", "EACCES"), ("openat", "EMFILE"), ("read", "EIO")):
            with self.subTest(call=call, code=code):
                result = self.read_fault(call, code, "sol")
                self.assert_refused(result, "Could not read sol file: knapsack.sol")

    def test_solutions_whose_reading_breaks_off_stay(self):
        # The first two reads are those of the problem, which the second ends.
        for number in (3, 4):
            with self.subTest(number=number):
                result = self.run_with(error("read", number, "EIO"))
                self.assert_refused(result, "Could not read sol file: knapsack.sol")

    def test_solutions_that_were_never_there_are_none(self):
        self.sol.unlink()
        result = self.run_with()
        self.assertEqual((result.status, result.stdout, result.stderr), (0, "\n\n", ""))
        self.assertFalse(self.sol.exists())
        self.assert_nothing_left(result)

    def test_short_reads_lose_nothing(self):
        self.assert_done(self.run_with(short("read")))

    def test_interrupted_reads_go_on(self):
        for call, number in (("openat", 1), ("openat", 2), ("openat", 3), ("read", 1), ("read", 3), ("read", 4)):
            with self.subTest(call=call, number=number):
                self.restore()
                self.assert_done(self.run_with(error(call, number, "EINTR")))


class Writing(FaultCase):
    def test_new_file_that_can_not_be_made_is_reported(self):
        for code in (*DISK_ERRORS, "EMFILE"):
            with self.subTest(code=code):
                self.assert_not_written(self.run_with(error("create", 1, code)))

    def test_new_text_that_does_not_arrive_is_reported(self):
        assert_each_refused(self, ("write", "fsync", "renameat"))

    def test_refusal_at_closing_is_reported(self):
        number = self.number_of("close", behind="create")
        for code in DISK_ERRORS:
            with self.subTest(code=code):
                self.assert_not_written(self.run_with(error("close", number, code)))

    def test_write_that_moves_no_byte_is_reported(self):
        self.assert_not_written(self.run_with("write:1:error=0"))

    def test_short_writes_lose_nothing(self):
        self.assert_done(self.run_with(short("write")))

    def test_interrupted_calls_go_on(self):
        close = self.number_of("close", behind="create")
        for call, number in (("write", 1), ("fsync", 1), ("close", close)):
            with self.subTest(call=call, number=number):
                self.restore()
                self.assert_done(self.run_with(error(call, number, "EINTR")))

    def test_directory_that_can_not_be_synced_is_no_failure(self):
        directory = self.number_of("openat", behind="renameat")
        for call, number in (("openat", directory), ("fsync", 2)):
            with self.subTest(call=call):
                self.restore()
                self.assert_done(self.run_with(error(call, number, "EIO")))

    def test_any_call_may_fail_and_the_file_is_whole(self):
        for number, call in enumerate(self.system_calls(), 1):
            with self.subTest(call=call, number=number):
                self.restore()
                result = self.run_with(error("any", number, "EIO"))
                self.assertIn(result.status, (0, 1))
                self.assertEqual(result.status == 1, "*** FAIL: " in result.stderr)
                self.assert_whole()
                # What couldn't be removed is still there.
                if call not in ("unlinkat", "sem_unlink"):
                    self.assert_nothing_left(result)
                self.clear(result)

    def test_any_allocation_of_the_write_may_fail(self):
        calls = self.calls()
        begin, end = calls.index("create"), calls.index("renameat")
        first = calls[:begin].count("new") + 1
        last = calls[:end].count("new")
        self.assertLess(first, last)
        for number in range(first, last + 1):
            with self.subTest(number=number):
                result = self.run_with(error("new", number, "ENOMEM"))
                self.assert_refused(result, "Out of memory")


class LongText(FaultCase):
    """More than one write: x solutions of 1 variable."""

    count = 100_000

    def setUp(self):
        super().setUp()
        (self.folder / "knapsack.opt").write_text(
            f"[ inf ] [ [ 1 ] ] [ ] [ ] [ ] [ ] [ ] [ ] [ 0 ] [ 0 ] [ {self.count} ]\n"
        )
        numbers = range(1, self.count + 1)
        self.old = "".join(f"[ {i} ]\n" for i in numbers).encode()
        self.new = "".join(
            f"[ {i} ] | {-i} | [ {i} ] | 0 | -1 | \n" for i in reversed(numbers)
        ).encode()
        self.restore()

    def test_each_write_may_fail(self):
        calls = self.calls()
        self.assertGreater(calls.count("write"), 2)
        for number in range(1, calls.count("write") + 1):
            with self.subTest(number=number):
                self.assert_not_written(self.run_with(error("write", number, "ENOSPC")))

    def test_short_writes_lose_nothing(self):
        result = self.run_with(short("write"))
        self.assertEqual(result.status, 0)
        self.assert_whole(self.new)
        self.assert_nothing_left(result)


class InPlace(FaultCase):
    """No file can be made beside the old one."""

    def setUp(self):
        super().setUp()
        # Modes of folders don't stop root.
        if os.geteuid() == 0:
            self.give_to_nobody()
            self.user = {"user": NOBODY}
        else:
            self.user = {}
        self.folder.chmod(0o555)
        self.addCleanup(self.folder.chmod, 0o755)

    def run_with(self, fault=None, **options):
        return super().run_with(fault, **self.user, **options)

    def test_file_is_rewritten(self):
        number = os.stat(self.sol).st_ino
        self.assert_done(self.run_with())
        self.assertEqual(os.stat(self.sol).st_ino, number)

    def test_old_text_is_put_back(self):
        assert_each_refused(self, ("write", "ftruncate", "fsync"))

    def test_file_that_can_not_be_opened_again_stays(self):
        # For keeping the old text, and for writing.
        first = self.number_of("openat", behind="create")
        for number in (first, first + 1):
            with self.subTest(number=number):
                self.assert_not_written(self.run_with(error("openat", number, "EIO")))

    def test_refusal_at_closing_is_reported(self):
        result = self.run_with(error("close", self.number_of("close", behind="fsync"), "EIO"))
        self.assertEqual(result.stderr, "\n*** FAIL: Could not write file: knapsack.sol\n")
        self.assertEqual(result.status, 1)
        self.assert_whole(self.new)

    def test_interrupted_calls_go_on(self):
        opening = self.number_of("openat", behind="create")
        for call, number in (("openat", opening), ("write", 1), ("ftruncate", 1), ("fsync", 1)):
            with self.subTest(call=call):
                self.restore()
                self.assert_done(self.run_with(error(call, number, "EINTR")))


class GrowingInPlace(InPlace):
    """A shorter old text, for which room has to be made."""

    def setUp(self):
        super().setUp()
        self.old = b"[ 0 11 34 1 ]"
        self.new = b"[ 0 11 34 1 ] | -302 | [ 302 ] | 0 | -1 | \n"
        self.report = (
            "\nx = [ 0 11 34 1 ]\n\n"
            "Target values: [ 302\u2191 ]\nTarget Norm: -302\nSlack Norm: 0\n\n"
        )
        self.restore()

    def test_old_text_stays_where_there_is_no_room(self):
        for code in DISK_ERRORS:
            with self.subTest(code=code):
                self.assert_not_written(self.run_with(error("posix_fallocate", 1, code)))

    def test_making_room_goes_on_when_interrupted(self):
        self.assert_done(self.run_with(error("posix_fallocate", 1, "EINTR")))


class OwnerAndMode(FaultCase):
    def test_file_whose_owner_or_mode_can_not_be_kept_is_rewritten_in_place(self):
        number = os.stat(self.sol).st_ino
        for call in ("fchown", "fchmod"):
            with self.subTest(call=call):
                self.restore()
                self.assert_done(self.run_with(error(call, 1, "EPERM")))
                self.assertEqual(os.stat(self.sol).st_ino, number)


class Removing(NoRightStarCase):
    def test_file_that_can_not_go_is_emptied(self):
        for code in ("EACCES", "EPERM", "EBUSY"):
            with self.subTest(code=code):
                self.restore()
                self.assert_done(self.run_with(error("unlinkat", 1, code)))
                self.assertTrue(self.sol.exists())

    def test_any_call_may_fail_and_the_file_is_whole(self):
        for number, call in enumerate(self.system_calls(), 1):
            with self.subTest(call=call, number=number):
                self.restore()
                result = self.run_with(error("any", number, "EIO"))
                self.assertIn(result.status, (0, 1))
                self.assert_whole()
                self.clear(result)


if __name__ == "__main__":
    unittest.main()
