      *    PBTAXLK - PARAMETERS OF TAX ROUTINE PBTAX01
       01  TL-TAX-PARMS.
           05  TL-STATE                    PIC X(02).
           05  TL-LINE                     PIC X(02).
           05  TL-INSURED-AGE              PIC 9(03).
           05  TL-PREMIUM                  PIC S9(07)V99 COMP-3.
           05  TL-TAX                      PIC S9(05)V99 COMP-3.
           05  TL-LEVY                     PIC S9(05)V99 COMP-3.
           05  TL-STAMP                    PIC S9(03)V99 COMP-3.
           05  TL-RETURN-CODE              PIC 9(02).
               88  TL-OK                           VALUE 0.
               88  TL-STATE-UNKNOWN                VALUE 10.
               88  TL-BAD-PREMIUM                  VALUE 20.
