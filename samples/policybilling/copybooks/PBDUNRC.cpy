      *    PBDUNRC - DUNNING EXTRACT, ONE RECORD FOR EACH LETTER
       01  DN-DUNNING-REC.
           05  DN-POLICY-NO                PIC X(10).
           05  DN-LEVEL                    PIC 9(01).
               88  DN-REMINDER                     VALUE 1.
               88  DN-WARNING                      VALUE 2.
               88  DN-LAPSE-NOTICE                 VALUE 3.
           05  DN-FULL-NAME                PIC X(37).
           05  DN-STREET                   PIC X(25).
           05  DN-CITY                     PIC X(18).
           05  DN-STATE                    PIC X(02).
           05  DN-ZIP                      PIC X(09).
           05  DN-AGENT-NO                 PIC 9(05).
           05  DN-PAST-DUE                 PIC S9(07)V99 COMP-3.
           05  DN-FEES-DUE                 PIC S9(05)V99 COMP-3.
           05  DN-DUE-DATE                 PIC 9(08).
           05  DN-GRACE-END                PIC 9(08).
