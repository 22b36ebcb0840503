        org     100h
tbl:    db      'AB',0,1,2,3,4,5,6,7,8
        dm      'AB'
        dc      'AB'
        dz      "x\ty"
        dw      1234h,tbl,$
        ds      10
        i3es    1.5,-2.25e3
        i3ed_be 3.14159
        text    'hello'
        texz    "z"
        .ascis  'q'
        defb    low(tbl),high(tbl)
        end     tbl
