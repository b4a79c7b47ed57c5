*= error 8: lazy rows (LAZYCONS) are not supported
NAME t
ROWS
 N obj
 L c1
COLUMNS
 x obj 1 c1 1
LAZYCONS
ENDATA
