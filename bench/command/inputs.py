"""Generates problem and solution files of several kinds, the same from the same seed.

usage: inputs.py KIND FACTOR STEM      writes STEM.opt and STEM.sol

Every row of a problem has a closing variable of its own with the coefficient 1, in which the
others don't take part: whatever the rest of a star is, the closing variables make it right.
"""

import random
import sys
from dataclasses import dataclass
from fractions import Fraction

PARAMETERS = ["--beta=20", "--beta=30 --deep=1", "--delta=0.99", ""]
VERSIONS = ["2.4.2", "2.10", "3.0.1", ""]
WIDE_BOUND = 10**40


@dataclass
class Kind:
    variables: int
    equations: int
    congruences: int
    inequations: int
    # Non-zero entries of a row besides that of its closing variable.
    entries: int
    targets: int
    # Stars at factor 1.
    stars: int
    # Share of zero components.
    zeros: float
    fractions: bool = False


KINDS = {
    "many": Kind(50, 4, 1, 3, 12, 2, 40000, 0.3),
    "wide": Kind(2000, 150, 20, 80, 6, 1, 1500, 0.7),
    "exact": Kind(30, 3, 1, 2, 8, 2, 4000, 0.2, fractions=True),
    "large": Kind(400, 10, 0, 10, 20, 1, 30000, 0.4),
}


def text(value):
    """Integers as they are, fractions as the mixed numbers that the command writes."""
    if isinstance(value, int) or value.denominator == 1:
        return str(int(value))
    sign, value = "-" if value < 0 else "", abs(value)
    whole, rest = divmod(value.numerator, value.denominator)
    return f"{sign}{whole}:{rest}/{value.denominator}" if whole else f"{sign}{rest}/{value.denominator}"


def vector(values):
    return "[ " + "".join(text(value) + " " for value in values) + "]"


def product(row, x):
    return sum(entry * x[column] for column, entry in row.items())


class Generator:
    def __init__(self, kind, seed):
        self.random = random.Random(seed)
        self.kind = kind
        closed = kind.equations + kind.congruences
        # The closing variables are the first ones; targets and inequations leave them out, so
        # that their values stay in a known range.
        self.closed = [self.row() | {i: 1} for i in range(closed)]
        self.right_sides = [self.random.randint(100, 999) for _ in range(closed)]
        self.moduli = [0] * kind.equations + [
            self.random.randint(7, 97) for _ in range(kind.congruences)
        ]
        self.inequations = [self.row() for _ in range(kind.inequations)]
        self.targets = [self.row() for _ in range(kind.targets)]

    def coefficient(self):
        if not self.kind.fractions:
            return self.random.choice([-9, -7, -5, -3, -2, -1, 1, 2, 3, 4, 6, 8])
        if self.random.random() < 0.2:
            return self.random.randrange(10**29, 10**30)
        return Fraction(self.random.choice([-8, -5, -2, -1, 1, 2, 4, 7]), 3)

    def row(self):
        first = self.kind.equations + self.kind.congruences
        columns = self.random.sample(range(first, self.kind.variables), self.kind.entries)
        return {column: self.coefficient() for column in sorted(columns)}

    def component(self):
        draw = self.random.random()
        if draw < self.kind.zeros:
            return 0
        if not self.kind.fractions or draw > 0.8:
            return self.random.randrange(1, 100)
        if draw > 0.6:
            return self.random.randrange(10**29, 10**30)
        return Fraction(self.random.randrange(1, 1000), 3)

    def star(self):
        """Components of a solution."""
        x = [self.component() for _ in range(self.kind.variables)]
        for i, row in enumerate(self.closed):
            x[i] = 0
            x[i] = self.right_sides[i] - product(row, x)
        return x

    def record(self, x, parameters=None):
        if parameters is None:
            parameters = self.random.choice(PARAMETERS)
        # What is computed stands in the file as some solver left it: it need not be right.
        head = f"{vector(x)} | 0 | {vector([0] * self.kind.targets)} | 0 | "
        time = self.random.choice([-1, self.random.randrange(100), self.random.randrange(200000)])
        version = self.random.choice(VERSIONS)
        return f"{head}{time} | {parameters}" + (f" | {version}" if version else "")

    def records(self, count):
        """Lines: new stars, doubles with the same or other parameters, wrong and bare ones."""
        seen = []
        for _ in range(count):
            draw = self.random.random()
            if seen and draw < 0.15:
                x, parameters = self.random.choice(seen)
                yield self.record(x, parameters if draw < 0.08 else None)
                continue
            x = self.star()
            if draw < 0.25:
                x[0] += 1
                yield self.record(x)
            elif draw < 0.3:
                yield vector(x)
            else:
                parameters = self.random.choice(PARAMETERS)
                # Few are enough to choose doubles from.
                if len(seen) < 1000:
                    seen.append((x, parameters))
                yield self.record(x, parameters)

    def matrix(self, rows):
        if not rows:
            return "[ ]"
        lines = (vector([row.get(j, 0) for j in range(self.kind.variables)]) for row in rows)
        return "[\n" + "".join(line + "\n" for line in lines) + "]"

    def goals(self):
        """Maximise, and come close to 1000 in a second target."""
        return "[ inf 1000 ]" if self.kind.targets == 2 else "[ inf ]"

    def problem(self):
        n, rows = self.kind.variables, len(self.inequations)
        items = [
            self.goals(),
            self.matrix(self.targets),
            self.matrix(self.closed),
            vector(self.right_sides),
            vector(self.moduli),
            self.matrix(self.inequations),
            vector([-WIDE_BOUND] * rows) if self.kind.fractions else vector([-100000] * rows),
            "[ " + "inf " * rows + "]",
            vector([0] * n),
            "[ " + "-inf " * n + "]",
            vector([WIDE_BOUND**2 if self.kind.fractions else 10**6] * n),
        ]
        return "".join(item + "\n" for item in items)


def write(kind, factor, stem, seed=1):
    generator = Generator(KINDS[kind], seed)
    with open(f"{stem}.opt", "w", encoding="ascii") as file:
        file.write(f"// {kind}, seed {seed}\n" + generator.problem())
    count = max(1, round(KINDS[kind].stars * factor))
    with open(f"{stem}.sol", "w", encoding="ascii") as file:
        for line in generator.records(count):
            file.write(line + "\n")


if __name__ == "__main__":
    write(sys.argv[1], float(sys.argv[2]), sys.argv[3])
