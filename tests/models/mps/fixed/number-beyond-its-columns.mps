*= error 4: a line of ROWS has a kind and a name
NAME          fixed
ROWS
 N  cost of
 L  row one
COLUMNS
    x one     cost of            1.0   row one            2.0
    MARKER                 'MARKER'                 'INTORG'
    y         row one            3.0000000
    MARKER                 'MARKER'                 'INTEND'
RHS
    a set     row one            4.0
BOUNDS
 UP bnd       x one              9.0
 UP bnd       y                  5.0
ENDATA
