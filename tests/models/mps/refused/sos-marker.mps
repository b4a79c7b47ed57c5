*= error 7: special ordered sets ('SOSORG') are not supported
NAME t
ROWS
 N obj
 L c1
COLUMNS
 S1 'MARKER' 'SOSORG'
 x obj 1
ENDATA
