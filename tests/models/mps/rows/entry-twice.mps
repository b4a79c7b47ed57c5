*= error 8: the column "x" has two entries in the row "c1"
NAME t
ROWS
 N obj
 L c1
COLUMNS
 x obj 1 c1 1
 x c1 1
ENDATA
