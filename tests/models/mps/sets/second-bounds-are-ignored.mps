*= name t
*= min obj: x
*= c1: x <= 0
*= x in [0, 3]
*= told 14: the set "B" of BOUNDS is ignored, the first one is used
NAME t
ROWS
 N obj
 L c1
COLUMNS
 x obj 1 c1 1
BOUNDS
 UP A x 3
 UP B x 4
ENDATA
