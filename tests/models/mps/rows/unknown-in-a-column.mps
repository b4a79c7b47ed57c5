*= error 7: there is no row "c9"
NAME t
ROWS
 N obj
 L c1
COLUMNS
 x obj 1 c9 1
ENDATA
