*= name t
*= min obj: x
*= c1: x <= 0
*= x in [2.5, 2.5]
NAME t
ROWS
 N obj
 L c1
COLUMNS
 x obj 1 c1 1
BOUNDS
 FX b x 2.5
ENDATA
