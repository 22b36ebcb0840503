 ds later
later:
 db 1
