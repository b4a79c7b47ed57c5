*= error 9: semi-continuous columns (SC) are not supported
NAME t
ROWS
 N obj
 L c1
COLUMNS
 x obj 1 c1 1
BOUNDS
 SC b x 3
ENDATA
