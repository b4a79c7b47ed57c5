*= name t
*= min obj: x
*= c1: x >= 3
*= c2: 0 <= 4
*= x in [0, inf]
NAME t
ROWS
 N obj
 G c1
 L c2
COLUMNS
 x obj 1 c1 1
RHS
 c1 3 c2 4
ENDATA
