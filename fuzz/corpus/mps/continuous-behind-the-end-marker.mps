*= name t
*= min obj: x
*= c1: x + 2 y <= 0
*= x integer in [0, 1]
*= y in [0, inf]
NAME t
ROWS
 N obj
 L c1
COLUMNS
 M1 'MARKER' 'INTORG'
 x obj 1 c1 1
 M2 'MARKER' 'INTEND'
 y c1 2
BOUNDS
 UP b x 1
ENDATA
