*= name t
*= min obj: x
*= c1: x <= 0
*= x in [-inf, inf]
*= told 13: bounds of large magnitude that count as infinite (see --infinity): 2, the first of "x"
NAME t
ROWS
 N obj
 L c1
COLUMNS
 x obj 1 c1 1
BOUNDS
 UP b x 1e20
 LO b x -1e30
ENDATA
