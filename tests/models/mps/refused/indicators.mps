*= error 8: indicator rows (INDICATORS) are not supported
NAME t
ROWS
 N obj
 L c1
COLUMNS
 x obj 1 c1 1
INDICATORS
ENDATA
