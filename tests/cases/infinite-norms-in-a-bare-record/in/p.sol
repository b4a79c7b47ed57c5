[ inf 1 ]
