*= name t
*= min obj: x
*= c1: x <= 0
*= x integer in [0, 7]
NAME t
ROWS
 N obj
 L c1
COLUMNS
 x obj 1 c1 1
BOUNDS
 UI b x 7
ENDATA
