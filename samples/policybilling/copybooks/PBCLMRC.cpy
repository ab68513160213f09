      *****************************************************************
      *  PBCLMRC - CLAIM RECORD, INTAKE FILE AND CLAIM MASTER          *
      *****************************************************************
       01  :TAG:-CLAIM-REC.
           05  :TAG:-CLAIM-NO              PIC X(10).
           05  :TAG:-POLICY-NO             PIC X(10).
           05  :TAG:-COV-CODE              PIC X(03).
           05  :TAG:-CAUSE-CODE            PIC 9(02).
               88  :TAG:-COLLISION                 VALUE 01.
               88  :TAG:-THEFT                     VALUE 02.
               88  :TAG:-GLASS                     VALUE 03.
               88  :TAG:-FIRE                      VALUE 04.
               88  :TAG:-WIND-HAIL                 VALUE 05.
               88  :TAG:-WATER                     VALUE 06.
               88  :TAG:-LIABILITY                 VALUE 07.
               88  :TAG:-VANDALISM                 VALUE 08.
           05  :TAG:-LOSS-DATE             PIC 9(08).
           05  :TAG:-REPORT-DATE           PIC 9(08).
           05  :TAG:-CLAIMED-AMT           PIC 9(07)V99.
           05  :TAG:-POLICE-REPORT         PIC X(01).
           05  :TAG:-CLAIM-FREE-YRS        PIC 9(02).
           05  :TAG:-RESULT.
               10  :TAG:-STATUS            PIC X(01).
                   88  :TAG:-PAID                  VALUE 'P'.
                   88  :TAG:-DENIED                VALUE 'D'.
                   88  :TAG:-REFERRED              VALUE 'R'.
                   88  :TAG:-OPEN                  VALUE 'O'.
               10  :TAG:-REASON            PIC X(02).
               10  :TAG:-DEDUCT-APPLIED    PIC S9(07)V99 COMP-3.
               10  :TAG:-DEPRECIATION      PIC S9(07)V99 COMP-3.
               10  :TAG:-PAID-AMT          PIC S9(07)V99 COMP-3.
