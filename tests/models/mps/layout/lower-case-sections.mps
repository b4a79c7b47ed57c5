*= name t
*= min obj: x
*= c1: x <= 0
*= x in [0, inf]
name t
rows
 N obj
 L c1
Columns
 x obj 1 c1 1
endata
