*= error 2: a line of data stands outside of the sections
 x y 1
NAME t
ROWS
 N obj
 L c1
COLUMNS
 x obj 1 c1 1
ENDATA
