// reported as optimal by a floating-point solver; the sum is 106925262
[ 553 3 0 0 0 0 0 0 0 532 ]
