"""Signals before and behind every call: the file is whole and nothing is left behind."""

import collections
import shutil
import signal
import subprocess
import unittest

from faulty import PROGRAM, FaultCase, NoRightStarCase, has_mounts, met


class AtEachCall:
    """Mixed into a case that says what file the run begins with."""

    def at_each(self, number, check):
        """From the opening of the solutions on; before that nothing but semaphores is made."""
        calls = self.system_calls()
        first = calls.index("flock") + 1
        for at, call in enumerate(calls[first - 1 :], first):
            for when in ("before", "after"):
                with self.subTest(call=call, at=at, when=when):
                    self.restore()
                    check(self.run_with(met(when, number, at=at)))

    def test_kill_leaves_a_whole_file_and_stops_no_later_run(self):
        def check(result):
            self.assert_killed(result, signal.SIGKILL)
            self.assert_whole()
            self.assert_runs_again()
            self.clear(result)

        self.at_each(signal.SIGKILL, check)

    def end_by(self, number):
        """All ways in which the run ended: status and file."""
        ends = set()

        def check(result):
            # While the file is written an interrupt turns into a termination.
            self.assert_killed(result, number, signal.SIGTERM)
            ends.add((result.status, self.text()))
            self.assert_whole()
            self.assert_nothing_left(result)

        self.at_each(number, check)
        return ends

    def test_interrupt_ends_the_run_cleanly(self):
        ends = self.end_by(signal.SIGINT)
        # It was at work before, during and behind the write.
        self.assertEqual(
            ends,
            {(-signal.SIGINT, self.old), (-signal.SIGTERM, self.new), (-signal.SIGINT, self.new)},
        )

    def test_termination_ends_the_run_cleanly(self):
        ends = self.end_by(signal.SIGTERM)
        self.assertEqual(ends, {(-signal.SIGTERM, self.old), (-signal.SIGTERM, self.new)})

    def test_hanging_up_ends_the_run_cleanly(self):
        ends = self.end_by(signal.SIGHUP)
        self.assertEqual(ends, {(-signal.SIGHUP, self.old), (-signal.SIGHUP, self.new)})


class RewrittenFile(AtEachCall, FaultCase):
    pass


class RemovedFile(AtEachCall, NoRightStarCase):
    pass


class IgnoredSignals(FaultCase):
    def test_ignored_interrupt_does_not_end_the_run(self):
        for number in (signal.SIGINT, signal.SIGHUP, signal.SIGTERM):
            with self.subTest(number=number):
                self.restore()
                result = self.run_with(
                    met("after", number),
                    preexec_fn=lambda n=number: signal.signal(n, signal.SIG_IGN),
                )
                self.assert_done(result)


@unittest.skipUnless(
    shutil.which("strace") and subprocess.run(["strace", "-o/dev/null", "true"]).returncode == 0,
    "needs strace and the right to trace",
)
class AtEachSystemCall(FaultCase):
    """As above, inside the calls of the C library too: those that make a semaphore."""

    def traced(self, *options):
        # -D: the process that is started is the program, not the tracer.
        return self.run_with(
            command=("strace", "-D", "-E", "LD_PRELOAD=", f"-o{self.trace}", *options, PROGRAM)
        )

    def setUp(self):
        super().setUp()
        self.trace = self.scratch / "trace"

    def system_calls(self):
        """Name and number of each system call from the first semaphore on; strace counts by name."""
        self.traced()
        counts = collections.Counter()
        found = []
        for line in self.trace.read_text().splitlines():
            name = line.partition("(")[0]
            counts[name] += 1
            # How often the C library asks for random numbers is random itself.
            if name != "getrandom" and (found or "/dev/shm/sem." in line):
                found.append((name, counts[name]))
        # Behind this one there is nothing, and the last line tells the status.
        return found[: found.index(("exit_group", 1))]

    def at_each(self, number, check):
        for name, at in self.system_calls():
            with self.subTest(name=name, at=at):
                self.restore()
                result = self.traced(f"-einject={name}:signal={int(number)}:when={at}")
                self.assert_killed(result, number)
                self.assert_whole()
                check(result)

    @has_mounts
    def test_termination_leaves_nothing_behind(self):
        self.at_each(signal.SIGTERM, self.assert_nothing_left)

    def test_kill_leaves_a_whole_file(self):
        self.at_each(signal.SIGKILL, self.clear)
        self.assert_runs_again()


if __name__ == "__main__":
    unittest.main()
