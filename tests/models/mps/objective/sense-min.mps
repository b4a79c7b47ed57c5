*= name t
*= min obj: x
*= c1: x <= 0
*= x in [0, inf]
NAME t
OBJSENSE
 MIN
ROWS
 N obj
 L c1
COLUMNS
 x obj 1 c1 1
ENDATA
