*= error 8: quadratic rows (QCMATRIX) are not supported
NAME t
ROWS
 N obj
 L c1
COLUMNS
 x obj 1 c1 1
QCMATRIX
ENDATA
