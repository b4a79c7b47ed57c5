*= error 5: a line of ROWS has a kind and a name
NAME t
ROWS
 N obj
 L
COLUMNS
 x obj 1 c1 1
ENDATA
