*= error 4: there is no row of kind N "cost"
NAME t
OBJNAME
 cost
ROWS
 N obj
 L c1
COLUMNS
 x obj 1 c1 1
ENDATA
