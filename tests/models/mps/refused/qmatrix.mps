*= error 8: quadratic objectives (QMATRIX) are not supported
NAME t
ROWS
 N obj
 L c1
COLUMNS
 x obj 1 c1 1
QMATRIX
ENDATA
