*= name t
*= min obj: x
*= c1: x <= 3
*= c2: 0 <= 0
*= x in [0, inf]
*= told 16: the set "B" of RHS is ignored, the first one is used
NAME t
ROWS
 N obj
 L c1
 L c2
COLUMNS
 x obj 1 c1 1
RHS
 A c1 3
 B c1 4
 c2 5
ENDATA
