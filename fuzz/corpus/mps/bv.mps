*= name t
*= min obj: x
*= c1: x <= 0
*= x binary in [0, 1]
NAME t
ROWS
 N obj
 L c1
COLUMNS
 x obj 1 c1 1
BOUNDS
 BV b x
ENDATA
