; Z180 and Z80 instructions in both notations, with symbols of both cases.
        z180
        org     8000h
Start:  mlt     b
        tst     a
        in0     a,10h
        out0    11h,a
        slp
        .zilog
        ld      a,(iy-2)
        ld      (ix+127),0ffh
        jr      c,Start
        djnz    Start
        im      2
        ex      af,af'
        .intel
start:  lxi     ix,1234h
        ret
        end     Start
