*= error 9: there is no column "y"
NAME t
ROWS
 N obj
 L c1
COLUMNS
 x obj 1 c1 1
BOUNDS
 UP b y 3
ENDATA
