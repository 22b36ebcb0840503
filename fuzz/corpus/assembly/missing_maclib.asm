 maclib nosuch
 nop
