*= name t
*= min obj: x
*= c1: x <= 0
*= x integer in [0, 1]
*= told 0: integer columns without any bound, which get the upper bound 1 (see --integer-upper): 1, the first of "x"
NAME t
ROWS
 N obj
 L c1
COLUMNS
 M1 'MARKER' 'INTORG'
 x obj 1 c1 1
 M2 'MARKER' 'INTEND'
ENDATA
