*= error 4: "UP" is no sense of an objective, which is MIN or MAX
NAME t
OBJSENSE
 UP
ROWS
 N obj
 L c1
COLUMNS
 x obj 1 c1 1
ENDATA
