*= name fixed
*= min cost of: x one
*= row one: 2 x one <= 0
*= x one in [0, inf]
NAME          fixed
ROWS
 N  cost of
 L  row one
COLUMNS
    x one     cost of            1.0
              row one            2.0
ENDATA
