*= name t
*= min obj: x
*= c1: x <= 0
*= x in [-5, -2]
NAME t
ROWS
 N obj
 L c1
COLUMNS
 x obj 1 c1 1
BOUNDS
 UP b x -2
 LO b x -5
ENDATA
