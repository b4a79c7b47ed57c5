[ 1einf 2 ]
