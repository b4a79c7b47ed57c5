NAME
ROWS
 N  cost
 L  we[2Jight
COLUMNS
    xÿ  cost  1
    xÿ  we[2Jight  2
RHS
    RHS  we[2Jight  3
BOUNDS
 UI BND  xÿ  9
ENDATA
