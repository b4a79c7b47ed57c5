*= name t
*= min obj: x
*= c1: 2 x <= 0
*= x in [0, inf]
NAME t
ROWS
 N obj
 L c1
COLUMNS
 x obj 1
   c1 2
ENDATA
