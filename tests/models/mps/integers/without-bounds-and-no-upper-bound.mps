*= option integer-upper=inf
*= name t
*= min obj: x
*= c1: x <= 0
*= x integer in [0, inf]
*= told 0: integer columns without any bound, which get the upper bound inf (see --integer-upper): 1, the first of "x"
NAME t
ROWS
 N obj
 L c1
COLUMNS
 M1 'MARKER' 'INTORG'
 x obj 1 c1 1
 M2 'MARKER' 'INTEND'
ENDATA
