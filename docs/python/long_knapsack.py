"""A knapsack whose weights have 30 digits, and what a solver that works in floating point says of it.

GLPK (`glpsol`) reads the weights as doubles, which hold 16 digits: what it finds isn't the sum that was asked for, if
it finds anything. The check tells by how much.
"""

import random
import re
import subprocess
import tempfile
from pathlib import Path

import starsift

ITEMS, MOST = 8, 20

source = random.Random(7)
weights = [source.randrange(10**29, 10**30) for _ in range(ITEMS)]
total = sum(source.randint(0, MOST) * weight for weight in weights)
problem = starsift.Problem(lower=[0] * ITEMS, upper=[MOST] * ITEMS, Ag=[weights], bg=[total])


def glpk_answer():
    """The point of glpsol, or None."""
    terms = "\n".join(f" + {weight} x{j}" for j, weight in enumerate(weights))
    bounds = "\n".join(f" 0 <= x{j} <= {MOST}" for j in range(ITEMS))
    names = "\n".join(f" x{j}" for j in range(ITEMS))
    with tempfile.TemporaryDirectory() as folder:
        model, answer = Path(folder, "model.lp"), Path(folder, "answer.txt")
        model.write_text(
            f"Minimize\n x0\nSubject To\n{terms} = {total}\nBounds\n{bounds}\nGeneral\n{names}\nEnd\n"
        )
        command = ["glpsol", "--lp", model, "--tmlim", "60", "--output", answer]
        subprocess.run(command, check=True, stdout=subprocess.DEVNULL)
        text = answer.read_text()
    if "UNDEFINED" in text or "EMPTY" in text:
        return None
    values = re.findall(r"^ *\d+ x(\d+) +\*? +(\S+)", text, re.MULTILINE)
    return [int(float(value)) for _, value in sorted(values, key=lambda pair: int(pair[0]))]


point = glpk_answer()
if point is None:
    print("GLPK finds nothing")
else:
    verdict = problem.check([point])[0]
    print("GLPK:", "right" if verdict.is_right else f"wrong by {float(verdict.violations[0].amount):.0e}")

result = problem.search(sol=0)
print(f"starsift: {len(result.solutions)} solution, {result.proof}")
assert all(verdict.is_right for verdict in problem.check(solution.x for solution in result.solutions))
