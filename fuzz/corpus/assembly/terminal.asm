 org fwd
fwd:
