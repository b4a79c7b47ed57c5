"""Runs at the same time, and what dead ones left behind."""

import os
import shutil
import time
import unittest

from faulty import PROGRAM, SEMAPHORES, FaultCase, error, failure


def take_names(seconds=3, count=20):
    """In the child: makes semaphores as a dead process with the same number would have left."""
    now = int(time.time())
    for second in range(now, now + seconds):
        for number in range(1, count + 1):
            (SEMAPHORES / f"sem.{os.getpid()}_{second}_{number}").write_bytes(b"taken")


class Parallel(FaultCase):
    def test_two_runs_on_one_file_leave_one_whole_result(self):
        for round_ in range(20):
            with self.subTest(round=round_):
                self.restore()
                processes = [self.start(), self.start()]
                for result in [self.finish(process) for process in processes]:
                    self.assert_done(result)

    def test_many_runs_on_files_of_their_own_all_succeed(self):
        folders = [self.scratch / str(number) for number in range(200)]
        for folder in folders:
            shutil.copytree(self.folder, folder)
        processes = []
        for self.folder in folders:
            processes.append(self.start())
        results = [self.finish(process) for process in processes]
        for self.folder, result in zip(folders, results):
            self.sol = self.folder / self.sol.name
            self.assert_done(result)


class Leftovers(FaultCase):
    def test_names_of_a_dead_process_are_stepped_over(self):
        result = self.run_with(preexec_fn=take_names)
        self.assertEqual((result.status, result.stdout), (0, self.report))
        self.assert_whole(self.new)
        names = list(SEMAPHORES.glob(f"sem.{result.pid}_*"))
        # They are nobody's, but not this run's to take away.
        self.assertEqual({path.read_bytes() for path in names}, {b"taken"})
        self.assertEqual(len(names), 60)
        for path in names:
            path.unlink()

    def test_unfinished_file_of_a_dead_process_is_nobodys_business(self):
        left = self.folder / ".starsift.abcdef"
        left.write_text("half of a text")
        result = self.run_with()
        self.assertEqual((result.status, result.stdout), (0, self.report))
        self.assertEqual(left.read_text(), "half of a text")


class OtherWriters(FaultCase):
    """Somebody else at work on the file while a run stands still."""

    def number_of_last_status(self):
        """Of the call right before the solutions are read."""
        return self.number_of("fstat", behind="flock openat")

    def new_with_added(self):
        new = self.new.decode().splitlines(keepends=True)
        added = "[ 0 1 36 5 ] | -302 | [ 302 ] | 0 | 3 | added\n"
        return "".join([new[0], added, *new[1:]]).encode()

    def test_record_that_is_added_behind_the_size_is_read_too(self):
        process = self.stopped("fstat", self.number_of_last_status())
        added = "[ 2 1 41 0 ] | 0 | [ ] | 0 | 3 | added\n[ 0 1 36 5 ] | 0 | [ ] | 0 | 3 | added\n"
        with self.sol.open("a") as file:
            file.write(added)
        result = self.go_on(process)
        self.assertEqual((result.status, result.stderr), (0, ""))
        self.assert_whole(self.new_with_added())
        self.assert_nothing_left(result)

    def test_file_that_is_cut_behind_the_size_is_read_to_its_end(self):
        process = self.stopped("fstat", self.number_of_last_status())
        self.sol.write_text("[ 0 11 34 1 ]")
        result = self.go_on(process)
        self.assertEqual((result.status, result.stderr), (0, ""))
        self.assert_whole(b"[ 0 11 34 1 ] | -302 | [ 302 ] | 0 | -1 | \n")

    def test_run_waits_for_one_that_works(self):
        slow = self.stopped("fsync")
        waiting = self.start()
        # Long enough for it to come to the lock, and far less than what a holder may be stopped.
        time.sleep(0.3)
        first, second = self.go_on(slow), self.finish(waiting)
        self.assert_done(first)
        self.assert_done(second)

    def test_run_leaves_a_file_that_a_stopped_one_has_locked(self):
        for call in ("flock", "create", "fsync"):
            with self.subTest(call=call):
                self.restore()
                process = self.stopped(call)
                between = self.run_with()
                self.assertEqual((between.status, between.stdout), (1, ""))
                self.assertEqual(
                    between.stderr,
                    f"*** File {self.sol.name} is locked by process {process.pid}, which is stopped\n"
                    + failure(f"Could not lock file: {self.sol.name}"),
                )
                self.assert_whole(self.old)
                self.assert_done(self.go_on(process))

    def test_run_does_not_wait_for_one_that_has_replaced_the_file(self):
        process = self.stopped("renameat")
        results = self.run_with(), self.go_on(process)
        for result in results:
            self.assert_done(result)

    def test_run_replaces_a_file_of_the_same_folder_beside_a_stopped_one(self):
        process = self.stopped("create")
        for suffix in (".opt", ".sol"):
            shutil.copyfile(self.sol.with_suffix(suffix), self.folder / f"other{suffix}")
        other = self.run_with(command=(PROGRAM, "other.sol"), argument=False)
        self.assertEqual((other.status, other.stdout, other.stderr), (0, self.report, ""))
        self.assertEqual((self.folder / "other.sol").read_bytes(), self.new)
        self.assert_done(self.go_on(process))

    def test_run_needs_no_lock_where_there_are_none(self):
        for code in ("ENOLCK", "EOPNOTSUPP", "EBADF"):
            with self.subTest(code=code):
                self.restore()
                self.assert_done(self.run_with(error("flock", 0, code)))

    def test_file_that_is_replaced_at_the_last_moment_is_joined(self):
        for call in ("create", "write", "fsync"):
            with self.subTest(call=call):
                self.restore()
                process = self.stopped(call)
                beside = self.folder / "beside"
                beside.write_text("[ 0 1 36 5 ] | 0 | [ ] | 0 | 3 | added\n")
                beside.rename(self.sol)
                result = self.go_on(process)
                self.assertEqual((result.status, result.stderr), (0, ""))
                self.assert_whole(self.new_with_added())
                self.assert_nothing_left(result)

    def test_file_that_vanishes_behind_the_reading_comes_back_with_its_solutions(self):
        process = self.stopped("create")
        self.sol.unlink()
        self.assert_done(self.go_on(process))


if __name__ == "__main__":
    unittest.main()
