*= error 9: the section RHS comes a second time
NAME t
ROWS
 N obj
 L c1
COLUMNS
 x obj 1 c1 1
RHS
RHS
ENDATA
