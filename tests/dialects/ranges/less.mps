NAME ranges
OBJSENSE MAXIMISE
ROWS
 N gain
 L few
 E even
 G most
COLUMNS
 m 'MARKER' 'INTORG'
 a gain 3 few 1
 a even 1
 b gain 2.5 few 1
 b even -1 most 1
 m 'MARKER' 'INTEND'
 c gain -1 most 1
RANGES
 g few -5 even -3
RHS
 r gain -7
 r few 6 even 1
 r most -4
BOUNDS
 UP b a 10
 UP b b 8
 UP b c 2.5
ENDATA
