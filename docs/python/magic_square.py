"""Magic squares: the numbers 1 to 9, each once, with equal sums of rows, columns and diagonals.

A variable for each cell and number says whether the number is there.
"""

import starsift

SIZE = 3
CELLS = [(row, column) for row in range(SIZE) for column in range(SIZE)]
NUMBERS = range(1, SIZE * SIZE + 1)
SUM = sum(NUMBERS) // SIZE

problem = starsift.Problem()
is_at = {
    (cell, number): problem.add_variable(0, 1, name=f"{cell} {number}") for cell in CELLS for number in NUMBERS
}
for cell in CELLS:
    problem.add_equation({is_at[cell, number]: 1 for number in NUMBERS}, 1)
for number in NUMBERS:
    problem.add_equation({is_at[cell, number]: 1 for cell in CELLS}, 1)
lines = [[(i, j) for j in range(SIZE)] for i in range(SIZE)]
lines += [[(i, j) for i in range(SIZE)] for j in range(SIZE)]
lines += [[(i, i) for i in range(SIZE)], [(i, SIZE - 1 - i) for i in range(SIZE)]]
for line in lines:
    problem.add_equation({is_at[cell, number]: number for cell in line for number in NUMBERS}, SUM)

result = problem.search(sol=0)
print(f"{len(result.solutions)} squares: {result.proof}")
first = min(result.solutions, key=lambda solution: solution.x)
for row in range(SIZE):
    print(*(n for column in range(SIZE) for n in NUMBERS if first.x[is_at[(row, column), n]]))
