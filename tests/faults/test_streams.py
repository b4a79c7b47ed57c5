"""Closed, full and broken standard streams: they cost the report, never the file."""

import os
import signal
import unittest

from faulty import PROGRAM, FaultCase, error


class Streams(FaultCase):
    def assert_written(self, result):
        self.assert_whole(self.new)
        self.assert_nothing_left(result)

    def run_closed(self, streams, fault=None):
        closing = " ".join(f"{number}>&-" for number in streams)
        return self.run_with(fault, command=("sh", "-c", f'exec "$0" "$@" {closing}', PROGRAM))

    def test_closed_streams_cost_the_report_only(self):
        for streams in ((0,), (1,), (2,), (0, 1), (1, 2), (0, 1, 2)):
            with self.subTest(streams=streams):
                self.restore()
                result = self.run_closed(streams)
                self.assertEqual(result.status, 1 if 1 in streams else 0)
                self.assertEqual(result.stdout, "" if 1 in streams else self.report)
                self.assert_written(result)

    def test_report_of_a_failure_goes_into_no_file(self):
        for streams in ((1,), (2,), (0, 1, 2)):
            with self.subTest(streams=streams):
                result = self.run_closed(streams, error("renameat", 1, "EIO"))
                self.assertEqual(result.status, 1)
                self.assert_whole(self.old)
                self.assert_nothing_left(result)

    def test_full_device_costs_the_report_only(self):
        with open("/dev/full", "wb") as full:
            result = self.run_with(stdout=full)
        self.assert_report_lost(result)

    def assert_report_lost(self, result):
        self.assertEqual((result.status, result.stderr), (1, "*** Could not write the report\n"))
        self.assert_written(result)

    def run_into_broken_pipe(self, **options):
        reader, writer = os.pipe()
        os.close(reader)
        try:
            return self.run_with(stdout=writer, **options)
        finally:
            os.close(writer)

    def test_broken_pipe_ends_the_run_behind_the_write(self):
        result = self.run_into_broken_pipe()
        self.assert_killed(result, signal.SIGPIPE)
        self.assert_written(result)

    def test_ignored_broken_pipe_costs_the_report_only(self):
        result = self.run_into_broken_pipe(
            restore_signals=False, preexec_fn=lambda: signal.signal(signal.SIGPIPE, signal.SIG_IGN)
        )
        self.assert_report_lost(result)


class LongReport(Streams):
    """A report too long for the buffer is written while the semaphores are there."""

    def setUp(self):
        super().setUp()
        (self.folder / "knapsack.opt").write_text(
            "[ inf ] [ [ 1 ] ] [ ] [ ] [ ] [ ] [ ] [ ] [ 0 ] [ 0 ] [ 9999 ]\n"
        )
        numbers = range(1, 10_000)
        self.old = "".join(f"[ {i} ]\n" for i in numbers).encode()
        self.new = "".join(
            f"[ {i} ] | {-i} | [ {i} ] | 0 | -1 | \n" for i in reversed(numbers)
        ).encode()
        self.report = "\n---\n".join(
            f"\nx = [ {i} ]\n\nTarget values: [ {i}\u2191 ]\nTarget Norm: {-i}\nSlack Norm: 0\n"
            for i in reversed(numbers)
        ) + "\n"
        self.restore()


if __name__ == "__main__":
    unittest.main()
