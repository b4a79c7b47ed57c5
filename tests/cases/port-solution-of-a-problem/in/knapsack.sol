// two bare solutions, found by hand
[ 0 11 34 1 ]
[ 1 4 40 0 ]
// a solver's log: the first line is wrong by one unit of weight, the last two are one star
[ 0 1 36 6 ] | -310 | [ 310 ] | 0 | 2 | --beta=20 | 2.4.2
[ 0 1 36 5 ] | -302 | [ 302 ] | 0 | 75 | --beta=20 | 2.4.2
[ 0 1 36 5 ] | -302 | [ 302 ] | 0 | 9 | --beta=20 | 2.4.2
