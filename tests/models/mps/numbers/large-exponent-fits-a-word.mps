*= name t
*= min obj: x
*= c1: x <= 120000000000000000
*= x in [0, inf]
NAME t
ROWS
 N obj
 L c1
COLUMNS
 x obj 1 c1 1
RHS
 r c1 12e16
ENDATA
