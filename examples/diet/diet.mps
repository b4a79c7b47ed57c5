* Problem:    diet
* Class:      LP
* Rows:       10
* Columns:    20
* Non-zeros:  179
* Format:     Free MPS
*
NAME diet
ROWS
 E nb[Calorie]
 E nb[Protein]
 E nb[Calcium]
 E nb[Iron]
 E nb[Vitamin-A]
 E nb[Vitamin-B1]
 E nb[Vitamin-B2]
 E nb[Niacin]
 E nb[Vitamin-C]
 N cost
COLUMNS
 x[Wheat] nb[Calorie] 44.7 nb[Protein] 1411
 x[Wheat] nb[Calcium] 2 nb[Iron] 365
 x[Wheat] nb[Vitamin-B1] 55.4 nb[Vitamin-B2] 33.3
 x[Wheat] nb[Niacin] 441 cost 1
 x[Cornmeal] nb[Calorie] 36 nb[Protein] 897
 x[Cornmeal] nb[Calcium] 1.7 nb[Iron] 99
 x[Cornmeal] nb[Vitamin-A] 30.9 nb[Vitamin-B1] 17.4
 x[Cornmeal] nb[Vitamin-B2] 7.9 nb[Niacin] 106
 x[Cornmeal] cost 1
 x[Cannedmilk] nb[Calorie] 8.4 nb[Protein] 422
 x[Cannedmilk] nb[Calcium] 15.1 nb[Iron] 9
 x[Cannedmilk] nb[Vitamin-A] 26 nb[Vitamin-B1] 3
 x[Cannedmilk] nb[Vitamin-B2] 23.5 nb[Niacin] 11
 x[Cannedmilk] nb[Vitamin-C] 60 cost 1
 x[Margarine] nb[Calorie] 20.6 nb[Protein] 17
 x[Margarine] nb[Calcium] 0.6 nb[Iron] 6
 x[Margarine] nb[Vitamin-A] 55.8 nb[Vitamin-B1] 0.2
 x[Margarine] cost 1
 x[Cheese] nb[Calorie] 7.4 nb[Protein] 448
 x[Cheese] nb[Calcium] 16.4 nb[Iron] 19
 x[Cheese] nb[Vitamin-A] 28.1 nb[Vitamin-B1] 0.8
 x[Cheese] nb[Vitamin-B2] 10.3 nb[Niacin] 4
 x[Cheese] cost 1
 x[Peanut-B] nb[Calorie] 15.7 nb[Protein] 661
 x[Peanut-B] nb[Calcium] 1 nb[Iron] 48
 x[Peanut-B] nb[Vitamin-B1] 9.6 nb[Vitamin-B2] 8.1
 x[Peanut-B] nb[Niacin] 471 cost 1
 x[Lard] nb[Calorie] 41.7 nb[Vitamin-A] 0.2
 x[Lard] nb[Vitamin-B2] 0.5 nb[Niacin] 5
 x[Lard] cost 1
 x[Liver] nb[Calorie] 2.2 nb[Protein] 333
 x[Liver] nb[Calcium] 0.2 nb[Iron] 139
 x[Liver] nb[Vitamin-A] 169.2 nb[Vitamin-B1] 6.4
 x[Liver] nb[Vitamin-B2] 50.8 nb[Niacin] 316
 x[Liver] nb[Vitamin-C] 525 cost 1
 x[Porkroast] nb[Calorie] 4.4 nb[Protein] 249
 x[Porkroast] nb[Calcium] 0.3 nb[Iron] 37
 x[Porkroast] nb[Vitamin-B1] 18.2 nb[Vitamin-B2] 3.6
 x[Porkroast] nb[Niacin] 79 cost 1
 x[Salmon] nb[Calorie] 5.8 nb[Protein] 705
 x[Salmon] nb[Calcium] 6.8 nb[Iron] 45
 x[Salmon] nb[Vitamin-A] 3.5 nb[Vitamin-B1] 1
 x[Salmon] nb[Vitamin-B2] 4.9 nb[Niacin] 209
 x[Salmon] cost 1
 x[Greenbeans] nb[Calorie] 2.4 nb[Protein] 138
 x[Greenbeans] nb[Calcium] 3.7 nb[Iron] 80
 x[Greenbeans] nb[Vitamin-A] 69 nb[Vitamin-B1] 4.3
 x[Greenbeans] nb[Vitamin-B2] 5.8 nb[Niacin] 37
 x[Greenbeans] nb[Vitamin-C] 862 cost 1
 x[Cabbage] nb[Calorie] 2.6 nb[Protein] 125
 x[Cabbage] nb[Calcium] 4 nb[Iron] 36
 x[Cabbage] nb[Vitamin-A] 7.2 nb[Vitamin-B1] 9
 x[Cabbage] nb[Vitamin-B2] 4.5 nb[Niacin] 26
 x[Cabbage] nb[Vitamin-C] 5369 cost 1
 x[Onions] nb[Calorie] 5.8 nb[Protein] 166
 x[Onions] nb[Calcium] 3.8 nb[Iron] 59
 x[Onions] nb[Vitamin-A] 16.6 nb[Vitamin-B1] 4.7
 x[Onions] nb[Vitamin-B2] 5.9 nb[Niacin] 21
 x[Onions] nb[Vitamin-C] 1184 cost 1
 x[Potatoes] nb[Calorie] 14.3 nb[Protein] 336
 x[Potatoes] nb[Calcium] 1.8 nb[Iron] 118
 x[Potatoes] nb[Vitamin-A] 6.7 nb[Vitamin-B1] 29.4
 x[Potatoes] nb[Vitamin-B2] 7.1 nb[Niacin] 198
 x[Potatoes] nb[Vitamin-C] 2522 cost 1
 x[Spinach] nb[Calorie] 1.1 nb[Protein] 106
 x[Spinach] nb[Iron] 138 nb[Vitamin-A] 918.4
 x[Spinach] nb[Vitamin-B1] 5.7 nb[Vitamin-B2] 13.8
 x[Spinach] nb[Niacin] 33 nb[Vitamin-C] 2755
 x[Spinach] cost 1
 x[Sweet-Pot] nb[Calorie] 9.6 nb[Protein] 138
 x[Sweet-Pot] nb[Calcium] 2.7 nb[Iron] 54
 x[Sweet-Pot] nb[Vitamin-A] 290.7 nb[Vitamin-B1] 8.4
 x[Sweet-Pot] nb[Vitamin-B2] 5.4 nb[Niacin] 83
 x[Sweet-Pot] nb[Vitamin-C] 1912 cost 1
 x[Peaches] nb[Calorie] 8.5 nb[Protein] 87
 x[Peaches] nb[Calcium] 1.7 nb[Iron] 173
 x[Peaches] nb[Vitamin-A] 86.8 nb[Vitamin-B1] 1.2
 x[Peaches] nb[Vitamin-B2] 4.3 nb[Niacin] 55
 x[Peaches] nb[Vitamin-C] 57 cost 1
 x[Prunes] nb[Calorie] 12.8 nb[Protein] 99
 x[Prunes] nb[Calcium] 2.5 nb[Iron] 154
 x[Prunes] nb[Vitamin-A] 85.7 nb[Vitamin-B1] 3.9
 x[Prunes] nb[Vitamin-B2] 4.3 nb[Niacin] 65
 x[Prunes] nb[Vitamin-C] 257 cost 1
 x[Limabeans] nb[Calorie] 17.4 nb[Protein] 1055
 x[Limabeans] nb[Calcium] 3.7 nb[Iron] 459
 x[Limabeans] nb[Vitamin-A] 5.1 nb[Vitamin-B1] 26.9
 x[Limabeans] nb[Vitamin-B2] 38.2 nb[Niacin] 93
 x[Limabeans] cost 1
 x[Navybeans] nb[Calorie] 26.9 nb[Protein] 1691
 x[Navybeans] nb[Calcium] 11.4 nb[Iron] 792
 x[Navybeans] nb[Vitamin-B1] 38.4 nb[Vitamin-B2] 24.6
 x[Navybeans] nb[Niacin] 217 cost 1
RHS
 RHS1 nb[Calorie] 3 nb[Protein] 70
 RHS1 nb[Calcium] 0.8 nb[Iron] 12
 RHS1 nb[Vitamin-A] 5 nb[Vitamin-B1] 1.8
 RHS1 nb[Vitamin-B2] 2.7 nb[Niacin] 18
 RHS1 nb[Vitamin-C] 75
ENDATA
