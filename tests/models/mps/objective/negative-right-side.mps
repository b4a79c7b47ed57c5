*= name t
*= min obj: x + 5.25
*= c1: x <= 0
*= x in [0, inf]
*= told 13: the right side of the objective row "obj" makes the constant 5.25
NAME t
ROWS
 N obj
 L c1
COLUMNS
 x obj 1 c1 1
RHS
 r obj -5.25
ENDATA
