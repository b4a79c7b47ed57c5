"""A market split: can each product be divided in halves between two divisions?

Every retailer goes to one of two divisions, so that each gets half of the sales of every product. Branch
and bound needs hours for five products and forty retailers; a complete enumeration takes a tenth of a
second and proves that there is no such split.
"""

import random

import starsift

PRODUCTS, RETAILERS = 4, 30

source = random.Random(4)
sales = [[source.randrange(100) for _ in range(RETAILERS)] for _ in range(PRODUCTS)]
halves = [sum(row) // 2 for row in sales]
problem = starsift.Problem(lower=[0] * RETAILERS, upper=[1] * RETAILERS, Ag=sales, bg=halves)
result = problem.search(sol=0)
print(result.proof, len(result.solutions))
for solution in result.solutions:
    assert all(sum(a * x for a, x in zip(row, solution.x)) == half for row, half in zip(sales, halves))
