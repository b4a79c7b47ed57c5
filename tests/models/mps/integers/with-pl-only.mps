*= name t
*= min obj: x
*= c1: x <= 0
*= x integer in [0, inf]
NAME t
ROWS
 N obj
 L c1
COLUMNS
 M1 'MARKER' 'INTORG'
 x obj 1 c1 1
 M2 'MARKER' 'INTEND'
BOUNDS
 PL b x
ENDATA
