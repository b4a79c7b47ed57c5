NAME  
OBJSENSE
    MAX
ROWS
 N  gain
 L  few
 L  even
 G  most
COLUMNS
    MARKER  'MARKER'  'INTORG'
    a  gain  3
    a  few  1
    a  even  1
    b  gain  2.5
    b  few  1
    b  even  -1
    b  most  1
    MARKER  'MARKER'  'INTEND'
    c  gain  -1
    c  most  1
RHS
    RHS  gain  -7
    RHS  few  6
    RHS  even  1
    RHS  most  -4
RANGES
    RNG  few  5
    RNG  even  3
BOUNDS
 UP BND  a  10
 UP BND  b  8
 UP BND  c  2.5
ENDATA
