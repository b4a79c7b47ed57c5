NAME  
OBJSENSE
    MAX
ROWS
 N  obj
 L  c1
 L  c2
 L  c3
 L  c4
 L  c5
COLUMNS
    x1  obj  2
    x1  c1  1
    x1  c5  1
    x2  obj  3
    x2  c2  1
    x2  c5  1
    x0  obj  4
    x0  c3  1
    x0  c5  1
    y[1]  obj  1
    y[1]  c4  1
    y[1]  c5  1
RHS
    RHS  c1  1
    RHS  c2  2
    RHS  c3  3
    RHS  c4  4
    RHS  c5  6
BOUNDS
ENDATA
