[ 2 1 ] | -inf | [ ] | 0 | 3 | 
[ 1 2 ] | inf | [ -inf inf ] | 0 | 3 | p
