      *    PBCOMMA - COMMUNICATION AREA OF TRANSACTION PBI1
       01  CA-COMMAREA.
           05  CA-POLICY-NO                PIC X(10).
           05  CA-STATE-FLAG               PIC X(01).
               88  CA-FIRST-TIME                   VALUE 'F'.
               88  CA-POLICY-SHOWN                 VALUE 'S'.
               88  CA-CONFIRM-PAYMENT              VALUE 'C'.
           05  CA-PAY-AMOUNT               PIC S9(07)V99 COMP-3.
           05  CA-TOTAL-DUE                PIC S9(07)V99 COMP-3.
