*= error 9: the exponent of "1e100001" is beyond 100000
NAME t
ROWS
 N obj
 L c1
COLUMNS
 x obj 1 c1 1
RHS
 r c1 1e100001
ENDATA
