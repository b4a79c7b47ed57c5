*= name t
*= min obj: 0
*= c1: 0 <= 0
NAME t
ROWS
 N obj
 L c1
COLUMNS
ENDATA
