*= error 9: a line of BOUNDS has a kind, a set, a column and a value
NAME t
ROWS
 N obj
 L c1
COLUMNS
 x obj 1 c1 1
BOUNDS
 UP x
ENDATA
