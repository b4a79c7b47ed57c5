*= error 8: "FOO" is no section of an MPS file
NAME t
ROWS
 N obj
 L c1
COLUMNS
 x obj 1 c1 1
FOO
ENDATA
