[ 1 2 ] foo
