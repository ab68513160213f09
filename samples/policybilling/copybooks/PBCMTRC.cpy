      *    PBCMTRC - COMMISSION TRANSACTION, WRITTEN BY BILLING AND
      *              CANCELLATION, READ BY THE COMMISSION RUN
       01  :TAG:-COMM-REC.
           05  :TAG:-AGENT-NO              PIC 9(05).
           05  :TAG:-POLICY-NO             PIC X(10).
           05  :TAG:-TYPE                  PIC X(02).
               88  :TAG:-NEW-BUSINESS              VALUE 'NB'.
               88  :TAG:-RENEWAL                   VALUE 'RN'.
               88  :TAG:-CHARGE-BACK               VALUE 'CB'.
           05  :TAG:-AMOUNT                PIC S9(07)V99 COMP-3.
           05  :TAG:-POST-DATE             PIC 9(08).
