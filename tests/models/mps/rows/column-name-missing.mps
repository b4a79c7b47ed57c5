*= error 7: the name of the column is missing
NAME t
ROWS
 N obj
 L c1
COLUMNS
 c1 1
ENDATA
