*= name t
*= min obj: x
*= c1: x <= 0
*= x in [-inf, 3]
NAME t
ROWS
 N obj
 L c1
COLUMNS
 x obj 1 c1 1
BOUNDS
 MI b x
 UP b x 3
ENDATA
