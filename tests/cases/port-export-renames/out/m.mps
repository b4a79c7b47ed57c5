NAME
ROWS
 N obj
 L 1c
COLUMNS
 x+y obj 1 1c 2
 free 1c 1
ENDATA
