*= name t
*= min obj: x
*= c1: x <= 1/3
*= x in [0, inf]
NAME t
ROWS
 N obj
 L c1
COLUMNS
 x obj 1 c1 1
RHS
 r c1 1/3
ENDATA
