*= error 9: x has no finite value
NAME t
ROWS
 N obj
 L c1
COLUMNS
 x obj 1 c1 1
BOUNDS
 FX b x inf
ENDATA
