[ 1 ix ]
