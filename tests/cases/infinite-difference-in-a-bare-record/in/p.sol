[ inf -inf ]
