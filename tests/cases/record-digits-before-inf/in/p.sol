[ 1inf 2 ]
