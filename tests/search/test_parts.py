"""A complete search in parts: processes that are killed and run again, and joined.

The environment names the program (SEARCH_PROGRAM).
"""

import json
import os
import pathlib
import re
import shutil
import signal
import subprocess
import tempfile
import time
import unittest
from random import Random

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent
PROGRAM = pathlib.Path(os.environ["SEARCH_PROGRAM"]).resolve()
TIME_LIMIT = 300  # seconds


def fnv(text):
    """The digest that ends a state."""
    value = 0xCBF29CE484222325
    for byte in text.encode():
        value = (value ^ byte) * 0x100000001B3 % 2**64
    return f"{value:016x}"


def subset_sum(count, seed):
    """A problem of sums of a subset, and the number of its solutions by counting all sums."""
    random = Random(seed)
    weights = [random.randint(20, 60) for _ in range(count)]
    goal = sum(weights) // 2
    sums = [1] + [0] * goal
    for weight in weights:
        for value in range(goal, weight - 1, -1):
            sums[value] += sums[value - weight]
    row = " ".join(map(str, weights))
    zeros = " ".join("0" * count)
    ones = " ".join("1" * count)
    text = f"[ ] [ ] [ [ {row} ] ] [ {goal} ] [ ] [ ] [ ] [ ] [ {zeros} ] [ {zeros} ] [ {ones} ]\n"
    return text, sums[goal]


class PartsCase(unittest.TestCase):
    def setUp(self):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="parts-"))
        self.addCleanup(shutil.rmtree, self.folder)

    def use(self, example):
        shutil.copyfile(ROOT / "examples" / example / f"{example}.opt", self.folder / "p.opt")

    def start(self, *arguments):
        process = subprocess.Popen(
            [PROGRAM, "--threads=1", *arguments],
            cwd=self.folder,
            text=True,
            stdin=subprocess.DEVNULL,
            stdout=subprocess.PIPE,
            stderr=subprocess.PIPE,
        )
        self.addCleanup(process.communicate)
        self.addCleanup(process.kill)
        return process

    def run_to_end(self, *arguments, status=0):
        process = self.start(*arguments)
        out, error = process.communicate(timeout=TIME_LIMIT)
        self.assertEqual(process.returncode, status, out + error)
        return out, error

    def run_parts(self, parts, *options):
        for part in range(1, parts + 1):
            self.run_to_end(f"--part={part}/{parts}", *options, "p.opt")

    def state(self, part, parts):
        if parts == 1:
            return self.folder / "p.state"
        return self.folder / f"p.part-{part}-of-{parts}.state"

    def refused(self, *arguments):
        """The one sentence of a refusal."""
        _, error = self.run_to_end(*arguments, status=1)
        self.assertRegex(error, r"\A\n\*\*\* FAIL: [^\n]+\n\Z")
        return error.strip().removeprefix("*** FAIL: ")

    def edit(self, path, name, value):
        """Changes a field of a state, whose sum is right again."""
        text = re.sub(rf"(?m)^{name} .*$", f"{name} {value}", path.read_text())
        body = text[: text.rindex("sum ")]
        path.write_text(f"{body}sum {fnv(body)}\n")


class Killed(PartsCase):
    def setUp(self):
        super().setUp()
        text, self.count = subset_sum(26, 5)
        (self.folder / "p.opt").write_text(text)

    def kill_amid(self, process, path):
        """Kills a process when a part of its subtrees is done, but not all."""
        end = time.monotonic() + TIME_LIMIT
        while not (path.exists() and re.search(r"(?m)^done \d", path.read_text())):
            self.assertIsNone(process.poll(), "the part has ended")
            self.assertLess(time.monotonic(), end)
            time.sleep(0.001)
        process.send_signal(signal.SIGKILL)
        process.wait(TIME_LIMIT)
        self.assertIn("\nend open\n", path.read_text())

    def test_parts_run_again_complete_the_proof(self):
        options = {part: [f"--part={part}/8", "--count", "p.opt"] for part in range(1, 9)}
        for part in (2, 5, 7):
            self.kill_amid(self.start(*options[part]), self.state(part, 8))
        self.state(7, 8).unlink()
        processes = [self.start(*options[part]) for part in (1, 3, 4, 6, 8)]
        for process in processes:
            process.communicate(timeout=TIME_LIMIT)
            self.assertEqual(process.returncode, 0)
        out, _ = self.run_to_end("--join", "--json", "p.opt", status=2)
        self.assertIn("This proves nothing", out)
        told = re.findall(r"(?m)^Part (\d) of 8 is (.*): starseek (.*)$", out)
        self.assertEqual([part for part, _, _ in told], ["2", "5", "7"])
        self.assertEqual(json.loads(out.splitlines()[-1])["missing"], [2, 5, 7])
        self.assertRegex(told[0][1], r"^not complete, \d+ of its \d+ subtrees are done$")
        self.assertEqual(told[2][1], "missing")
        for _, _, command in told:
            self.run_to_end(*command.split())
        out, _ = self.run_to_end("--join", "p.opt")
        self.assertIn(f"\nAll {self.count} solutions: the search was complete.\n", out)

    def test_part_goes_on_where_it_was_killed(self):
        self.kill_amid(self.start("--part=1/1", "--count", "p.opt"), self.state(1, 1))
        before = self.state(1, 1).read_text()
        # What was done isn't counted again, whatever it was said to have.
        solutions = int(re.search(r"\nsolutions (\d+)", before)[1])
        self.edit(self.state(1, 1), "solutions", solutions + 1_000_000_000)
        out, _ = self.run_to_end("--part=1/1", "--count", "p.opt")
        count = self.count + 1_000_000_000
        self.assertIn(f"\nAll {count} solutions: the search was complete.\n", out)

    def test_whole_search_goes_on_from_there(self):
        self.kill_amid(self.start("--part=1/1", "--count", "p.opt"), self.state(1, 1))
        solutions = int(re.search(r"\nsolutions (\d+)", self.state(1, 1).read_text())[1])
        self.edit(self.state(1, 1), "solutions", solutions + 1_000_000_000)
        # That of another goal is left alone.
        before = self.state(1, 1).read_bytes()
        _, error = self.run_to_end("--sol=3", "p.opt")
        self.assertEqual(error, "")
        _, error = self.run_to_end("--sol=0", "p.opt")
        self.assertEqual(
            error, "*** p.state is of a search for count: this one leaves no state\n"
        )
        self.run_to_end("--prove=0", "p.opt")
        self.assertEqual(self.state(1, 1).read_bytes(), before)
        out, error = self.run_to_end("--count", "--json", "p.opt")
        count = self.count + 1_000_000_000
        self.assertIn(f"\nAll {count} solutions: the search was complete.\n", out)
        self.assertNotIn('"part"', out)
        self.assertEqual(error, "")
        self.assertFalse(self.state(1, 1).exists())

    def test_tree_whose_rest_takes_too_long_waits_for_prove(self):
        self.kill_amid(self.start("--part=1/1", "--count", "p.opt"), self.state(1, 1))
        self.edit(self.state(1, 1), "milliseconds", 10**8)
        before = self.state(1, 1).read_bytes()
        out, _ = self.run_to_end("--count", "p.opt")
        self.assertRegex(out, r"\nA complete search would take about .*; --prove runs it anyway\.\n")
        self.assertEqual(self.state(1, 1).read_bytes(), before)
        out, _ = self.run_to_end("--count", "--prove", "p.opt")
        self.assertIn(f"\nAll {self.count} solutions: the search was complete.\n", out)
        self.assertFalse(self.state(1, 1).exists())

    def test_whole_search_refuses_the_state_of_another_problem(self):
        self.kill_amid(self.start("--part=1/1", "--count", "p.opt"), self.state(1, 1))
        before = self.state(1, 1).read_bytes()
        (self.folder / "p.opt").write_text(subset_sum(12, 1)[0])
        self.assertEqual(
            self.refused("--count", "p.opt"),
            "File p.state is of another problem: remove it to begin anew",
        )
        self.assertEqual(self.state(1, 1).read_bytes(), before)

    def test_clock_and_signals_leave_the_state(self):
        process = self.start("--part=1/1", "--count", "p.opt")
        while not self.state(1, 1).exists():
            time.sleep(0.01)
        process.send_signal(signal.SIGTERM)
        out, _ = process.communicate(timeout=TIME_LIMIT)
        self.assertEqual(process.returncode, -signal.SIGTERM)
        self.assertRegex(out, r"Part 1 of 1 is not complete: \d+ of its \d+ subtrees are done; ")
        self.assertIn("\nend open\n", self.state(1, 1).read_text())


class Long(PartsCase):
    """A search of the whole problem, by a tree that takes minutes."""

    def setUp(self):
        super().setUp()
        random = Random(3)
        rows = [[random.randint(0, 99) for _ in range(70)] for _ in range(8)]
        matrix = " ".join("[ " + " ".join(map(str, row)) + " ]" for row in rows)
        sums = " ".join(str(sum(row) // 2) for row in rows)
        zeros, ones = " ".join("0" * 70), " ".join("1" * 70)
        (self.folder / "p.opt").write_text(
            f"[ ] [ ] [ {matrix} ] [ {sums} ] [ ] [ ] [ ] [ ] [ {zeros} ] [ {zeros} ] [ {ones} ]\n"
        )

    def test_state_that_cannot_be_written_is_told_once(self):
        self.state(1, 1).mkdir()
        process = self.start("--prove", "--sol=0", "p.opt")
        line = process.stderr.readline()
        self.assertEqual(line, "*** Could not write file: p.state\n")
        time.sleep(1)
        process.send_signal(signal.SIGTERM)
        _, error = process.communicate(timeout=TIME_LIMIT)
        self.assertEqual((process.returncode, error), (-signal.SIGTERM, ""))

    def search_until(self, is_there):
        """Ends a search by a signal when its state is as wanted; the state's text."""
        process = self.start("--prove", "--sol=0", "p.opt")
        path = self.state(1, 1)
        end = time.monotonic() + TIME_LIMIT
        while not (path.exists() and is_there(path.read_text())):
            self.assertIsNone(process.poll(), "the search has ended")
            self.assertLess(time.monotonic(), end)
            time.sleep(0.01)
        process.send_signal(signal.SIGTERM)
        out, error = process.communicate(timeout=TIME_LIMIT)
        self.assertEqual((process.returncode, error), (-signal.SIGTERM, ""))
        self.assertIn("\nNo solution was found. This proves nothing", out)
        return path.read_text()

    @staticmethod
    def done(text):
        return re.search(r"(?m)^done ?(.*)$", text)[1]

    def test_search_leaves_a_state_from_which_it_goes_on(self):
        first = self.search_until(lambda text: "\nend open\n" in text)
        self.assertIn("\ngoal all\npart 1/1\nknown none\n", first)
        # As if the first half of the subtrees were done.
        half = int(re.search(r"(?m)^subtrees (\d+)$", first)[1]) // 2
        self.edit(self.state(1, 1), "done", f"0-{half}")
        self.edit(self.state(1, 1), "nodes", 10**15)
        later = self.search_until(lambda text: f"\nnodes {10**15}\n" not in text)
        self.assertRegex(self.done(later), rf"^0-{half}\b|^0-\d+")
        self.assertGreater(int(re.search(r"(?m)^nodes (\d+)$", later)[1]), 10**15)


class Joined(PartsCase):
    def test_solutions_are_those_of_one_search(self):
        self.use("residues")
        self.run_to_end("--sol=0", "p.opt")
        whole = self.points("p.sol")
        (self.folder / "p.sol").unlink()
        self.run_parts(3, "--sol=0")
        self.assertFalse((self.folder / "p.sol").exists())
        out, _ = self.run_to_end("--join", "p")
        self.assertIn(f"\nAll {len(whole)} solutions: the search was complete.\n", out)
        self.assertEqual(self.points("p.sol"), whole)

    def points(self, name):
        lines = (self.folder / name).read_text().splitlines()
        return sorted(line.partition("]")[0] for line in lines)

    def test_whole_tree_is_a_part_with_the_files_of_the_problem(self):
        self.use("best-knapsack")
        best = json.loads(self.run_to_end("--json", "p.opt")[0].splitlines()[-1])["best"]
        for name in ("p.sol", "p.lat"):
            (self.folder / name).unlink()
        for _ in range(2):
            out, _ = self.run_to_end("--part=1/1", "--json", "p.opt")
            self.assertIn("\nThe first solution is optimal.\n", out)
            line = json.loads(out.splitlines()[-1])
            self.assertEqual((line["status"], line["best"]), ("optimal", best))
            names = {path.name for path in self.folder.iterdir()}
            self.assertEqual(names, {"p.opt", "p.sol", "p.state"})

    def test_best_solution_is_that_of_one_search(self):
        self.use("best-knapsack")
        out, _ = self.run_to_end("--json", "p.opt")
        best = json.loads(out.splitlines()[-1])["best"]
        for name in ("p.sol", "p.lat"):
            (self.folder / name).unlink()
        self.run_parts(4)
        out, _ = self.run_to_end("--join", "--json", "p.opt")
        line = json.loads(out.splitlines()[-1])
        self.assertEqual((line["status"], line["best"], line["bound"]), ("optimal", best, best))
        self.assertIn("\nThe first solution is optimal.\n", out)
        # A part that knows the best solution looks for none.
        out, _ = self.run_to_end("--part=1/2", "--json", "p.opt")
        self.assertEqual(json.loads(out.splitlines()[-1])["solutions"], 0)

    def test_absence_of_solutions_is_proven(self):
        self.use("unfillable")
        self.run_parts(2)
        out, _ = self.run_to_end("--join", "p.opt")
        self.assertIn("There is no solution: the search was complete.", out)

    def test_solutions_that_suffice_need_no_other_part(self):
        self.use("residues")
        for part in range(1, 5):
            out, _ = self.run_to_end(f"--part={part}/4", "--json", "p.opt")
            if json.loads(out.splitlines()[-1])["solutions"] == 1:
                break
        else:
            self.fail("no part has found a solution")
        for other in range(1, part):
            self.state(other, 4).unlink()
        out, _ = self.run_to_end("--join", "--json", "p.opt")
        line = json.loads(out.splitlines()[-1])
        self.assertEqual((line["status"], line["complete"]), ("found", False))

    def test_solutions_that_sufficed_and_were_lost(self):
        self.use("residues")
        self.run_to_end("--part=1/1", "p.opt")
        (self.folder / "p.sol").unlink()
        self.assertRegex(
            self.refused("--part=1/1", "p.opt"), "^File p.state is of a search that has found more"
        )
        self.run_parts(4)
        for path in self.folder.glob("p.part-*.sol"):
            path.unlink()
        self.assertRegex(self.refused("--join", "p.opt"), r" has 0 of the 1 solutions of its part$")

    def test_parts_that_suffice_together(self):
        self.use("residues")
        self.run_parts(4, "--sol=4")
        self.assertEqual(
            [self.state(part, 4).read_text().count("end enough") for part in range(1, 5)], [0] * 4
        )
        self.state(4, 4).unlink()
        found = sum(
            len(path.read_text().splitlines()) for path in self.folder.glob("p.part-[123]-of-4.sol")
        )
        self.run_to_end("--join", "p.opt", status=0 if found >= 4 else 2)

    def test_norms_are_no_goal_of_parts(self):
        self.use("best-knapsack")
        for option in ("--tnorm=0", "--snorm=0"):
            self.assertRegex(self.refused(option, "--part=1/1", "p.opt"), "not with tnorm or snorm$")
        self.assertFalse(self.state(1, 1).exists())

    def test_known_solution_within_the_tolerance_only(self):
        (self.folder / "p.opt").write_text(
            "[ inf ] [ [ 1 1 ] ] [ [ 0.1 0 ] ] [ 0.30000000000001 ] [ 0 ] [ ] [ ] [ ]\n"
            "[ 0 0 ] [ 0 0 ] [ 9 9 ]\n"
        )
        (self.folder / "p.sol").write_text("[ 3 9 ]\n")
        out, _ = self.run_to_end("--part=1/1", "--json", "p.opt")
        self.assertEqual(json.loads(out.splitlines()[-1])["status"], "infeasible")
        self.run_parts(2)
        out, _ = self.run_to_end("--join", "--json", "p.opt")
        self.assertEqual(json.loads(out.splitlines()[-1])["status"], "infeasible")

    def test_problem_without_a_finite_box_has_no_parts(self):
        (self.folder / "p.opt").write_text(
            "[ ] [ ] [ [ 2 -3 ] ] [ 1 ] [ ] [ ] [ ] [ ] [ 0 0 ] [ 0 0 ] [ inf inf ]\n"
        )
        out, _ = self.run_to_end("--part=1/2", "p.opt", status=1)
        self.assertIn("No complete search: variable 1 is not bounded on both sides.", out)
        self.assertFalse(self.state(1, 2).exists())

    def test_complete_part_is_not_walked_again(self):
        self.use("residues")
        first, _ = self.run_to_end("--part=1/2", "--sol=0", "p.opt")
        state = self.state(1, 2).read_bytes()
        again, _ = self.run_to_end("--part=1/2", "--sol=0", "p.opt")
        self.assertEqual(self.state(1, 2).read_bytes(), state)
        self.assertEqual(again.splitlines()[-2:], first.splitlines()[-2:])


class Refused(PartsCase):
    def setUp(self):
        super().setUp()
        self.use("residues")
        self.run_parts(2, "--sol=0")
        self.path = self.state(2, 2)
        self.text = self.path.read_text()

    def join(self):
        return self.refused("--join", "p.opt")

    def assert_damaged(self, data):
        self.path.write_bytes(data)
        sentence = "File p.part-2-of-2.state is damaged: remove it to begin anew"
        self.assertEqual(self.join(), sentence)
        self.assertEqual(self.refused("--part=2/2", "--sol=0", "p.opt"), sentence)
        self.assertEqual(self.path.read_bytes(), data)

    def test_truncated_state(self):
        data = self.text.encode()
        for length in (0, 1, 14, 15, 40, len(data) // 2, len(data) - 1):
            self.assert_damaged(data[:length])

    def test_garbage_in_a_state(self):
        data = self.text.encode()
        random = Random(1)
        for _ in range(20):
            at = random.randrange(len(data))
            byte = bytes([random.randrange(256)])
            if data[at : at + 1] != byte and b"version" not in data[at - 8 : at + 8]:
                self.assert_damaged(data[:at] + byte + data[at + 1 :])
        self.assert_damaged(random.randbytes(1000))
        self.assert_damaged(data + b"\n")

    def test_fields_that_no_search_writes(self):
        for name, value in (
            ("done", "0-99999999999"),
            ("done", "3-1"),
            ("done", "0-x"),
            ("done", "1 0"),
            ("done", "0-1 1"),
            ("subtrees", "99999999999999"),
            ("subtrees", "-1"),
            ("part", "3/2"),
            ("part", "0/2"),
            ("part", "2"),
            ("nodes", "18446744073709551616"),
            ("known", "x"),
            ("best", "1/0"),
            ("best", "2/4"),
            ("best", "1e99999999"),
            ("end", "open"),
        ):
            self.path.write_text(self.text)
            self.edit(self.path, name, value)
            self.assert_damaged(self.path.read_bytes())

    def test_state_of_another_version(self):
        self.edit(self.path, "version", "0.0.1")
        self.assertRegex(self.join(), r"^File p.part-2-of-2.state is of version 0.0.1, not of ")

    def test_state_of_a_version_with_a_suffix(self):
        self.edit(self.path, "version", "9.9-beta")
        self.assertRegex(self.join(), r"^File p.part-2-of-2.state is of version 9.9-beta, not of ")

    def test_state_of_another_problem(self):
        self.edit(self.path, "problem", "0" * 16)
        self.assertEqual(self.join(), "File p.part-2-of-2.state is of another problem")
        self.assertEqual(
            self.refused("--part=2/2", "--sol=0", "p.opt"),
            "File p.part-2-of-2.state is of another problem: remove it to begin anew",
        )

    def test_state_of_another_tree(self):
        for path in self.folder.glob("p.*"):
            path.unlink()
        (self.folder / "p.opt").write_text(subset_sum(12, 1)[0])
        self.run_parts(2, "--sol=0")
        self.edit(self.path, "tree", "0" * 16)
        self.assertRegex(self.join(), "are of two trees")
        self.edit(self.path, "done", "")
        self.edit(self.path, "end", "open")
        self.assertRegex(self.refused("--part=2/2", "--sol=0", "p.opt"), "is of another tree")

    def test_state_of_another_goal(self):
        self.path.unlink()
        self.run_to_end("--part=2/2", "--count", "p.opt")
        self.assertRegex(self.join(), "is of a search for count, p.part-1-of-2.state for all$")
        self.assertRegex(
            self.refused("--part=2/2", "--sol=0", "p.opt"), "is of a search for count, not all"
        )

    def test_renamed_state(self):
        shutil.copyfile(self.state(1, 2), self.path)
        self.assertEqual(self.join(), "File p.part-2-of-2.state is of part 1 of 2")

    def test_parts_of_two_numbers(self):
        shutil.copyfile(self.path, self.state(2, 3))
        self.assertRegex(self.join(), "^There are parts of 2 and parts of 3: ")

    def test_no_parts(self):
        for part in (1, 2):
            self.state(part, 2).unlink()
        self.assertRegex(self.join(), "^There are no parts of p.opt: ")

    def test_lost_solutions(self):
        solutions = self.folder / "p.part-1-of-2.sol"
        other = self.folder / "p.part-2-of-2.sol"
        lost = solutions if solutions.exists() else other
        lost.unlink()
        self.assertRegex(self.join(), f"^File {lost.name} has 0 of the [1-9]")
        self.assertFalse((self.folder / "p.sol").exists())

    def test_state_without_its_solutions(self):
        for example, options in (("residues", ["--sol=0"]), ("best-knapsack", [])):
            for path in self.folder.glob("p.*"):
                path.unlink()
            self.use(example)
            self.run_to_end("--part=1/1", *options, "p.opt")
            (self.folder / "p.sol").unlink()
            self.assertEqual(
                self.refused("--part=1/1", *options, "p.opt"),
                "File p.state is of a search that has found more than is in its solution file: "
                "remove it to begin anew",
            )

    def test_lost_best_solution(self):
        for path in self.folder.glob("p.*"):
            path.unlink()
        self.use("best-knapsack")
        self.run_parts(2)
        for path in self.folder.glob("p.*sol"):
            path.unlink()
        self.assertRegex(self.join(), "^A part knew a solution with target norm ")

    def test_wrong_solutions_of_a_part_are_dropped(self):
        for part in (1, 2):
            with open(self.folder / f"p.part-{part}-of-2.sol", "a") as file:
                file.write("[ 9 9 9 9 9 ]\n")
        self.run_to_end("--join", "p.opt")
        self.assertNotIn("[ 9 9 9 9 9 ]", (self.folder / "p.sol").read_text())


if __name__ == "__main__":
    unittest.main()
