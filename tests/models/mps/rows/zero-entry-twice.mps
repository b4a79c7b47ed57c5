*= error 7: the column "x" has two entries in the row "c1"
NAME t
ROWS
 N obj
 L c1
COLUMNS
 x c1 0 c1 1
ENDATA
