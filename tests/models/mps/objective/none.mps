*= name t
*= no objective
*= c1: x <= 0
*= x in [0, inf]
NAME t
ROWS
 L c1
COLUMNS
 x c1 1
ENDATA
