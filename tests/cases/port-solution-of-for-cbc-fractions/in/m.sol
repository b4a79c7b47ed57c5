[ 1/3 -1/8 ] | 5/24 | [ 5/24 ] | 0 | -1 | MIPLIB third.sol
