*= error 8: special ordered sets (SOS) are not supported
NAME t
ROWS
 N obj
 L c1
COLUMNS
 x obj 1 c1 1
SOS
ENDATA
