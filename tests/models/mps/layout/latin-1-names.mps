NAME t
ROWS
 N obj
 L grφίe
COLUMNS
 x obj 1 grφίe 1
ENDATA
