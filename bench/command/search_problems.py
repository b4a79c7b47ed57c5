"""Problems with a planted solution for searches, the same from the same seed.

A problem is a system of equations A x = b over 0 <= x <= top. `sizes` names the families:

  split-M-N          M equations over N binary variables, coefficients 0..99 (market split)
  knapsack-N-D       one equation over N binary variables, coefficients of D digits
  system-M-N-D       M equations over N binary variables, coefficients of D digits
  wide-M-N           M equations over N variables up to 9, coefficients -9..9
"""

import random
from dataclasses import dataclass


@dataclass
class Problem:
    name: str
    rows: list
    sides: list
    top: int

    def accepts(self, x):
        return all(0 <= value <= self.top for value in x) and all(
            sum(a * value for a, value in zip(row, x)) == side
            for row, side in zip(self.rows, self.sides)
        )


def coefficients(family, numbers, source):
    """Row maker and upper bound of the variables of a family."""
    if family == "split":
        return lambda n: [source.randrange(100) for _ in range(n)], 1
    if family == "wide":
        return lambda n: [source.randrange(-9, 10) for _ in range(n)], 9
    low, high = 10 ** (numbers[-1] - 1), 10 ** numbers[-1]
    return lambda n: [source.randrange(low, high) for _ in range(n)], 1


def make(name, seed):
    """The problem of a name such as split-3-20."""
    family, *numbers = name.split("-")
    numbers = [int(number) for number in numbers]
    equations, variables = (1, numbers[0]) if family == "knapsack" else numbers[:2]
    source = random.Random(f"{name} {seed}")
    row, top = coefficients(family, numbers, source)
    rows = [row(variables) for _ in range(equations)]
    x = [source.randrange(top + 1) for _ in range(variables)]
    return Problem(name, rows, [sum(a * v for a, v in zip(r, x)) for r in rows], top)


def as_opt(problem):
    def vector(values):
        return "[ " + " ".join(map(str, values)) + " ]"

    n = len(problem.rows[0])
    items = ["[ ]", "[ ]", "[", *map(vector, problem.rows), "]", vector(problem.sides), "[ ]"]
    items += ["[ ]", "[ ]", "[ ]", *(vector([value] * n) for value in (0, 0, problem.top))]
    return "\n".join(items) + "\n"


def as_lp(problem):
    """The same in CPLEX LP format, a term a line: readers limit the length of lines."""
    n = len(problem.rows[0])
    lines = ["Minimize", " obj: 0 x1", "Subject To"]
    for i, (row, side) in enumerate(zip(problem.rows, problem.sides), 1):
        lines.append(f" e{i}:")
        lines += [f"  {a:+d} x{j}" for j, a in enumerate(row, 1)]
        lines.append(f"  = {side}")
    lines += ["Bounds", *(f" 0 <= x{j} <= {problem.top}" for j in range(1, n + 1))]
    lines += ["Generals", *(f" x{j}" for j in range(1, n + 1)), "End"]
    return "\n".join(lines) + "\n"
