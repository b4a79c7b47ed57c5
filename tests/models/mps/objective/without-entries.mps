*= name t
*= min obj: 0
*= c1: x <= 0
*= x in [0, inf]
NAME t
ROWS
 N obj
 L c1
COLUMNS
 x c1 1
ENDATA
