[ 1 2 1 0 ]
[ 2 0 0 2 ]
[ 1 1 1 1 ]
[ 0 0 0 1 ]   // one portion is no meal
[ 2 1 0 0 ]
