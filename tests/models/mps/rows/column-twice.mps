*= error 9: the column "x" comes a second time
NAME t
ROWS
 N obj
 L c1
COLUMNS
 x obj 1
 y c1 1
 x c1 1
ENDATA
