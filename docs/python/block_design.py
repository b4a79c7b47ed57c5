"""Block designs with a prescribed group: which sets of triples hold every pair exactly once?

The cyclic group of order 13 acts on 13 points. Its orbits on triples are the columns, its orbits on pairs the
rows, and an entry says how many triples of an orbit hold a given pair (Kramer and Mesner, 1976). A choice
of columns that sums to 1 in every row is a Steiner triple system.
"""

from itertools import combinations

import starsift

POINTS = 13


def orbits(size):
    """The orbits of all sets of that size, each a sorted list of sorted tuples."""
    found = set()
    for block in combinations(range(POINTS), size):
        found.add(tuple(sorted({tuple(sorted((x + shift) % POINTS for x in block)) for shift in range(POINTS)})))
    return sorted(found)


pairs, triples = orbits(2), orbits(3)
matrix = [[sum(set(pair[0]) <= set(triple) for triple in orbit) for orbit in triples] for pair in pairs]
problem = starsift.Problem(
    lower=[0] * len(triples), upper=[1] * len(triples), Ag=matrix, bg=[1] * len(pairs)
)
result = problem.search(sol=0)
print(f"{len(pairs)} x {len(triples)}: {result.proof}, {len(result.solutions)} systems")
for solution in sorted(result.solutions, key=lambda solution: solution.x):
    print(*(orbit[0] for orbit, chosen in zip(triples, solution.x) if chosen))
