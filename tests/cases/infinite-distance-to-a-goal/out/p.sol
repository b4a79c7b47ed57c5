[ inf 1 ] | inf | [ inf ] | inf | 7 | 
