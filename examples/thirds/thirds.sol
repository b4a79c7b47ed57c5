[ 2 246913578024691357802469135780 6 ]   // too much by 8/3, in a number of thirty digits
[ 2 246913578024691357802469135780 5 ] | 0 | [ ] | 0 | 3700 | --consistency=1 | 2.4.2
