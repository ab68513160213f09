      *    PBDATLK - PARAMETERS OF DATE ROUTINE PBDATE1
       01  DL-DATE-PARMS.
           05  DL-FUNCTION                 PIC 9(02).
               88  DL-VALIDATE                     VALUE 1.
               88  DL-ADD-DAYS                     VALUE 2.
               88  DL-DAYS-BETWEEN                 VALUE 3.
               88  DL-ADD-MONTHS                   VALUE 4.
               88  DL-AGE-YEARS                    VALUE 5.
               88  DL-LONG-FORM                    VALUE 6.
           05  DL-DATE-1                   PIC 9(08).
           05  DL-DATE-2                   PIC 9(08).
           05  DL-NUMBER                   PIC S9(07)    COMP-3.
           05  DL-LONG-DATE                PIC X(20).
           05  DL-RETURN-CODE              PIC 9(02).
               88  DL-OK                           VALUE 0.
