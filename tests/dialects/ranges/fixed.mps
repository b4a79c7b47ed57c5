NAME          ranges
OBJSENSE
    MAXIMIZE
ROWS
 N  gain
 G  few
 L  even
 G  most
COLUMNS
    a         gain             3.0   few              1.0
    a         even             1.0
    b         gain             2.5   few              1.0
    b         even            -1.0   most             1.0
    c         gain            -1.0   most             1.0
RHS
    RHS       gain            -7.0   few              1.0
    RHS       even             1.0   most            -4.0
RANGES
    RNG       few             -5.0   even             3.0
BOUNDS
 UI BND       a               10.0
 UI BND       b                8.0
 UP BND       c                2.5
ENDATA
