"""A search that somebody watches, or ends: terminals, signals and the clock.

The environment names the program (SEARCH_PROGRAM); starsift lies beside it. The problem is a market
split with one solution, of which two are wanted: a search that doesn't end by itself.
"""

import fcntl
import json
import os
import pathlib
import pty
import re
import resource
import shutil
import signal
import subprocess
import tempfile
import termios
import time
import unittest
from random import Random

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent
PROGRAM = pathlib.Path(os.environ["SEARCH_PROGRAM"]).resolve()
# How many times slower the program is than an optimised one, by its sanitizers.
SLOWDOWN = float(os.environ.get("SEARCH_SLOWDOWN", "1"))
SOLUTION = "[ 0 0 0 0 1 1 1 1 0 1 1 0 0 1 1 1 0 0 0 1 ]"
ERASE = "\r\x1b[K"
TIME_LIMIT = 120  # seconds


class SearchCase(unittest.TestCase):
    def setUp(self):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="search-"))
        self.addCleanup(shutil.rmtree, self.folder)
        shutil.copyfile(ROOT / "examples/market-split/market-split.opt", self.folder / "p.opt")
        self.sol = self.folder / "p.sol"

    def start(self, *parameters, **options):
        options = {
            "stdin": subprocess.DEVNULL,
            "stdout": subprocess.PIPE,
            "stderr": subprocess.PIPE,
            "env": dict(os.environ, TERM="xterm"),
            **options,
        }
        process = subprocess.Popen(
            [PROGRAM, "--sol=2", "--prove=0", *parameters, "p.opt"], cwd=self.folder, text=True, **options
        )
        self.addCleanup(process.kill)
        return process

    def finish(self, process):
        return process.communicate(timeout=TIME_LIMIT)

    def wait_for_solution(self, process, count=1):
        """Waits until the file has so many of them."""
        end = time.monotonic() + TIME_LIMIT
        while not self.sol.exists() or len(self.sol.read_bytes().splitlines()) < count:
            self.assertIsNone(process.poll(), "the search has ended")
            self.assertLess(time.monotonic(), end, "no solution")
            time.sleep(0.02)

    def assert_saved(self, printed):
        """The solution is on disk, final, and printed; nothing lies about."""
        found = self.sol.read_bytes()
        self.assertTrue(found.startswith(SOLUTION.encode()), found)
        subprocess.run(
            [PROGRAM.with_name("starsift"), self.sol], stdout=subprocess.DEVNULL, check=True
        )
        self.assertEqual(self.sol.read_bytes(), found)
        self.assertIn(f"\nx = {SOLUTION}\n", printed)
        names = {path.name for path in self.folder.iterdir()}
        self.assertEqual(names, {"p.opt", "p.sol", "p.lat"})

    def cpu_seconds(self, process):
        fields = pathlib.Path(f"/proc/{process.pid}/stat").read_text().rsplit(") ", 1)[1].split()
        return (int(fields[11]) + int(fields[12])) / os.sysconf("SC_CLK_TCK")

    def wait_for_work(self, process, seconds):
        """Until the process has worked for so long, however busy the machine is."""
        while self.cpu_seconds(process) < seconds:
            self.assertIsNone(process.poll(), "the search has ended")
            time.sleep(0.01)

    def shown_on_terminal(
        self, *parameters, share_output=False, term="xterm", columns=0, seconds=3
    ):
        """What reaches a terminal in a run of some seconds, and what is printed beside it."""
        try:
            terminal, end = pty.openpty()
        except OSError as error:
            self.skipTest(f"no pseudo-terminal here: {error}")
        termios.tcsetwinsize(end, (24, columns))
        options = {"stderr": end, "env": dict(os.environ, TERM=term)}
        if share_output:
            options["stdout"] = end
        process = self.start(f"--rtime={seconds}", *parameters, **options)
        os.close(end)
        shown = b""
        try:
            while piece := os.read(terminal, 4096):
                shown += piece
        except OSError:
            pass  # the other end is closed
        os.close(terminal)
        printed, _ = self.finish(process)
        self.assertEqual(process.returncode, 0)
        return shown.decode(), printed


class Signals(SearchCase):
    def setUp(self):
        super().setUp()
        # A killed process may have had the number of one of ours.
        self.left_before = self.semaphores()

    def semaphores(self, number="*"):
        return set(pathlib.Path("/dev/shm").glob(f"sem.{number}_*"))

    def semaphores_of(self, process):
        return self.semaphores(process.pid) - self.left_before

    def assert_saves_before_it_ends_by(self, number):
        process = self.start()
        self.wait_for_solution(process)
        process.send_signal(number)
        printed, errors = self.finish(process)
        # While a file is written an interrupt turns into a termination.
        self.assertIn(process.returncode, (-number, -signal.SIGTERM))
        self.assertEqual(errors, "")
        self.assert_saved(printed)
        self.assertEqual(self.semaphores_of(process), set())

    def test_interrupt_saves_what_there_is(self):
        self.assert_saves_before_it_ends_by(signal.SIGINT)

    def test_termination_saves_what_there_is(self):
        self.assert_saves_before_it_ends_by(signal.SIGTERM)

    def test_hanging_up_saves_what_there_is(self):
        self.assert_saves_before_it_ends_by(signal.SIGHUP)

    def test_interrupt_among_the_arguments_leaves_no_semaphore(self):
        # So many that they are still read when their first lock is seen.
        process = self.start(*["--verb=0"] * 20_000)
        end = time.monotonic() + TIME_LIMIT
        while not self.semaphores_of(process):
            self.assertIsNone(process.poll(), "the search has ended")
            self.assertLess(time.monotonic(), end, "no semaphore")
        process.send_signal(signal.SIGINT)
        self.finish(process)
        self.assertIn(process.returncode, (-signal.SIGINT, -signal.SIGTERM))
        self.assertEqual(self.semaphores_of(process), set())

    def test_hangup_saves_what_there_is(self):
        self.assert_saves_before_it_ends_by(signal.SIGHUP)

    def test_ignored_interrupt_does_not_end_the_search(self):
        def ignore():
            signal.signal(signal.SIGINT, signal.SIG_IGN)

        process = self.start("--rtime=3", preexec_fn=ignore)
        self.wait_for_solution(process)
        process.send_signal(signal.SIGINT)
        printed, errors = self.finish(process)
        self.assertEqual((process.returncode, errors), (0, ""))
        self.assert_saved(printed)


class SharedFile(SearchCase):
    """A solution file that others write while the search is under way."""

    def replace_as_a_search_does(self, text):
        """Beside the file and by renaming, under the lock."""
        beside = self.folder / "beside"
        beside.write_text(text)
        lock = os.open(self.sol, os.O_RDONLY)
        fcntl.flock(lock, fcntl.LOCK_EX)
        beside.rename(self.sol)
        os.close(lock)

    def test_stars_that_come_into_the_file_stay(self):
        process = self.start()
        self.wait_for_solution(process)
        record = f"{SOLUTION} | 0 | [ ] | 0 | 99 | --beta=7 | 1.0\n"
        self.replace_as_a_search_does(record)
        process.send_signal(signal.SIGINT)
        self.assertEqual(self.finish(process)[1], "")
        lines = self.sol.read_text().splitlines(keepends=True)
        self.assertEqual(len(lines), 2, lines)
        self.assertEqual(lines[1], record)
        self.assertEqual(sorted(os.listdir(self.folder)), ["p.lat", "p.opt", "p.sol"])

    def test_searches_of_one_problem_leave_the_solutions_of_all(self):
        searches = [self.start("--rtime=4", f"--iters={n}000000") for n in (1, 2, 3)]
        for process in searches:
            self.assertEqual(self.finish(process)[1], "")
            self.assertEqual(process.returncode, 0)
        lines = self.sol.read_text().splitlines()
        parameters = [re.search(r"--iters=(\d)000000", line)[1] for line in lines]
        self.assertEqual(sorted(parameters), ["1", "2", "3"])
        self.assertEqual(sorted(os.listdir(self.folder)), ["p.lat", "p.opt", "p.sol"])

    def test_bad_file_stays_and_the_solutions_are_beside(self):
        process = self.start()
        self.wait_for_solution(process)
        self.sol.write_text("[ 1/0 ]\n")
        process.send_signal(signal.SIGINT)
        _, errors = self.finish(process)
        self.assertEqual(process.returncode, 1)
        self.assertEqual(self.sol.read_text(), "[ 1/0 ]\n")
        (rescued,) = self.folder.glob("p.sol.found.*")
        self.assertTrue(rescued.read_text().startswith(SOLUTION))
        self.assertEqual(
            errors,
            "\n*** FAIL: QQ: division by zero1\n"
            f"The stars of this search are in {rescued.name}.\n",
        )


class Clock(SearchCase):
    def test_search_ends_when_its_time_is_over(self):
        began = time.monotonic()
        process = self.start("--rtime=2", "--verb=1")
        printed, errors = self.finish(process)
        self.assertGreaterEqual(time.monotonic() - began, 2)
        self.assertEqual((process.returncode, errors), (0, ""))
        self.assertIn("\nSearch ended: time is over.", printed)
        self.assert_saved(printed)


class BlockReduction(SearchCase):
    """No subset of 56 numbers of 112 bits has the sum: a block of all rows is walked for minutes, and
    the sieve behind it takes half a second."""

    BLOCKS = ("--iters=1", "--beta=56", "--eprune=0")

    def setUp(self):
        super().setUp()
        random = Random(1)
        weights = [random.getrandbits(112) for _ in range(56)]
        total = sum(weights) // 2

        def text(entries):
            return "[ " + " ".join(map(str, entries)) + " ]"

        (self.folder / "p.opt").write_text(
            f"[ ] [ ] [ {text(weights)} ] [ {total} ] [ ] [ ] [ ] [ ] "
            f"{text([0] * 56)} {text([0] * 56)} {text([1] * 56)}\n"
        )

    def seconds(self, *parameters):
        began = time.monotonic()
        process = self.start(*parameters)
        _, errors = self.finish(process)
        self.assertEqual((process.returncode, errors), (0, ""))
        return time.monotonic() - began

    def test_time_of_all_blocks_is_limited(self):
        without = self.seconds("--iters=1", "--eenum=0")
        limited = self.seconds(*self.BLOCKS, "--etime=3")
        self.assertGreaterEqual(limited, 3)
        # Reductions before and after the enumerations take about what they take without; other
        # work on the machine may slow down one of the two runs.
        self.assertLess(limited, 3 + 4 * without + 3 * SLOWDOWN)

    def test_signal_ends_a_block(self):
        process = self.start(*self.BLOCKS)
        self.wait_for_work(process, 2 * SLOWDOWN)
        process.send_signal(signal.SIGINT)
        began = time.monotonic()
        printed, errors = self.finish(process)
        self.assertLess(time.monotonic() - began, 5 * SLOWDOWN)
        self.assertEqual((process.returncode, errors), (-signal.SIGINT, ""))
        self.assertIn("No solution was found.", printed)

    def test_clock_ends_a_block(self):
        process = self.start(*self.BLOCKS, "--rtime=4", "--verb=1")
        printed, errors = self.finish(process)
        self.assertEqual((process.returncode, errors), (0, ""))
        self.assertIn("\nSearch ended: time is over.", printed)


class Report(SearchCase):
    def test_report_that_cannot_be_written_is_no_success_but_costs_no_file(self):
        with open("/dev/full", "wb") as full:
            process = self.start("--sol=1", stdout=full)
            errors = self.finish(process)[1]
        self.assertEqual((process.returncode, errors), (1, "*** Could not write the report\n"))
        self.assertTrue(self.sol.read_text().startswith(SOLUTION))
        self.assertEqual(sorted(os.listdir(self.folder)), ["p.lat", "p.opt", "p.sol"])


class Terminal(SearchCase):
    def test_status_line_is_refreshed_and_erased(self):
        shown, printed = self.shown_on_terminal()
        line = r"pass \d+, \d+ exchanges(, best norm [0-9.e+]+)?, [01] solutions, \d+ s"
        self.assertRegex(shown, f"^({re.escape(ERASE)}{line}){{1,3}}{re.escape(ERASE)}$")
        self.assert_saved(printed)

    def test_status_line_does_not_break_on_a_narrow_terminal(self):
        shown, _ = self.shown_on_terminal(columns=30)
        lines = shown.split(ERASE)[1:-1]
        self.assertGreater(len(lines), 0)
        for line in lines:
            self.assertEqual(len(line), 29, line)

    def test_status_line_leaves_no_trace_between_the_reports(self):
        shown, _ = self.shown_on_terminal(share_output=True)
        self.assertIn("pass", shown)
        rows = shown.replace("\r\n", "\n").split("\n")
        left = "\n".join(row.rsplit(ERASE, 1)[-1] for row in rows)
        self.assertNotIn("pass", left)
        self.assert_saved(left)

    def test_terminal_that_cannot_erase_has_no_status_line(self):
        shown, printed = self.shown_on_terminal(term="dumb")
        self.assertEqual(shown, "")
        self.assert_saved(printed)

    def test_reports_of_steps_share_no_terminal_with_the_status_line(self):
        shown, _ = self.shown_on_terminal("--verb=2", share_output=True)
        self.assertNotIn(ERASE, shown)

    def test_without_terminal_there_is_no_status_line(self):
        process = self.start("--rtime=2")
        self.assertEqual(self.finish(process)[1], "")


class CompleteSearch(SearchCase):
    """A search for all of some ten million points of a box, which takes longer than any test."""

    PROBLEM = (
        "[ -inf ] [ [ 1 1 1 1 1 1 1 1 ] ] [ [ 1 2 3 4 5 6 7 8 ] ] [ 1000 ] [ ] [ ] [ ] [ ]"
        " [ 0 0 0 0 0 0 0 0 ] [ 0 0 0 0 0 0 0 0 ] [ 99 99 99 99 99 99 99 99 ]"
    )

    def setUp(self):
        super().setUp()
        (self.folder / "p.opt").write_text(self.PROBLEM)

    def test_signals_end_it_at_once(self):
        for number in (signal.SIGHUP, signal.SIGINT, signal.SIGTERM):
            process = self.start("--prove", "--count")
            self.wait_for_work(process, 0.3 * SLOWDOWN)
            process.send_signal(number)
            began = time.monotonic()
            printed, errors = self.finish(process)
            self.assertLess(time.monotonic() - began, 1)
            self.assertEqual((process.returncode, errors), (-number, ""))
            self.assertNotIn("complete", printed)
            self.assertRegex(printed, r"\nNodes: \d+\n")

    def test_clock_ends_it(self):
        began = time.monotonic()
        limit = int(1 + SLOWDOWN)
        process = self.start("--prove", "--count", f"--rtime={limit}", "--json")
        printed, errors = self.finish(process)
        self.assertLess(time.monotonic() - began, limit + 2)
        self.assertEqual(errors, "")
        self.assertNotIn("the search was complete", printed)
        result = json.loads(printed.splitlines()[-1])
        self.assertEqual(result["complete"], False)
        self.assertGreater(int(result["count"]), 1000)
        self.assertEqual(result["solutions"], 0)

    def test_clock_ends_it_where_variables_have_many_values(self):
        """A mixture of 12 parts with six decimal places: each node of the tree has a billion children."""
        random = Random(3)

        def row(text):
            return f"[ {' '.join(text() for _ in range(12))} ]"

        def some():
            return row(lambda: random.choice(("0", "0", f"0.{random.randint(1, 900):04d}")))

        cost = row(lambda: f"0.{random.randint(20, 60)}")
        rows = " ".join([*(some() for _ in range(5)), row(lambda: "1")])
        (self.folder / "p.opt").write_text(
            f"[ -inf ] [ {cost} ] [ ] [ ] [ ] [ {rows} ] [ 50 50 50 50 50 10000 ]"
            f" [ inf inf inf inf inf inf ] {row(lambda: '6')} {row(lambda: '0')}"
            f" {row(lambda: '9999')}"
        )
        limit = int(1 + 2 * SLOWDOWN)
        process = self.start("--prove", "--count", f"--rtime={limit}")
        printed, errors = process.communicate(timeout=limit + 5 * SLOWDOWN)
        self.assertEqual((process.returncode, errors), (0, ""))
        self.assertRegex(printed, r"\nNodes: \d+\n")

    def test_solutions_come_into_the_file_while_it_runs(self):
        process = self.start("--prove", "--sol=0")
        # The first one and, after a pause, those that came meanwhile.
        self.wait_for_solution(process, count=2)
        process.send_signal(signal.SIGINT)
        printed, errors = self.finish(process)
        self.assertEqual(errors, "")
        self.assertIn("not proven to be the best", printed)

    def test_its_progress_is_on_the_status_line(self):
        shown, _ = self.shown_on_terminal(
            "--prove", "--count", columns=120, seconds=int(2 + SLOWDOWN)
        )
        self.assertRegex(
            shown,
            r"[0-9.e-]+ % of the tree, [0-9.]+ million nodes a second(, (about|more than) [0-9.]+ \w+ left)?,",
        )


class Preparation(SearchCase):
    """A problem so large that its lattice takes a second and some hundred megabytes."""

    # Seconds of work after a signal, where the lattice is saved then and where it isn't; each is
    # about three times what a machine under load takes. Without looking at signals during a
    # preparation it was 2.7 and 1.1.
    SAVING = 2.0 * SLOWDOWN
    NO_SAVING = 0.8 * SLOWDOWN

    def setUp(self):
        super().setUp()
        self.write_knapsacks(1500, 300)

    def write_knapsacks(self, columns, rows):
        """Sparse rows, each with one bound; 0 is a solution, of which the file has a record."""
        random = Random(1)
        matrix, bounds = [], []
        for _ in range(rows):
            row = [0] * columns
            for j in random.sample(range(columns), 12):
                row[j] = random.choice((-1, 1)) * random.randint(10, 600)
            matrix.append(row)
            bounds.append(max(1, sum(entry for entry in row if entry > 0) // 3))
        cost = [random.randint(1, 500) * random.choice((-1, 1, 1)) for _ in range(columns)]
        self.write_problem(
            ["-inf"], [cost], [], [], matrix, ["-inf"] * rows, bounds, columns
        )

    def write_partitions(self, columns, rows):
        """Equations of zeros and ones."""
        random = Random(1)
        matrix = [[0] * columns for _ in range(rows)]
        for j in range(columns):
            for i in random.sample(range(rows), 4):
                matrix[i][j] = 1
        cost = [random.randint(1, 200) for _ in range(columns)]
        self.write_problem(["-inf"], [cost], matrix, [1] * rows, [], [], [], columns)

    def write_problem(self, targets, at, ag, bg, au, lu, ru, columns):
        def text(entries):
            return f"[ {' '.join(map(str, entries))} ]"

        def rows(matrix):
            return "[ " + "\n".join(map(text, matrix)) + " ]"

        zeros = [0] * columns
        parts = [text(targets), rows(at), rows(ag), text(bg), "[ ]", rows(au), text(lu), text(ru)]
        parts += [text(zeros), text(zeros), text([1] * columns)]
        (self.folder / "p.opt").write_text("\n".join(parts) + "\n")

    def write_known(self, columns):
        self.sol.write_text(f"[ {' '.join(['0'] * columns)} ]\n")
        starsift = [PROGRAM.with_name("starsift"), self.sol]
        subprocess.run(starsift, stdout=subprocess.DEVNULL, check=True)

    def files(self):
        return {path.name: path.read_bytes() for path in self.folder.glob("p.[os]*")}

    def assert_kept(self, before):
        """On a fast machine a pass may have begun, and have found something."""
        after = self.files()
        self.assertEqual(after["p.opt"], before["p.opt"])
        self.assertLessEqual(set(before), set(after))
        self.assertLessEqual(self.records_in(before), self.records_in(after))

    @staticmethod
    def records_in(files):
        """Without their times and in any order: what is found in between is sorted in, and a star that
        is found again earlier takes the place of the later one."""
        records = [line.split(b" | ") for line in files.get("p.sol", b"").splitlines()]
        return {b" | ".join(record[:4] + record[5:]) for record in records}

    def finish_measured(self, process):
        """The exit status by wait(), what was printed, and the seconds of work in all."""
        printed = process.stdout.read()
        _, status, usage = os.wait4(process.pid, 0)
        process.returncode = os.waitstatus_to_exitcode(status)
        self.assertEqual(process.stderr.read(), "")
        process.stdout.close()
        process.stderr.close()
        return printed, usage.ru_utime + usage.ru_stime

    def assert_signal_ends_it(self, number, worked, limit, tries_left=4):
        """A signal after so many seconds of work; it may go on for `limit` seconds."""
        before = self.files()
        # So many solutions that no machine is fast enough to reach the goal before the signal.
        process = self.start("--verb=1", "--sol=1000")
        self.wait_for_work(process, worked)
        process.send_signal(number)
        at_signal = self.cpu_seconds(process)
        printed, total = self.finish_measured(process)
        if tries_left > 0 and process.returncode == -signal.SIGTERM != -number:
            # A pass had begun, and the signal came while what it found was written.
            self.assertNotEqual(self.files(), before)
            self.sol.unlink()
            if "p.sol" in before:
                self.sol.write_bytes(before["p.sol"])
            return self.assert_signal_ends_it(number, worked, limit, tries_left - 1)
        self.assertEqual(process.returncode, -number)
        self.assertIn("\nSearch ended: interrupted.", printed)
        self.assertLess(total - at_signal, limit, f"after {worked} s")
        self.assert_kept(before)
        return None

    def test_signals_end_it_in_time_with_the_files_whole(self):
        self.write_known(1500)
        for number, worked in (
            (signal.SIGINT, 0.1),
            (signal.SIGHUP, 0.2),
            (signal.SIGTERM, 0.3),
            (signal.SIGINT, 0.5),
        ):
            self.assert_signal_ends_it(number, worked, self.SAVING)

    def test_signals_end_the_removal_of_equations_in_time(self):
        self.write_partitions(2000, 100)
        for number, worked in ((signal.SIGINT, 0.2), (signal.SIGTERM, 0.4), (signal.SIGHUP, 0.6)):
            self.assert_signal_ends_it(number, worked, self.NO_SAVING)

    def test_clock_ends_it_in_time(self):
        self.write_known(1500)
        before = self.files()
        process = self.start("--rtime=1", "--verb=1", "--sol=1000")
        printed, worked = self.finish_measured(process)
        self.assertEqual(process.returncode, 0)
        self.assertIn("\nSearch ended: time is over.", printed)
        self.assertLess(worked, 1 + self.SAVING)
        self.assert_kept(before)


class EndTest(SearchCase):
    def test_search_for_all_ends_when_restarts_bring_nothing_new(self):
        # Nearly every point of the box is a solution, and each restart meets others of them.
        (self.folder / "p.opt").write_text(
            "[ ] [ ] [ ] [ ] [ ] [ [ 1 1 1 1 ] ] [ 0 ] [ 5 ]"
            " [ 0 0 0 0 ] [ 0 0 0 0 ] [ 2 2 2 2 ]"
        )
        out, err = self.finish(self.start("--sol=0", "--verb=1"))
        self.assertIn("Search ended: nothing new for long", out)
        self.assertEqual(err, "")

    def test_solutions_are_saved_ahead_of_the_lattice(self):
        # The solution fits into a file of that size, the lattice doesn't.
        def limit():
            resource.setrlimit(resource.RLIMIT_FSIZE, (1024, 1024))

        process = self.start("--sol=1", preexec_fn=limit)
        _, err = self.finish(process)
        self.assertIn("Could not write file", err)
        self.assertEqual(process.returncode, 1)
        self.assertTrue(self.sol.read_text().startswith(SOLUTION))

    def test_timeout_that_sends_its_signal_twice_loses_nothing(self):
        process = self.start("--sol=2", "--verb=1")
        self.wait_for_solution(process)
        process.send_signal(signal.SIGTERM)
        process.send_signal(signal.SIGTERM)
        out, _ = self.finish(process)
        self.assertIn("Search ended: interrupted", out)


if __name__ == "__main__":
    unittest.main()
