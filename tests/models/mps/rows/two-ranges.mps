*= error 10: the row "c1" has two ranges
NAME t
ROWS
 N obj
 L c1
COLUMNS
 x obj 1 c1 1
RANGES
 r c1 1
 r c1 1
ENDATA
