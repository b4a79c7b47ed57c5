* Problem:
* Class:      MIP
* Rows:       4
* Columns:    4 (3 integer, 1 binary)
* Non-zeros:  10
* Format:     Fixed MPS
*
NAME
ROWS
 N  R0000000
 G  demand
 L  stock
 E  pair
 G  lent
COLUMNS
    M0000001  'MARKER'                 'INTORG'
    a         R0000000             3   demand               1
    a         stock                2   lent              -0.5
    b         R0000000           2.5   demand               1
    b         stock                3   pair                 1
    c         R0000000            -1   stock                1
    c         pair                -1
    M0000002  'MARKER'                 'INTEND'
    d         R0000000         0.125   demand              -1
    d         lent                 1
RHS
    RHS1      demand               4   stock               20
    RHS1      pair                 1   lent                -3
BOUNDS
 UP BND1      a                   10
 UP BND1      b                    8
 UP BND1      c                    1
 LO BND1      d                   -5
 UP BND1      d                    5
ENDATA
