        .zilog
        .z180
        org     0
loop:   ld      a,(ix+5)
        ld      (iy-3),b
        jr      nz,loop
        add     hl,de
        djnz    loop
        ex      de,hl
        bit     3,a
        set     3,(hl)
        mlt     bc
        in0     a,(10h)
        .intel
        mvi     a,5
        lxi     h,loop
