*= error 7: "'INTEGER'" is no marker
NAME t
ROWS
 N obj
 L c1
COLUMNS
 M1 'MARKER' 'INTEGER'
 x obj 1
ENDATA
