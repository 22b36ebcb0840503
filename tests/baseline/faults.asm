; A source with faults of each kind: the listing and exit status keep them.
        org     10h
        mov     a,q
        mvi     a,300
        jmp     nowhere
        bogus   1,2
dup:    nop
dup:    nop
        db      'unterminated
        lxi     h,1/0
        ldir
        ld      a,(ix+5)
        jr      $+200
        end
