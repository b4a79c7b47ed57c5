[ inf 1 ] | -inf | [ inf ] | 0 | 7 | 
[ -inf 1 ] | inf | [ -inf ] | 0 | 7 | 
