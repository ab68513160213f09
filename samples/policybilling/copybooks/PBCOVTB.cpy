      *****************************************************************
      *  PBCOVTB - COVERAGE TABLE: LINE, CODE, SHARE OF BASE PREMIUM,  *
      *            KIND OF DEDUCTIBLE (N NONE, F FLAT, P PERCENT)      *
      *****************************************************************
       01  CV-TABLE-VALUES.
           05  FILLER                 PIC X(09)  VALUE 'PABI 450N'.
           05  FILLER                 PIC X(09)  VALUE 'PAPD 200N'.
           05  FILLER                 PIC X(09)  VALUE 'PACOL240F'.
           05  FILLER                 PIC X(09)  VALUE 'PACMP110F'.
           05  FILLER                 PIC X(09)  VALUE 'PAUM 060N'.
           05  FILLER                 PIC X(09)  VALUE 'PAMED040N'.
           05  FILLER                 PIC X(09)  VALUE 'HODWL700F'.
           05  FILLER                 PIC X(09)  VALUE 'HOWND120P'.
           05  FILLER                 PIC X(09)  VALUE 'HOLIA180N'.
           05  FILLER                 PIC X(09)  VALUE 'RNPRP760F'.
           05  FILLER                 PIC X(09)  VALUE 'RNLIA240N'.
       01  CV-TABLE REDEFINES CV-TABLE-VALUES.
           05  CV-ENTRY OCCURS 11 TIMES INDEXED BY CV-IX.
               10  CV-LINE            PIC X(02).
               10  CV-CODE            PIC X(03).
               10  CV-SHARE           PIC V999.
               10  CV-DED-KIND        PIC X(01).
                   88  CV-DED-NONE               VALUE 'N'.
                   88  CV-DED-FLAT               VALUE 'F'.
                   88  CV-DED-PERCENT            VALUE 'P'.
