[ 1 2 ] | -5 | [ 5 ] | 0 | 7 | --beta=3 /* kept */ // kept
