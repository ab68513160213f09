      *****************************************************************
      *  PBPOLMS - POLICY MASTER RECORD (INDEXED, KEY = POLICY NUMBER) *
      *  COPY PBPOLMS REPLACING ==:TAG:== BY ==XX==.                   *
      *  1994-03 MO  FIRST VERSION                                     *
      *  1998-10 MO  ALL DATES WIDENED TO CCYYMMDD                     *
      *  2016-05 PA  CANCEL REASON ADDED OUT OF FILLER                 *
      *****************************************************************
       01  :TAG:-POLICY-REC.
           05  :TAG:-POLICY-NO.
               10  :TAG:-LINE-CODE         PIC X(02).
                   88  :TAG:-AUTO                  VALUE 'PA'.
                   88  :TAG:-HOME                  VALUE 'HO'.
                   88  :TAG:-RENTERS               VALUE 'RN'.
               10  :TAG:-POLICY-SEQ        PIC 9(08).
           05  :TAG:-STATUS                PIC X(01).
               88  :TAG:-ACTIVE                    VALUE 'A'.
               88  :TAG:-IN-GRACE                  VALUE 'G'.
               88  :TAG:-LAPSED                    VALUE 'L'.
               88  :TAG:-CANCELLED                 VALUE 'C'.
               88  :TAG:-EXPIRED                   VALUE 'X'.
               88  :TAG:-BILLABLE                  VALUE 'A' 'G'.
           05  :TAG:-INSURED.
               10  :TAG:-LAST-NAME         PIC X(20).
               10  :TAG:-FIRST-NAME        PIC X(15).
               10  :TAG:-BIRTH-DATE        PIC 9(08).
           05  :TAG:-MAIL-ADDRESS.
               10  :TAG:-STREET            PIC X(25).
               10  :TAG:-CITY              PIC X(18).
               10  :TAG:-STATE             PIC X(02).
               10  :TAG:-ZIP               PIC X(09).
           05  :TAG:-AGENT-NO              PIC 9(05).
           05  :TAG:-TERRITORY             PIC 9(03).
           05  :TAG:-EFF-DATE              PIC 9(08).
           05  :TAG:-EXP-DATE              PIC 9(08).
           05  :TAG:-ORIG-DATE             PIC 9(08).
           05  :TAG:-PAY-PLAN              PIC X(01).
               88  :TAG:-PLAN-ANNUAL               VALUE 'A'.
               88  :TAG:-PLAN-SEMI                 VALUE 'S'.
               88  :TAG:-PLAN-QUARTERLY            VALUE 'Q'.
               88  :TAG:-PLAN-MONTHLY              VALUE 'M'.
           05  :TAG:-BILL-METHOD           PIC X(01).
               88  :TAG:-BILL-DIRECT               VALUE 'D'.
               88  :TAG:-BILL-EFT                  VALUE 'E'.
               88  :TAG:-BILL-AGENCY               VALUE 'A'.
           05  :TAG:-RISK-DATA             PIC X(30).
           05  :TAG:-AUTO-RISK REDEFINES :TAG:-RISK-DATA.
               10  :TAG:-VEH-YEAR          PIC 9(04).
               10  :TAG:-VEH-SYMBOL        PIC 9(02).
               10  :TAG:-ANNUAL-MILES      PIC 9(05).
               10  :TAG:-VIOLATION-CNT     PIC 9(02).
               10  :TAG:-ACCIDENT-CNT      PIC 9(02).
               10  :TAG:-GOOD-STUDENT      PIC X(01).
               10  :TAG:-ANTI-THEFT        PIC X(01).
               10  FILLER                  PIC X(13).
           05  :TAG:-HOME-RISK REDEFINES :TAG:-RISK-DATA.
               10  :TAG:-DWELL-LIMIT       PIC 9(07).
               10  :TAG:-BUILD-YEAR        PIC 9(04).
               10  :TAG:-ROOF-YEAR         PIC 9(04).
               10  :TAG:-CONSTRUCTION      PIC X(01).
                   88  :TAG:-FRAME                 VALUE 'F'.
                   88  :TAG:-MASONRY               VALUE 'M'.
               10  :TAG:-PROT-CLASS        PIC 9(02).
               10  :TAG:-ALARM             PIC X(01).
               10  :TAG:-SPRINKLER         PIC X(01).
               10  :TAG:-HOME-VALUE        PIC 9(07).
               10  FILLER                  PIC X(03).
           05  :TAG:-COVERAGE-CNT          PIC S9(04)    COMP.
           05  :TAG:-COVERAGE OCCURS 6 TIMES
                                           INDEXED BY :TAG:-CVX.
               10  :TAG:-COV-CODE          PIC X(03).
               10  :TAG:-COV-LIMIT         PIC S9(07)    COMP-3.
               10  :TAG:-COV-DEDUCT        PIC S9(05)    COMP-3.
               10  :TAG:-COV-PREM          PIC S9(05)V99 COMP-3.
           05  :TAG:-PREMIUM-BLOCK.
               10  :TAG:-BASE-PREM         PIC S9(07)V99 COMP-3.
               10  :TAG:-SURCHARGE-AMT     PIC S9(07)V99 COMP-3.
               10  :TAG:-DISCOUNT-AMT      PIC S9(07)V99 COMP-3.
               10  :TAG:-TAX-AMT           PIC S9(07)V99 COMP-3.
               10  :TAG:-POLICY-FEE        PIC S9(07)V99 COMP-3.
               10  :TAG:-TOTAL-PREM        PIC S9(07)V99 COMP-3.
           05  :TAG:-BILLING-BLOCK.
               10  :TAG:-AMT-BILLED        PIC S9(07)V99 COMP-3.
               10  :TAG:-AMT-PAID          PIC S9(07)V99 COMP-3.
               10  :TAG:-PAST-DUE          PIC S9(07)V99 COMP-3.
               10  :TAG:-FEE-BALANCE       PIC S9(05)V99 COMP-3.
               10  :TAG:-LATE-COUNT        PIC 9(02).
               10  :TAG:-NSF-COUNT         PIC 9(02).
               10  :TAG:-LAST-INST-BILLED  PIC S9(04)    COMP.
               10  :TAG:-LAST-INST-LATE    PIC S9(04)    COMP.
               10  :TAG:-NEXT-DUE-DATE     PIC 9(08).
               10  :TAG:-CANCEL-DATE       PIC 9(08).
               10  :TAG:-DUNN-LEVEL        PIC 9(01).
           05  :TAG:-CANCEL-REASON         PIC X(02).
           05  FILLER                      PIC X(28).
