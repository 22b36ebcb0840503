a: nop ! b: nop ! ld a,1 ; c ! * d
	db 1,,2