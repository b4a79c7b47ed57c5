"""Simultaneous congruences whose moduli aren't coprime, in two variables, with a box."""

import starsift

problem = starsift.Problem(lower=[0, 0], upper=[500, 500])
problem.add_congruence([3, 5], 7, 12)
problem.add_congruence([1, -2], 4, 18)
problem.add_congruence([7, 1], 0, 35)
problem.minimise([1, 1])
best = problem.search()
x, y = best.solutions[0].x
print(f"x = {x}, y = {y}: {best.proof}")
everything = problem.search(sol=0, count=True)
print(f"{everything.count} points in the box: {everything.proof}")
