      *    PBRPTHD - STANDARD REPORT HEADING AND PAGE CONTROL
       01  RH-PAGE-CONTROL.
           05  RH-LINE-CNT                 PIC S9(03) COMP-3 VALUE 99.
           05  RH-MAX-LINES                PIC S9(03) COMP-3 VALUE 54.
           05  RH-PAGE-CNT                 PIC S9(05) COMP-3 VALUE 0.
       01  RH-HEADING-1.
           05  FILLER                      PIC X(22)
                                           VALUE 'BRINDLEMOOR MUTUAL'.
           05  FILLER                      PIC X(36)  VALUE :TITLE:.
           05  FILLER                      PIC X(05)  VALUE 'DATE '.
           05  RH-RUN-DATE                 PIC 9999/99/99.
           05  FILLER                      PIC X(07)  VALUE '  PAGE '.
           05  RH-PAGE-NO                  PIC ZZZZ9.
