"""An integer relation: of which polynomial with small coefficients is this number a root?

The powers of the number are known to 40 decimals. A combination of them with small integers that is nearly
0 is the polynomial: sums are bounded by the rounding errors, the leading coefficient is positive, and as
small as can be, since multiples are as good.
"""

from decimal import Decimal, getcontext

import starsift

DEGREE, DIGITS, LARGEST = 4, 40, 100

getcontext().prec = 60
number = Decimal(2).sqrt() + Decimal(3).sqrt()
powers = [int((number**k).scaleb(DIGITS).to_integral_value()) for k in range(DEGREE + 1)]

problem = starsift.Problem(lower=[-LARGEST] * DEGREE + [1], upper=[LARGEST] * (DEGREE + 1))
error = LARGEST * (DEGREE + 1)
problem.add_range(powers, -error, error)
problem.minimise([0] * DEGREE + [1])
result = problem.search()
print(result.solutions[0].x)
