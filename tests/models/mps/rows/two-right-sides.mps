*= error 10: the row "c1" has two right sides
NAME t
ROWS
 N obj
 L c1
COLUMNS
 x obj 1 c1 1
RHS
 r c1 1
 r c1 1
ENDATA
