*= error 7: the name of the column is missing
NAME t
ROWS
 N obj
 L c1
COLUMNS
 x obj
ENDATA
