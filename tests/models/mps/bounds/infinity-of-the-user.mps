*= option infinity=1000
*= name t
*= min obj: x
*= c1: x <= 0
*= x in [0, inf]
*= told 14: bounds of large magnitude that count as infinite (see --infinity): 1, the first of "x"
NAME t
ROWS
 N obj
 L c1
COLUMNS
 x obj 1 c1 1
BOUNDS
 UP b x 1000
ENDATA
