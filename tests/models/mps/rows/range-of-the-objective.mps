*= name t
*= min obj: x
*= c1: x <= 0
*= x in [0, inf]
*= told 13: the range of "obj", a row of kind N, has no effect
NAME t
ROWS
 N obj
 L c1
COLUMNS
 x obj 1 c1 1
RANGES
 g obj 4
ENDATA
