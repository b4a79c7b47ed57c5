*= name t
*= min obj: x
*= c1: x <= 0
*= x in [-inf, inf]
NAME t
ROWS
 N obj
 L c1
COLUMNS
 x obj 1 c1 1
BOUNDS
 UP b x Inf
 LO b x -infinity
ENDATA
