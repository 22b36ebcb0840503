 org 0ffffh
 dw 1
