*= name t
*= min cost: 7 x
*= c1: x <= 0
*= x in [0, inf]
*= told 10: the row "obj" of kind N is not the objective and has no effect
NAME t
OBJNAME
 cost
ROWS
 N obj
 N cost
 L c1
COLUMNS
 x obj 1 cost 7
 x c1 1
ENDATA
