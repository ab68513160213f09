      *    SQLCA - SQL COMMUNICATION AREA
       01  SQLCA.
           05  SQLCAID                     PIC X(8).
           05  SQLCABC                     PIC S9(9) COMP.
           05  SQLCODE                     PIC S9(9) COMP.
           05  SQLERRM.
               49  SQLERRML                PIC S9(4) COMP.
               49  SQLERRMC                PIC X(70).
           05  SQLERRP                     PIC X(8).
           05  SQLERRD                     PIC S9(9) COMP
                                           OCCURS 6 TIMES.
           05  SQLWARN.
               10  SQLWARN0                PIC X(1).
               10  SQLWARN1                PIC X(1).
               10  FILLER                  PIC X(9).
           05  SQLSTATE                    PIC X(5).
