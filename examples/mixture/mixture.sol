[ 400 0 ]        // 0.3 * 400 is 120 exactly, whatever binary arithmetic makes of it
[ 48.9 150.4 ]
[ 48.9 150.5 ]   // 120.02 units
