*= error 9: there is no row "c9"
NAME t
ROWS
 N obj
 L c1
COLUMNS
 x obj 1 c1 1
RHS
 r c9 1
ENDATA
