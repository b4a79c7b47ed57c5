*= error 6: the row "c1" comes a second time
NAME t
ROWS
 N obj
 L c1
 E c1
COLUMNS
 x obj 1 c1 1
ENDATA
