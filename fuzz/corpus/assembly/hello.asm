; hello.asm - print a greeting under CP/M, then return to the system.
;
; Assemble with:  trident-asm examples/hello.asm --listing hello.ls

bdos    equ     0005h           ; CP/M system entry
wboot   equ     0000h           ; warm boot
conout  equ     2               ; console output, character in e
prints  equ     9               ; print string up to '$', address in de

        org     0100h           ; transient program area

start:  lxi     sp,stack        ; a stack of our own
        lxi     d,greeting
        mvi     c,prints
        call    bdos
        mvi     b,3             ; three stars
stars:  mvi     e,'*'
        mvi     c,conout
        push    b
        call    bdos
        pop     b
        dcr     b
        jnz     stars
        jmp     wboot

greeting:
        db      'Hello from Trident!',13,10,'$'

        ds      32              ; stack space
stack:
        end     start
