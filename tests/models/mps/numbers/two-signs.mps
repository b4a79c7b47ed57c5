*= error 9: "--1" is not a number
NAME t
ROWS
 N obj
 L c1
COLUMNS
 x obj 1 c1 1
RHS
 r c1 --1
ENDATA
