*= name t
*= min obj: x
*= c1: x <= 0
*= x integer in [0, 3]
NAME t
ROWS
 N obj
 L c1
COLUMNS
 M1 'MARKER' 'INTORG'
 x obj 1 c1 1
BOUNDS
 UP b x 3
ENDATA
