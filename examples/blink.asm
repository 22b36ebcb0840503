; blink.asm - toggle a lamp on an output port with a delay between.
; It holds two deliberate mistakes, to show how the window leads to them.
;
; Assemble with:  trident examples/blink.asm

        include ports.inc

delay   macro   count           ; about count*14 cycles
        local   wait
        mvi     b,count
wait:   dcr     b
        jnz     wait
        endm

        org     0100h
start:  mvi     a,0
loop:   xri     ledbit          ; toggle the lamp
        out     ledport
        delay   300             ; too many for one byte
        mov     a,q             ; a typo: there is no register q
        jmp     loop

        end     start
