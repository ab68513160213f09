      *    PBPAYRC - PAYMENT FROM THE LOCK BOX, SORTED BY POLICY
       01  PY-PAYMENT-REC.
           05  PY-POLICY-NO                PIC X(10).
           05  PY-DATE                     PIC 9(08).
           05  PY-AMOUNT                   PIC 9(07)V99.
           05  PY-TYPE                     PIC X(01).
               88  PY-CHECK                        VALUE 'C'.
               88  PY-EFT                          VALUE 'E'.
               88  PY-NSF-REVERSAL                 VALUE 'N'.
           05  PY-REFERENCE                PIC X(12).
