grow	macro	a
	grow	a+a
	endm
	grow	1
	end
