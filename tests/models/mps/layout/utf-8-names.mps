*= name t
*= min obj: x
*= größe: x <= 0
*= x in [0, inf]
NAME t
ROWS
 N obj
 L größe
COLUMNS
 x obj 1 größe 1
ENDATA
