*= name t
*= min obj: x
*= c0: 2 x <= 4
*= c1: 3 x <= 6
*= x in [0, inf]
NAME t
ROWS
 L c0
 N obj
 L c1
COLUMNS
 x obj 1 c1 3
 x c0 2
RHS
 r c1 6 c0 4
ENDATA
