push2   macro   r1,r2
        local   skip
        push    r1
        push    r2
skip:   nop
        endm
        push2   b,d
        push2   <h>,psw
        rept    3
        nop
        endm
        irp     x,<1,2,3>
        db      x
        endm
        irpc    c,ABC
        db      '&c'
        endm
deep    macro   n
        if      n gt 0
        deep    %n-1
        endif
        endm
        deep    5
pow     macro
        db      2^3
        exitm
        db      9
        endm
        pow
