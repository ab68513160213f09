      *    PBCANRC - CANCELLATION REQUEST
       01  CR-CANCEL-REC.
           05  CR-POLICY-NO                PIC X(10).
           05  CR-CANCEL-DATE              PIC 9(08).
           05  CR-REASON                   PIC X(02).
               88  CR-NON-PAYMENT                  VALUE 'NP'.
               88  CR-INSURED-REQUEST              VALUE 'IR'.
               88  CR-UNDERWRITING                 VALUE 'UW'.
               88  CR-REWRITTEN                    VALUE 'RW'.
               88  CR-DECEASED                     VALUE 'DC'.
           05  CR-SOURCE                   PIC X(08).
