[ 1 0 ] | -1 | [ 1 ] | 0 | 0 | --help=0 --verb=0 --consistency=0 --eenum=1 --beta=20 --eprune=3 --btime=0 --etime=0 --deep=0 --collectLimit=100 --pair=1 --pairLimit=10 --sieve=0 --sample=0 --sampleLimit=1000 --scale=0 --translate=0 --reinsert=1 --variate=1 --rtime=0 --iters=0 --sol=1 --bench=0 --snorm=-1 --tnorm=-inf | 2.4.2
[ 1 0 ] | -1 | [ 1 ] | 0 | -1 | 
