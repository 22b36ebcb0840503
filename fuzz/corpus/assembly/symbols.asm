        predef  math,logic
count   equ     fwd+2
x       set     1
x       set     x+1
        if      x eq 2
        db      count
        else
        db      0
        endif
        ifdef   count
        nop
        endif
fwd:    ret
fwd:    ret
        error   'user error'
        warning 'user warning'
        ifndef  nothing
        dw      fwd
        endif
