*= error 5: "X" is no kind of row, which is N, E, L or G
NAME t
ROWS
 N obj
 X c1
COLUMNS
 x obj 1 c1 1
ENDATA
