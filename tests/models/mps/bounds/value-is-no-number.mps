*= error 9: "3.x" is not a number
NAME t
ROWS
 N obj
 L c1
COLUMNS
 x obj 1 c1 1
BOUNDS
 UP b x 3.x
ENDATA
