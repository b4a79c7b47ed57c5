*= error 7: a line of COLUMNS has a column and pairs of a row and a value
NAME t
ROWS
 N obj
 L c1
COLUMNS
 x
ENDATA
