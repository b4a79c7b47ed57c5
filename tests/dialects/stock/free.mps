* Each line has a pair of names, blanks divide them.
NAME stock
OBJSENSE
 MIN
OBJNAME
 cost
ROWS
 N cost
 G demand
 L stock
 E pair
 G lent
COLUMNS
 m1 'MARKER' 'INTORG'
 a cost 3
 a demand 1
 a stock 2
 a lent -.5
 b cost 2.5
 b demand 1
 b stock 3
 b pair 1
 c cost -1
 c stock 1
 c pair -1
 m2 'MARKER' 'INTEND'
 d cost .125
 d demand -1
 d lent 1
RHS
 rhs demand 4
 rhs stock 20
 rhs pair 1
 rhs lent -3
BOUNDS
 LI bnd a 0
 UI bnd a 10
 UP bnd b 8
 BV bnd c
 UP bnd d 5
 LO bnd d -5
ENDATA
