NAME          STOCK
ROWS
 N  cost
 G  demand
 L  stock
 E  pair
 G  lent
COLUMNS
    a         cost             3.0   demand           1.0
    a         stock            2.0   lent            -0.5
    b         cost           2.5E0   demand           1.0
    b         stock            3.0   pair             1.0
    c         cost            -1.0   stock            1.0
    c         pair            -1.0
    d         cost         12.5D-2   demand          -1.0
    d         lent             1.0
RHS
    RHS       demand           4.0   stock           20.0
    RHS       pair             1.0   lent            -3.0
BOUNDS
 UI BND       a               10.0
 UI BND       b                8.0
 BV BND       c
 LO BND       d               -5.0
 UP BND       d                5.0
ENDATA
