 include prog.asm
 nop
