*= name t
*= min obj: x
*= RHS: 2 x <= 3
*= ROWS: 5 x <= 4
*= x in [0, inf]
NAME t
ROWS
 N obj
 L RHS
 L ROWS
COLUMNS
 x obj 1 RHS 2
 x ROWS 5
RHS
 RHS RHS 3 ROWS 4
ENDATA
