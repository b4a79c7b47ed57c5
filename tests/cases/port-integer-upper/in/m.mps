NAME m
ROWS
 N cost
 G pair
COLUMNS
 m 'MARKER' 'INTORG'
 a cost 1 pair 1
 b cost 2 pair 1
 m 'MARKER' 'INTEND'
RHS
 r pair 3
BOUNDS
 UP d b 7
ENDATA
