*= name t
*= min obj: x
*= c1: x <= 3
*= c2: 0 <= 5
*= x in [0, inf]
NAME t
ROWS
 N obj
 L c1
 L c2
COLUMNS
 x obj 1 c1 1
RHS
    rhs       c1                 3.0
              c2                 5.0
ENDATA
