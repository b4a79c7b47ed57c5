// one
/* two
 */ // three