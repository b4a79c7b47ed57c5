"""Searches and checks at the same time on one large file, on a disk that takes its time.

FAULTS_STRESS_MB is the size of the file in megabytes: 50 is a run by hand of some minutes.
"""

import itertools
import os
import pathlib
import re
import signal
import unittest

from faulty import PROGRAM, FaultCase

SEEK = pathlib.Path(PROGRAM).with_name("starseek")
MEGABYTES = float(os.environ.get("FAULTS_STRESS_MB", "2"))
SEARCHES, CHECKS = 8, 2
# Stars per search: with less than one the lattice would be prepared only.
STARS = 5
PARAMETERS = "p" * 200
SLOW_DISK = "fsync+renameat:0:delay=200"
TIME_LIMIT = 3600  # seconds


class Stress(FaultCase):
    def setUp(self):
        super().setUp()
        # Nearly every third point of the box is a solution.
        (self.folder / "knapsack.opt").write_text(
            "[ ] [ ] [ ] [ ] [ ] [ [ 1 1 1 1 1 1 ] ] [ 0 ] [ 60 ]"
            " [ 0 0 0 0 0 0 ] [ 0 0 0 0 0 0 ] [ 20 20 20 20 20 20 ]"
        )
        points = (p for p in itertools.product(range(21), repeat=6) if sum(p) <= 60)
        count = int(MEGABYTES * 1e6) // 240
        self.records = sorted(
            f"[ {' '.join(map(str, point))} ] | 0 | [ ] | 0 | -1 | {PARAMETERS}\n"
            for point in itertools.islice(points, count)
        )
        self.sol.write_text("".join(self.records))

    def finish(self, process):
        out, errors = process.communicate(timeout=TIME_LIMIT)
        return process.returncode, out, errors

    def start_search(self, number, fault=SLOW_DISK):
        command = (SEEK, f"--sol={STARS}", f"--iters={number}000000", "knapsack.opt")
        return self.start(fault, command=command, argument=False)

    def found_by(self, number, *paths):
        """The points of a search in these files."""
        texts = "".join(path.read_text() for path in paths)
        return set(re.findall(rf"^(\[ [^|]*\]) .*--iters={number}000000 ", texts, re.MULTILINE))

    def assert_nothing_lost(self, searches, *paths):
        lines = set(itertools.chain(*(path.read_text().splitlines(True) for path in paths)))
        self.assertEqual([record for record in self.records if record not in lines], [])
        for number, out in searches.items():
            told = int(re.search(r"Solutions found: (\d+)", out)[1])
            self.assertGreaterEqual(told, STARS)
            self.assertEqual(len(self.found_by(number, *paths)), told, number)

    def test_eight_searches_and_two_checks_lose_no_star(self):
        searches = {number: self.start_search(number) for number in range(1, SEARCHES + 1)}
        checks = [self.start(SLOW_DISK) for _ in range(CHECKS)]
        results = {number: self.finish(process) for number, process in searches.items()}
        for status, _, _ in (*results.values(), *map(self.finish, checks)):
            self.assertEqual(status, 0)
        printed = {number: out for number, (_, out, _) in results.items()}
        self.assert_nothing_lost(printed, self.sol)
        self.assertEqual(
            sorted(os.listdir(self.folder)), ["knapsack.lat", "knapsack.opt", "knapsack.sol"]
        )

    def test_stopped_holder_costs_no_star(self):
        stopped = self.start_search(1, f"fsync:1:after={int(signal.SIGSTOP)}")
        _, status = os.waitpid(stopped.pid, os.WUNTRACED)
        self.assertTrue(os.WIFSTOPPED(status))
        searches = {number: self.start_search(number) for number in range(2, SEARCHES + 1)}
        checks = [self.start(SLOW_DISK) for _ in range(CHECKS)]
        results = {number: self.finish(process) for number, process in searches.items()}
        for status, _, errors in (*results.values(), *map(self.finish, checks)):
            self.assertEqual(status, 1)
            self.assertIn(f"is locked by process {stopped.pid}, which is stopped", errors)
        stopped.send_signal(signal.SIGCONT)
        results[1] = self.finish(stopped)
        self.assertEqual(results[1][0], 0, results[1][2])
        printed = {number: out for number, (_, out, _) in results.items()}
        found = list(self.folder.glob("knapsack.sol.found.*"))
        self.assertEqual(len(found), SEARCHES - 1)
        self.assert_nothing_lost(printed, self.sol, *found)
        self.assert_nothing_lost({1: printed[1]}, self.sol)


if __name__ == "__main__":
    unittest.main()
