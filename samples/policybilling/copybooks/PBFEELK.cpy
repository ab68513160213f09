      *    PBFEELK - PARAMETERS OF FEE ROUTINE PBFEE01 (BATCH, ON-LINE)
       01  FL-FEE-PARMS.
           05  FL-FEE-TYPE                 PIC X(02).
               88  FL-LATE                         VALUE 'LT'.
               88  FL-NSF                          VALUE 'NS'.
               88  FL-REINSTATE                    VALUE 'RI'.
               88  FL-INSTALMENT                   VALUE 'IN'.
           05  FL-STATE                    PIC X(02).
           05  FL-PAY-PLAN                 PIC X(01).
           05  FL-BILL-METHOD              PIC X(01).
           05  FL-DAYS-LATE                PIC S9(05)    COMP-3.
           05  FL-AMOUNT                   PIC S9(07)V99 COMP-3.
           05  FL-PRIOR-COUNT              PIC 9(02).
           05  FL-YEARS-INSURED            PIC 9(02).
           05  FL-FEE                      PIC S9(05)V99 COMP-3.
           05  FL-WAIVED                   PIC X(01).
           05  FL-RETURN-CODE              PIC 9(02).
