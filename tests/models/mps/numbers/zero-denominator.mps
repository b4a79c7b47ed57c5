*= error 9: "1/0" has the denominator 0
NAME t
ROWS
 N obj
 L c1
COLUMNS
 x obj 1 c1 1
RHS
 r c1 1/0
ENDATA
