NAME  
ROWS
 N  obj
 E  g1
 E  g2
 L  u1
 G  threshold_1
 E  goal_2
COLUMNS
    MARKER  'MARKER'  'INTORG'
    x1  obj  -1
    x1  g1  1
    x1  g2  1
    x1  threshold_1  1
    x1  goal_2  1
    x2  obj  -0.2
    x2  g1  0.1
    x2  u1  0.3
    x2  threshold_1  0.2
    mod_g2  g2  -7
    MARKER  'MARKER'  'INTEND'
    goal_2_above  obj  1
    goal_2_above  goal_2  -1
    goal_2_below  obj  1
    goal_2_below  goal_2  1
RHS
    RHS  g1  5
    RHS  g2  2
    RHS  u1  4
    RHS  threshold_1  4
    RHS  goal_2  3
RANGES
    RNG  u1  3
BOUNDS
 UP BND  x1  9
 UP BND  x2  90
 FR BND  mod_g2
ENDATA
