*= name t
*= min obj: x
*= 1: 2 x <= 3
*= x in [0, inf]
NAME t
ROWS
 N obj
 L 1
COLUMNS
 x obj 1 1 2
RHS
 1 3
ENDATA
