      *    PBFSWRK - WORK FIELDS OF THE COMMON ABEND PARAGRAPH (PBABEND)
       01  FS-WORK.
           05  FS-PROGRAM                  PIC X(08)  VALUE :PGM:.
           05  FS-FILE-NAME                PIC X(08)  VALUE SPACES.
           05  FS-OPERATION                PIC X(08)  VALUE SPACES.
           05  FS-STATUS                   PIC X(02)  VALUE '00'.
