[ 233 ]
[ 128 ]
[ 23 ]
[ 38 ]   // 38 leaves 3 modulo 7
