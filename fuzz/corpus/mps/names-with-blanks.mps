*= name fixed
*= min cost of: x one
*= row one: 2 x one + 3 y <= 4
*= x one in [0, 9]
*= y integer in [0, 5]
NAME          fixed
ROWS
 N  cost of
 L  row one
COLUMNS
    x one     cost of            1.0   row one            2.0
    MARKER                 'MARKER'                 'INTORG'
    y         row one            3.0
    MARKER                 'MARKER'                 'INTEND'
RHS
    a set     row one            4.0
BOUNDS
 UP bnd       x one              9.0
 UP bnd       y                  5.0
ENDATA
