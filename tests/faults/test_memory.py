"""No memory: a limit of the address space, and allocations that fail, one at a time."""

import os
import pathlib
import random
import resource
import subprocess
import unittest

from faulty import PROGRAM, TIME_LIMIT, FaultCase, Result, error, failure

SEEK = pathlib.Path(PROGRAM).with_name("starseek")
PORT = pathlib.Path(PROGRAM).with_name("starport")
PAGE = 4096
# Below this the loader doesn't find room for the libraries, above the other no run needs more.
LEAST, MOST = 1 << 20, 1 << 30
OUT_OF_MEMORY = failure("Out of memory")


class Limits(FaultCase):
    """Each limit between the one at which the program starts and the one at which it ends well."""

    def run_within(self, command, limit):
        process = subprocess.Popen(
            command,
            cwd=self.folder,
            stdin=subprocess.DEVNULL,
            stdout=subprocess.PIPE,
            stderr=subprocess.PIPE,
            text=True,
            preexec_fn=lambda: resource.setrlimit(resource.RLIMIT_AS, (limit, limit)),
        )
        out, errors = process.communicate(timeout=TIME_LIMIT)
        return Result(process.returncode, out, errors, process.pid)

    def first_start(self, command):
        """The least limit, in pages, at which the program itself begins."""
        least, most = LEAST // PAGE, MOST // PAGE
        while least < most:
            middle = (least + most) // 2
            result = self.run_within(command, middle * PAGE)
            self.restore()
            if result.status in (0, 1, 2):
                most = middle
            else:
                least = middle + 1
        return least

    def assert_fatal_until_it_succeeds(self, command, assert_safe, refusal=(1, OUT_OF_MEMORY)):
        limit = self.first_start(command)
        refused = 0
        while True:
            self.restore()
            result = self.run_within(command, limit * PAGE)
            if result.status == 0:
                break
            self.assertEqual(result.status, refusal[0], (limit, result))
            self.assertTrue(result.stderr.startswith(refusal[1]), result)
            self.assert_nothing_left(result)
            assert_safe()
            # What the search had found, if there was the memory to say so.
            for found in self.folder.glob("*.found.*"):
                self.assertIn(found.name, result.stderr)
                found.unlink()
            refused += 1
            limit += 2
        self.assertGreater(refused, 10)

    def test_check_is_fatal_and_the_file_whole(self):
        self.assert_fatal_until_it_succeeds([PROGRAM, self.sol.name], self.assert_whole)

    def test_search_is_fatal_and_the_file_whole(self):
        self.assert_fatal_until_it_succeeds(
            [SEEK, "--sol=1", "knapsack.opt"],
            lambda: self.assertIn(b"[ 0 1 36 5 ] | -302 |", self.text()),
        )

    def test_a_file_that_does_not_fit_is_refused_before_it_is_read(self):
        size = 1 << 30
        os.truncate(self.sol, size)
        before = self.unchanged_state()
        result = self.run_within([PROGRAM, self.sol.name], 500 << 20)
        self.assertEqual(result.status, 1, result)
        self.assertRegex(
            result.stderr,
            r"FAIL: Not enough memory for sol file knapsack.sol: it takes 10[789][0-9] MB, "
            r"there is room for [345][0-9]{2} MB\n",
        )
        self.assertEqual(self.unchanged_state(), before)
        self.assert_nothing_left(result)

    def unchanged_state(self):
        """What differs once the file was replaced or written; its time of access may move."""
        status = os.stat(self.sol)
        return status.st_ino, status.st_size, status.st_mtime_ns, status.st_ctime_ns

    def test_a_file_that_fits_is_checked(self):
        line = "[ 0 1 36 5 ] | -302 | [ 302 ] | 0 | 9 | --beta=20 | 2.4.2\n"
        # The rest is white space. In pieces: a large parent would count as memory of the next run.
        with open(self.sol, "w") as file:
            file.write(line)
            for _ in range(80_000):
                file.write("\n" + " " * 999)
        result = self.run_within([PROGRAM, self.sol.name], 500 << 20)
        self.assertEqual((result.status, result.stderr), (0, ""))
        self.assertEqual(self.sol.stat().st_size, len(line))
        self.assertEqual(self.sol.read_text(), line)

    def test_a_search_starts_no_more_lattices_than_have_room(self):
        draw = random.Random(1)
        weights = [draw.getrandbits(150) for _ in range(100)]
        zeros = " ".join("0" * 100)
        (self.folder / "sum.opt").write_text(
            f"[ ] [ ] [ [ {' '.join(map(str, weights))} ] ] [ {sum(weights[::2])} ] [ 0 ] [ ] [ ] [ ]\n"
            f"[ {zeros} ] [ {zeros} ] [ {zeros.replace('0', '1')} ]\n"
        )
        command = [SEEK, "--prove=0", "--rtime=3", "--threads=50", "sum.opt"]
        result = self.run_within(command, 300 << 20)
        self.assertEqual((result.status, result.stderr), (0, ""))
        self.assert_nothing_left(result)

    def assert_port_refuses_until_it_succeeds(self, arguments, assert_safe):
        """Everything is put into a model and a solution of a hundred columns."""
        names = [f"x{j}" for j in range(100)]
        weights = " + ".join(f"{3 ** (j % 50)} {name}" for j, name in enumerate(names))
        (self.folder / "model.lp").write_text(
            f"maximize\n obj: {weights}\nsubject to\n row: {weights} <= {3 ** 60}\n"
            f"binary\n {' '.join(names)}\nend\n"
        )
        (self.folder / "model.out").write_text(
            "objective value: 1\n" + "".join(f"{name} 1 \t(obj:1)\n" for name in names)
        )
        self.assert_fatal_until_it_succeeds(
            [PORT, *arguments], assert_safe, (2, "there is not enough memory\n")
        )

    def assert_whole_if_there(self):
        """The files of a base are whole, whichever were written."""
        for ending, end in ((".opt", b"]\n"), (".sol", b"\n"), (".names", b"\n")):
            file = self.folder / f"model{ending}"
            if file.exists():
                self.assertTrue(file.read_bytes().endswith(end), file)
                file.unlink()

    def test_import_is_refused_and_the_files_whole(self):
        self.assert_port_refuses_until_it_succeeds(
            ["model.lp", "--solution=model.out"], self.assert_whole_if_there
        )

    def test_explanation_is_refused(self):
        self.assert_port_refuses_until_it_succeeds(
            ["--explain", "model.out", "model.lp"], self.assert_whole_if_there
        )


class Peak(FaultCase):
    """What a run needs at most, in multiples of the file that it reads."""

    def peak_of(self, command):
        with open(self.scratch / "out", "wb") as out:
            process = subprocess.Popen(command, cwd=self.folder, stdout=out, stderr=out)
            _, status, usage = os.wait4(process.pid, 0)
        process.returncode = os.waitstatus_to_exitcode(status)
        self.assertEqual(process.returncode, 0, (self.scratch / "out").read_bytes()[:1000])
        return usage.ru_maxrss * 1024

    def test_models_with_many_decimals_are_held_in_three_times_their_size(self):
        source = random.Random(1)
        rows = [f"R{i}" for i in range(20)]
        with open(self.folder / "model.mps", "w") as file:
            file.write("ROWS\n N  cost\n" + "".join(f" L  {row}\n" for row in rows) + "COLUMNS\n")
            for column in range(40_000):
                for row in source.sample(rows, 8):
                    file.write(f"    C{column:05}  {row}  {source.uniform(-5, 5):.15f}\n")
            file.write("ENDATA\n")
        size = (self.folder / "model.mps").stat().st_size
        self.assertGreater(size, 9_000_000)
        self.assertLess(self.peak_of([PORT, "model.mps"]), 3 * size)

    def test_searches_hold_many_solutions_in_little_memory(self):
        # Sixteen pairs of variables of which one is 1, and 65 that are 0.
        pairs, variables = 16, 97
        rows = [[int(j in (i, pairs + i)) for j in range(variables)] for i in range(pairs)]
        text = lambda row: "[ " + " ".join(map(str, row)) + " ]\n"
        (self.folder / "many.opt").write_text(
            "[ ] [ ] [ "
            + "".join(map(text, rows))
            + "] "
            + text([1] * pairs)
            + "[ ] [ ] [ ] [ ]\n"
            + text([0] * variables) * 2
            + text([1] * 2 * pairs + [0] * (variables - 2 * pairs))
        )
        # A number for each component would take a hundred megabytes.
        self.assertLess(self.peak_of([SEEK, "--sol=0", "many.opt"]), 60_000_000)
        found = self.folder / "many.sol"
        stars = found.read_bytes()
        self.assertEqual(len(set(stars.splitlines())), 1 << pairs)
        # They are sorted as the check sorts them, by their times among others.
        self.peak_of([PROGRAM, "many.sol"])
        self.assertTrue(found.read_bytes() == stars)


class Allocations(FaultCase):
    def test_any_allocation_may_fail(self):
        # Those before the command begins are the library's own.
        calls = self.calls()
        first = calls[: calls.index("sigaction")].count("new") + 1
        count = calls.count("new")
        self.assertGreater(count, first)
        for number in range(first, count + 1):
            with self.subTest(number=number):
                self.restore()
                result = self.run_with(error("new", number, "ENOMEM"))
                self.assertEqual((result.status, result.stderr), (1, OUT_OF_MEMORY))
                self.assert_whole()
                self.assert_nothing_left(result)


if __name__ == "__main__":
    unittest.main()
