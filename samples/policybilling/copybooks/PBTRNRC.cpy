      *****************************************************************
      *  PBTRNRC - POLICY TRANSACTION FROM THE AGENCY ENTRY SYSTEM     *
      *****************************************************************
       01  TR-TRANS-REC.
           05  TR-TYPE                     PIC X(01).
               88  TR-NEW                          VALUE 'N'.
               88  TR-ENDORSE                      VALUE 'E'.
               88  TR-RENEW                        VALUE 'R'.
               88  TR-TYPE-OK                      VALUE 'N' 'E' 'R'.
           05  TR-POLICY-NO.
               10  TR-LINE-CODE            PIC X(02).
               10  TR-POLICY-SEQ           PIC X(08).
           05  TR-LAST-NAME                PIC X(20).
           05  TR-FIRST-NAME               PIC X(15).
           05  TR-BIRTH-DATE               PIC 9(08).
           05  TR-STREET                   PIC X(25).
           05  TR-CITY                     PIC X(18).
           05  TR-STATE                    PIC X(02).
           05  TR-ZIP                      PIC X(09).
           05  TR-AGENT-NO                 PIC 9(05).
           05  TR-TERRITORY                PIC 9(03).
           05  TR-EFF-DATE                 PIC 9(08).
           05  TR-ORIG-DATE                PIC 9(08).
           05  TR-PAY-PLAN                 PIC X(01).
           05  TR-BILL-METHOD              PIC X(01).
           05  TR-RISK-DATA                PIC X(30).
           05  TR-OTHER-POLICY             PIC X(10).
           05  TR-COVERAGE-CNT             PIC 9(02).
           05  TR-COVERAGE OCCURS 6 TIMES INDEXED BY TR-CVX.
               10  TR-COV-CODE             PIC X(03).
               10  TR-COV-LIMIT            PIC 9(07).
               10  TR-COV-DEDUCT           PIC 9(05).
