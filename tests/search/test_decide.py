"""What the command decides, against brute force over every point of the box.

The environment names the program (SEARCH_PROGRAM), the number of random problems (DECIDE_PROBLEMS,
default 120) and the first of their seeds (DECIDE_SEED, default 1). Run as a script it prints how
many of each kind were decided, and how many verdicts are wrong.
"""

import itertools
import json
import os
import pathlib
import random
import shutil
import subprocess
import tempfile
import unittest
from dataclasses import dataclass, field
from fractions import Fraction

HERE = pathlib.Path(__file__).resolve().parent
PROGRAM = pathlib.Path(os.environ["SEARCH_PROGRAM"]).resolve()
PROBLEMS = int(os.environ.get("DECIDE_PROBLEMS", "120"))
FIRST_SEED = int(os.environ.get("DECIDE_SEED", "1"))
TIME_LIMIT = 300  # seconds; a guard against hanging, also under sanitizers on a busy machine


@dataclass
class Problem:
    """All numbers are integers or fractions; goals may be "inf" and "-inf"."""

    lower: list
    upper: list
    places: list
    goals: list = field(default_factory=list)
    targets: list = field(default_factory=list)
    equations: list = field(default_factory=list)  # (row, side, modulus)
    ranges: list = field(default_factory=list)  # (lower, row, upper), None: no bound

    def points(self):
        """Every point on its grid within the bounds."""
        axes = []
        for low, high, places in zip(self.lower, self.upper, self.places):
            unit = 10**places
            steps = range(-(-low * unit // 1), high * unit // 1 + 1)
            axes.append([Fraction(step, unit) for step in steps])
        return itertools.product(*axes)

    def accepts(self, x):
        for row, side, modulus in self.equations:
            rest = value(row, x) - side
            if (rest % modulus if modulus else rest) != 0:
                return False
        for low, row, high in self.ranges:
            at = value(row, x)
            if (low is not None and at < low) or (high is not None and at > high):
                return False
        return True

    def norm(self, x):
        total = Fraction(0)
        for goal, row in zip(self.goals, self.targets):
            at = value(row, x)
            total += {"inf": -at, "-inf": at}.get(goal) if isinstance(goal, str) else abs(at - goal)
        return total

    def text(self):
        moduli = [modulus for _, _, modulus in self.equations]
        items = [
            vector(self.goals),
            matrix(self.targets),
            matrix([row for row, _, _ in self.equations]),
            vector([side for _, side, _ in self.equations]),
            vector(moduli if any(moduli) else []),
            matrix([row for _, row, _ in self.ranges]),
            vector(["-inf" if low is None else low for low, _, _ in self.ranges]),
            vector(["inf" if high is None else high for _, _, high in self.ranges]),
            vector(self.places),
            vector(self.lower),
            vector(self.upper),
        ]
        return "\n".join(items) + "\n"


def value(row, x):
    return sum(a * b for a, b in zip(row, x))


def number(text):
    """-7, 9/10 or the mixed -4:9/10."""
    whole, _, part = text.rpartition(":")
    if not whole:
        return Fraction(text)
    return Fraction(whole) + (-1 if whole.startswith("-") else 1) * Fraction(part)


def vector(entries):
    return "[ " + " ".join(map(str, entries)) + " ]"


def matrix(rows):
    return "[ " + " ".join(map(vector, rows)) + " ]"


# Kinds of problems: each takes a source of random numbers. Sides and bounds of rows come from a
# point of the box in two thirds of the problems, so that many have solutions.


def box(source, count, width):
    lower = [source.randint(-width, width) for _ in range(count)]
    return Problem(lower, [low + source.randint(0, width) for low in lower], [0] * count)


def planted(source, problem):
    return [
        Fraction(source.randint(low * 10**d, high * 10**d), 10**d)
        for low, high, d in zip(problem.lower, problem.upper, problem.places)
    ]


def row(source, count, size):
    return [source.randint(-size, size) for _ in range(count)]


def add_equation(source, problem, coefficients, modulus=0):
    side = value(coefficients, planted(source, problem))
    if source.random() < 1 / 3:
        side += source.randint(-3, 3)
    problem.equations.append((coefficients, side, modulus))


def add_range(source, problem, coefficients):
    at = value(coefficients, planted(source, problem))
    low = at - source.randint(0, 5) if source.random() < 0.7 else None
    high = at + source.randint(-2, 5) if low is None or source.random() < 0.5 else None
    if low is not None and high is not None:
        low, high = min(low, high), max(low, high)
    problem.ranges.append((low, coefficients, high))


def add_targets(source, problem, count):
    for _ in range(count):
        coefficients = row(source, len(problem.lower), 20)
        goal = source.choice(["inf", "-inf", source.randint(-50, 50)])
        problem.goals.append(goal)
        problem.targets.append(coefficients)


def one_variable(source):
    problem = box(source, 1, 1000)
    add_equation(source, problem, [source.randint(1, 10**6)], source.randint(2, 10**5))
    return problem


def two_congruences(source):
    problem = box(source, source.randint(1, 2), 30)
    for _ in range(2):
        add_equation(source, problem, row(source, len(problem.lower), 50), source.randint(2, 60))
    return problem


def no_rows(source):
    problem = box(source, source.randint(1, 4), 4)
    add_targets(source, problem, source.randint(1, 2))
    return problem


def long_numbers(source):
    problem = box(source, source.randint(2, 5), 3)
    add_equation(source, problem, row(source, len(problem.lower), 10**30))
    if source.random() < 0.5:
        add_equation(source, problem, row(source, len(problem.lower), 10**20), 10**30 + 57)
    return problem


def knapsack(source):
    count = source.randint(2, 5)
    problem = Problem([0] * count, [{2: 60, 3: 16, 4: 8, 5: 5}[count]] * count, [0] * count)
    weights = [source.randint(5, 200) for _ in range(count)]
    if source.random() < 0.5:
        add_equation(source, problem, weights)
    else:
        problem.ranges.append((None, weights, source.randint(100, 800)))
        add_targets(source, problem, 1)
    return problem


def systems(source):
    problem = box(source, source.randint(2, 5), 5)
    count = len(problem.lower)
    for _ in range(source.randint(1, 3)):
        add_equation(source, problem, row(source, count, 9), source.choice([0, 0, 2, 3, 4, 6, 10]))
    if source.random() < 0.5:
        add_range(source, problem, row(source, count, 9))
    return problem


def decimals(source):
    problem = box(source, source.randint(1, 3), 3)
    problem.places = [source.randint(0, 1) for _ in problem.places]
    count = len(problem.lower)
    coefficients = [Fraction(source.randint(-20, 20), source.choice([1, 2, 3, 5])) for _ in range(count)]
    if source.random() < 0.5:
        add_equation(source, problem, coefficients)
    else:
        add_range(source, problem, coefficients)
    add_targets(source, problem, source.randint(0, 1))
    return problem


def goals(source):
    problem = box(source, source.randint(2, 5), 4)
    add_targets(source, problem, source.randint(1, 4))
    for _ in range(source.randint(0, 2)):
        add_range(source, problem, row(source, len(problem.lower), 9))
    if source.random() < 0.3:
        add_equation(source, problem, row(source, len(problem.lower), 5))
    return problem


KINDS = [
    *(one_variable, two_congruences, no_rows, long_numbers),
    *(knapsack, systems, decimals, goals),
]


class Runs:
    """Runs of the command in a folder of their own."""

    def __init__(self, text):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="decide-"))
        (self.folder / "p.opt").write_text(text)

    def __enter__(self):
        return self

    def __exit__(self, *_):
        shutil.rmtree(self.folder)

    def verdict(self, *options):
        """The line for scripts, and the solutions in the file afterwards."""
        solutions = self.folder / "p.sol"
        solutions.unlink(missing_ok=True)
        run = subprocess.run(
            [PROGRAM, "--json", *options, "p.opt"],
            cwd=self.folder,
            stdin=subprocess.DEVNULL,
            capture_output=True,
            text=True,
            timeout=TIME_LIMIT,
            check=False,
        )
        lines = run.stdout.splitlines()
        if not lines or not lines[-1].startswith("{"):
            raise AssertionError(f"no verdict: {run}\n{(self.folder / 'p.opt').read_text()}")
        found = set()
        if solutions.exists():
            for line in solutions.read_text().splitlines():
                entries = line[: line.index("]")].strip("[ ").split()
                found.add(tuple(map(number, entries)))
        return json.loads(lines[-1]), found


def faults(problem):
    """What is wrong about the verdicts on a problem, and whether both say something."""
    expected = {x for x in problem.points() if problem.accepts(x)}
    wrong = []
    with Runs(problem.text()) as runs:
        every, found = runs.verdict("--sol=0")
        if every["complete"] and found != expected:
            wrong.append(f"{len(found)} solutions for {len(expected)}")
        if every["complete"] != (every["status"] in ("infeasible", "complete", "optimal")):
            wrong.append(f"status {every['status']}")
        if not found <= expected:
            wrong.append("a vector that is no solution")
        decided = every["complete"]
        if problem.goals:
            best, found = runs.verdict()
            decided = decided and best["complete"]
            least = min(map(problem.norm, expected), default=None)
            if best["complete"] and (best["best"] and Fraction(best["best"])) != least:
                wrong.append(f"best {best['best']} for {least}")
            if best["bound"] and least is not None and Fraction(best["bound"]) > least:
                wrong.append(f"bound {best['bound']} above {least}")
            if not found <= expected:
                wrong.append("a best vector that is no solution")
    return wrong, decided, bool(expected)


def judge(count, first_seed):
    """Tallies by kind: problems, solvable ones, decided ones; and what is wrong."""
    tallies = {kind.__name__: [0, 0, 0] for kind in KINDS}
    wrong = []
    for i in range(count):
        kind = KINDS[i % len(KINDS)]
        seed = first_seed + i
        problem = kind(random.Random(f"{kind.__name__} {seed}"))
        found, decided, solvable = faults(problem)
        tally = tallies[kind.__name__]
        for place, counts in enumerate((True, solvable, decided)):
            tally[place] += counts
        wrong += [f"{kind.__name__} {seed}: {text}\n{problem.text()}" for text in found]
    return tallies, wrong


class Deciding(unittest.TestCase):
    def test_small_problems_of_every_kind_are_decided_rightly(self):
        tallies, wrong = judge(PROBLEMS, FIRST_SEED)
        self.assertEqual(wrong, [])
        for name, (problems, solvable, decided) in tallies.items():
            self.assertEqual(decided, problems, name)
            self.assertGreater(solvable, problems // 6, name)

    def test_solutions_on_the_bounds_of_the_cuts_are_found(self):
        text = (HERE / "market-split-7x60.opt").read_text()
        with Runs(text) as runs:
            verdict, _ = runs.verdict("--count")
        self.assertEqual((verdict["status"], verdict["count"]), ("complete", "3"))

    def test_threads_change_neither_verdict_nor_solutions(self):
        text = (HERE / "market-split-7x60.opt").read_text()
        results = set()
        for threads in (1, 2, 5):
            with Runs(text) as runs:
                verdict, found = runs.verdict("--sol=0", f"--threads={threads}")
            results.add((verdict["status"], verdict["count"], frozenset(found)))
        self.assertEqual(len(results), 1)
        self.assertEqual(len(found), 3)


def main():
    tallies, wrong = judge(PROBLEMS, FIRST_SEED)
    for name, (problems, solvable, decided) in tallies.items():
        print(f"{name}: {problems} problems, {solvable} solvable, {decided} decided")
    print(*wrong, f"{len(wrong)} wrong", sep="\n")


if __name__ == "__main__":
    main()
