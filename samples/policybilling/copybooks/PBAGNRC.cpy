      *****************************************************************
      *  PBAGNRC - AGENT MASTER (INDEXED, KEY = AGENT NUMBER)          *
      *****************************************************************
       01  AG-AGENT-REC.
           05  AG-AGENT-NO                 PIC 9(05).
           05  AG-NAME                     PIC X(30).
           05  AG-PHONE                    PIC X(10).
           05  AG-STATUS                   PIC X(01).
               88  AG-ACTIVE                       VALUE 'A'.
               88  AG-SUSPENDED                    VALUE 'S'.
               88  AG-TERMINATED                   VALUE 'T'.
           05  AG-CONTRACT-LEVEL           PIC X(01).
               88  AG-STANDARD                     VALUE 'S'.
               88  AG-PREFERRED                    VALUE 'P'.
               88  AG-ELITE                        VALUE 'E'.
           05  AG-LICENSE-EXP              PIC 9(08).
           05  AG-LOSS-RATIO               PIC S9V999    COMP-3.
           05  AG-YTD-PREMIUM              PIC S9(09)V99 COMP-3.
           05  AG-YTD-COMMISSION           PIC S9(07)V99 COMP-3.
           05  AG-DEBIT-BALANCE            PIC S9(07)V99 COMP-3.
           05  FILLER                      PIC X(16).
