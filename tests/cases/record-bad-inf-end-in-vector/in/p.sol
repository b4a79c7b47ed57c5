[ 1 ino ]
