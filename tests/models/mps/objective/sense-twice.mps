*= error 5: the sense of the objective comes a second time
NAME t
OBJSENSE
 MAX
 MIN
ROWS
 N obj
 L c1
COLUMNS
 x obj 1 c1 1
ENDATA
