*= error 10: a bound of "x" is set twice
NAME t
ROWS
 N obj
 L c1
COLUMNS
 x obj 1 c1 1
BOUNDS
 LO b x 3
 FX b x 3
ENDATA
