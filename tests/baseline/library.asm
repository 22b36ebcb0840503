; Include files, a macro library, conditionals and every data directive.
        maclib  mlib
        include defs.inc
        org     start
entry:  lxi     h,table
        mvi     b,count
again:  mov     a,m
        ora     a
        jz      done
        outc
        inx     h
        dcr     b
        jnz     again
done:   hlt
table:  db      'Text',0,"quoted",-1,low entry,high entry
words:  dw      entry,done,$,'AB'
        dc      'end'
        ds      4
space:  ds      count/2
        if      debug
        db      0deh,0adh
        else
        db      0beh,0efh
        endif
        ifdef   undefined
        db      1
        endif
        rept    2
        dw      $-entry
        endm
        org     0f000h
        db      1,2,3
        end     entry
