*= name t
*= min obj: x
*= c1: -3 <= x <= 0
*= x in [0, inf]
*= told 14: the set "B" of RANGES is ignored, the first one is used
NAME t
ROWS
 N obj
 L c1
COLUMNS
 x obj 1 c1 1
RANGES
 A c1 3
 B c1 4
ENDATA
