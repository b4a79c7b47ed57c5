*= error 10: x has no value: lower 5 > upper 3
NAME t
ROWS
 N obj
 L c1
COLUMNS
 x obj 1 c1 1
BOUNDS
 LO b x 5
 UP b x 3
ENDATA
