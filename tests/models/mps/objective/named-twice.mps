*= error 5: the objective is named a second time
NAME t
OBJNAME
 obj
 obj
ROWS
 N obj
 L c1
COLUMNS
 x obj 1 c1 1
ENDATA
