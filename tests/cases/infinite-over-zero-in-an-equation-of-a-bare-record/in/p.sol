[ -inf 1 ]
