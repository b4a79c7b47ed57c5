*= error 7: the file ends without ENDATA
NAME t
ROWS
 N obj
 L c1
COLUMNS
 x obj 1 c1 1
