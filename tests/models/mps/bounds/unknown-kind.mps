*= error 9: "XX" is no kind of bound
NAME t
ROWS
 N obj
 L c1
COLUMNS
 x obj 1 c1 1
BOUNDS
 XX b x 3
ENDATA
