*= name t
*= min obj: x
*= c1: x <= 0
*= x in [-inf, -2]
*= told 13: upper bounds below 0 without a lower bound, which then is -inf: 1, the first of "x"
NAME t
ROWS
 N obj
 L c1
COLUMNS
 x obj 1 c1 1
BOUNDS
 UP b x -2
ENDATA
