name stock
objsense minimise
rows
	n	cost
	n	unused
	g	demand
	l	stock
	e	pair
	g	lent
columns
	m	'MARKER'	'INTORG'
	a	cost	6/2	demand	1	$ so many
	a	unused	17
	a	stock	2	lent	-1/2
	b	cost	5/2	demand	1
	b	stock	3	pair	1
	c	cost	-1	stock	1
	c	pair	-1
	m	'MARKER'	'INTEND'
	d	cost	1/8	demand	-1
	d	lent	1
rhs
	demand	4	stock	20
	pair	1	lent	-3
bounds
	up	a	10
	up	b	8
	up	c	1
	up	d	5
	lo	d	-5
endata
