       IDENTIFICATION DIVISION.
       PROGRAM-ID.    PBCLM01.
       AUTHOR.        D LINDQVIST.
       DATE-WRITTEN.  1999-09-06.
      ******************************************************************
      * CLAIMS ADJUDICATION.                                           *
      * READS THE DAY'S CLAIMS, CHECKS THE COVERAGE, REFERS DOUBTFUL   *
      * CLAIMS, APPLIES DEDUCTIBLE, DEPRECIATION, COINSURANCE, LIMIT   *
      * AND PAYS OR DENIES. RESERVES STAND IN A RELATIVE FILE, ONE     *
      * RECORD FOR EACH CAUSE OF LOSS.                                 *
      * 1999-09 DL  FIRST VERSION                                      *
      * 2004-05 DL  WIND AND HAIL DEDUCTIBLE AS A PERCENTAGE           *
      * 2011-09 DL  DISAPPEARING DEDUCTIBLE FOR CLAIM FREE DRIVERS     *
      ******************************************************************
       ENVIRONMENT DIVISION.
       INPUT-OUTPUT SECTION.
       FILE-CONTROL.
           SELECT CLAIM-IN       ASSIGN TO CLAIMIN
               FILE STATUS IS WS-IN-STATUS.
           SELECT CLAIM-MASTER   ASSIGN TO CLMMAST
               ORGANIZATION IS INDEXED
               ACCESS MODE IS RANDOM
               RECORD KEY IS CM-CLAIM-NO
               FILE STATUS IS WS-CLM-STATUS.
           SELECT POLICY-MASTER  ASSIGN TO POLMAST
               ORGANIZATION IS INDEXED
               ACCESS MODE IS RANDOM
               RECORD KEY IS PM-POLICY-NO
               FILE STATUS IS WS-POL-STATUS.
           SELECT RESERVE-FILE   ASSIGN TO RESVFILE
               ORGANIZATION IS RELATIVE
               ACCESS MODE IS RANDOM
               RELATIVE KEY IS WS-RESERVE-SLOT
               FILE STATUS IS WS-RSV-STATUS.
           SELECT CLAIM-REPORT   ASSIGN TO CLMRPT
               FILE STATUS IS WS-RPT-STATUS.
       DATA DIVISION.
       FILE SECTION.
       FD  CLAIM-IN.
       COPY PBCLMRC REPLACING ==:TAG:== BY ==CI==.
       FD  CLAIM-MASTER.
       COPY PBCLMRC REPLACING ==:TAG:== BY ==CM==.
       FD  POLICY-MASTER.
       COPY PBPOLMS REPLACING ==:TAG:== BY ==PM==.
       FD  RESERVE-FILE.
       01  RS-RESERVE-REC.
           05  RS-CAUSE-CODE           PIC 9(02).
           05  RS-OPEN-COUNT           PIC S9(05)    COMP.
           05  RS-RESERVED             PIC S9(09)V99 COMP-3.
           05  RS-PAID                 PIC S9(09)V99 COMP-3.
       FD  CLAIM-REPORT.
       01  PRINT-LINE                  PIC X(132).
       WORKING-STORAGE SECTION.
       77  WS-RESERVE-SLOT             PIC 9(04)     COMP.
       77  WS-CLAIMS-READ              PIC S9(07)    COMP-3 VALUE ZERO.
       77  WS-TOTAL-PAID               PIC S9(09)V99 COMP-3 VALUE ZERO.
       01  WS-STATUS-CODES.
           05  WS-IN-STATUS            PIC X(02)  VALUE '00'.
               88  CLAIMS-DONE                    VALUE '10'.
           05  WS-CLM-STATUS           PIC X(02)  VALUE '00'.
           05  WS-POL-STATUS           PIC X(02)  VALUE '00'.
           05  WS-RSV-STATUS           PIC X(02)  VALUE '00'.
           05  WS-RPT-STATUS           PIC X(02)  VALUE '00'.
       01  WS-WORK.
           05  WS-PAYABLE              PIC S9(07)V99 COMP-3.
           05  WS-DEDUCT               PIC S9(07)V99 COMP-3.
           05  WS-CREDIT               PIC S9(05)V99 COMP-3.
           05  WS-DEPREC-PCT           PIC S9V999    COMP-3.
           05  WS-ITEM-AGE             PIC S9(04)    COMP.
           05  WS-LOSS-YEAR            PIC 9(04).
           05  WS-REQUIRED             PIC S9(09)V99 COMP-3.
           05  WS-REPORT-DAYS          PIC S9(07)    COMP-3.
           05  WS-DAYS-IN-FORCE        PIC S9(07)    COMP-3.
           05  WS-FRAUD-POINTS         PIC S9(03)    COMP-3.
           05  WS-AUTHORITY            PIC S9(07)V99 COMP-3
                                                     VALUE 25000.00.
       01  WS-REASONS.
           05  FILLER  PIC X(26)  VALUE 'NPPOLICY NOT ON FILE      '.
           05  FILLER  PIC X(26)  VALUE 'OTLOSS OUTSIDE THE TERM   '.
           05  FILLER  PIC X(26)  VALUE 'LPPOLICY NOT IN FORCE     '.
           05  FILLER  PIC X(26)  VALUE 'NCCOVERAGE NOT PURCHASED  '.
           05  FILLER  PIC X(26)  VALUE 'LRREPORTED TOO LATE       '.
           05  FILLER  PIC X(26)  VALUE 'BDBELOW THE DEDUCTIBLE    '.
           05  FILLER  PIC X(26)  VALUE 'FRREFERRED - INVESTIGATION'.
           05  FILLER  PIC X(26)  VALUE 'AUREFERRED - AUTHORITY    '.
       01  WS-REASON-TABLE REDEFINES WS-REASONS.
           05  WS-REASON OCCURS 8 TIMES INDEXED BY WS-RX.
               10  WS-REASON-CODE      PIC X(02).
               10  WS-REASON-TEXT      PIC X(24).
       COPY PBCOVTB.
       COPY PBDATLK.
       COPY PBFSWRK REPLACING ==:PGM:== BY =='PBCLM01'==.
       COPY PBRPTHD REPLACING ==:TITLE:== BY =='CLAIMS REGISTER'==.
       01  WS-DETAIL-LINE.
           05  DT-CLAIM                PIC X(12).
           05  DT-POLICY               PIC X(12).
           05  DT-COVERAGE             PIC X(05).
           05  DT-CLAIMED              PIC ZZZZ,ZZ9.99.
           05  DT-DEDUCT               PIC ZZZZ,ZZ9.99.
           05  DT-DEPREC               PIC ZZZZ,ZZ9.99.
           05  DT-PAID                 PIC ZZZZ,ZZ9.99.
           05  FILLER                  PIC X(02)  VALUE SPACES.
           05  DT-STATUS               PIC X(03).
           05  DT-REASON               PIC X(24).
       PROCEDURE DIVISION.
       0000-MAIN.
           PERFORM 1000-OPEN-FILES.
           PERFORM 8000-READ-CLAIM.
           PERFORM UNTIL CLAIMS-DONE
               ADD 1 TO WS-CLAIMS-READ
               PERFORM 2000-ADJUDICATE THRU 2000-EXIT
               PERFORM 6000-UPDATE-RESERVE
               PERFORM 7000-WRITE-CLAIM
               PERFORM 8000-READ-CLAIM
           END-PERFORM.
           DISPLAY 'PBCLM01 CLAIMS ' WS-CLAIMS-READ
                   ' PAID ' WS-TOTAL-PAID.
           CLOSE CLAIM-IN CLAIM-MASTER POLICY-MASTER
                 RESERVE-FILE CLAIM-REPORT.
           STOP RUN.
       1000-OPEN-FILES.
           MOVE FUNCTION CURRENT-DATE (1:8) TO RH-RUN-DATE.
           MOVE 'OPEN' TO FS-OPERATION.
           OPEN INPUT CLAIM-IN POLICY-MASTER.
           IF WS-IN-STATUS NOT = '00' OR WS-POL-STATUS NOT = '00'
               MOVE 'CLM/POL' TO FS-FILE-NAME
               MOVE WS-POL-STATUS TO FS-STATUS
               GO TO 9900-ABEND
           END-IF.
           OPEN I-O CLAIM-MASTER.
           IF WS-CLM-STATUS = '35'
               OPEN OUTPUT CLAIM-MASTER
               CLOSE CLAIM-MASTER
               OPEN I-O CLAIM-MASTER
           END-IF.
           OPEN I-O RESERVE-FILE.
           IF WS-RSV-STATUS = '35'
               OPEN OUTPUT RESERVE-FILE
               CLOSE RESERVE-FILE
               OPEN I-O RESERVE-FILE
           END-IF.
           OPEN OUTPUT CLAIM-REPORT.
       2000-ADJUDICATE.
           MOVE CI-CLAIMED-AMT TO WS-PAYABLE.
           MOVE ZERO TO CI-DEDUCT-APPLIED CI-DEPRECIATION CI-PAID-AMT.
           MOVE 'O' TO CI-STATUS.
           MOVE SPACES TO CI-REASON.
           PERFORM 2100-IN-FORCE THRU 2100-EXIT.
           IF CI-DENIED
               GO TO 2000-EXIT
           END-IF.
           PERFORM 2200-FIND-COVERAGE.
           IF CI-DENIED
               GO TO 2000-EXIT
           END-IF.
           PERFORM 2300-LATE-REPORT.
           IF CI-DENIED
               GO TO 2000-EXIT
           END-IF.
           PERFORM 2400-FRAUD-REFERRAL.
           IF CI-REFERRED
               GO TO 2000-EXIT
           END-IF.
           PERFORM 3000-DEPRECIATION.
           PERFORM 3200-COINSURANCE.
           PERFORM 3400-DEDUCTIBLE THRU 3400-EXIT.
           PERFORM 3600-LIMIT-AND-AUTHORITY THRU 3600-EXIT.
       2000-EXIT.
           EXIT.
       2100-IN-FORCE.
           MOVE CI-POLICY-NO TO PM-POLICY-NO.
           READ POLICY-MASTER
               INVALID KEY
                   SET CI-DENIED TO TRUE
                   MOVE 'NP' TO CI-REASON
                   GO TO 2100-EXIT
           END-READ.
           IF CI-LOSS-DATE < PM-EFF-DATE
              OR CI-LOSS-DATE NOT < PM-EXP-DATE
               SET CI-DENIED TO TRUE
               MOVE 'OT' TO CI-REASON
               GO TO 2100-EXIT
           END-IF.
      *    A LOSS BEFORE THE LAPSE IS STILL COVERED
           IF (PM-LAPSED OR PM-CANCELLED)
              AND CI-LOSS-DATE NOT < PM-CANCEL-DATE
               SET CI-DENIED TO TRUE
               MOVE 'LP' TO CI-REASON
           END-IF.
       2100-EXIT.
           EXIT.
       2200-FIND-COVERAGE.
           SET PM-CVX TO 1.
           SEARCH PM-COVERAGE
               AT END
                   SET CI-DENIED TO TRUE
                   MOVE 'NC' TO CI-REASON
               WHEN PM-COV-CODE (PM-CVX) = CI-COV-CODE
                   CONTINUE
           END-SEARCH.
       2300-LATE-REPORT.
           SET DL-DAYS-BETWEEN TO TRUE.
           MOVE CI-LOSS-DATE   TO DL-DATE-1.
           MOVE CI-REPORT-DATE TO DL-DATE-2.
           CALL 'PBDATE1' USING DL-DATE-PARMS.
           MOVE DL-NUMBER TO WS-REPORT-DAYS.
           IF WS-REPORT-DAYS > 365 AND NOT CI-LIABILITY
               SET CI-DENIED TO TRUE
               MOVE 'LR' TO CI-REASON
           ELSE
               IF WS-REPORT-DAYS > 60
                   COMPUTE WS-PAYABLE ROUNDED = WS-PAYABLE * .90
               END-IF
           END-IF.
       2400-FRAUD-REFERRAL.
      *    POINTS FOR EARLY, LARGE AND UNREPORTED LOSSES; 50 REFERS
           MOVE ZERO TO WS-FRAUD-POINTS.
           MOVE PM-ORIG-DATE TO DL-DATE-1.
           MOVE CI-LOSS-DATE TO DL-DATE-2.
           CALL 'PBDATE1' USING DL-DATE-PARMS.
           MOVE DL-NUMBER TO WS-DAYS-IN-FORCE.
           EVALUATE TRUE ALSO TRUE
               WHEN WS-DAYS-IN-FORCE < 30 ALSO CI-THEFT OR CI-FIRE
                   ADD 40 TO WS-FRAUD-POINTS
               WHEN WS-DAYS-IN-FORCE < 30 ALSO ANY
                   ADD 25 TO WS-FRAUD-POINTS
               WHEN WS-DAYS-IN-FORCE < 90 ALSO CI-THEFT
                   ADD 20 TO WS-FRAUD-POINTS
           END-EVALUATE.
           IF CI-POLICE-REPORT NOT = 'Y' AND (CI-THEFT OR CI-VANDALISM)
               ADD 30 TO WS-FRAUD-POINTS
           END-IF.
           IF CI-CLAIMED-AMT > PM-COV-LIMIT (PM-CVX) * .95
               ADD 15 TO WS-FRAUD-POINTS
           END-IF.
           IF PM-IN-GRACE
               ADD 15 TO WS-FRAUD-POINTS
           END-IF.
           IF WS-FRAUD-POINTS NOT < 50
               SET CI-REFERRED TO TRUE
               MOVE 'FR' TO CI-REASON
           END-IF.
       3000-DEPRECIATION.
           MOVE ZERO TO WS-DEPREC-PCT.
           MOVE CI-LOSS-DATE (1:4) TO WS-LOSS-YEAR.
           EVALUATE TRUE
               WHEN PM-AUTO AND CI-THEFT
                   COMPUTE WS-ITEM-AGE = WS-LOSS-YEAR - PM-VEH-YEAR
                   COMPUTE WS-DEPREC-PCT = WS-ITEM-AGE * .070
               WHEN PM-HOME AND CI-WIND-HAIL
      *    A ROOF OF MORE THAN TEN YEARS IS PAID AT ITS ACTUAL VALUE
                   COMPUTE WS-ITEM-AGE = WS-LOSS-YEAR - PM-ROOF-YEAR
                   IF WS-ITEM-AGE > 10
                       COMPUTE WS-DEPREC-PCT = (WS-ITEM-AGE - 10) * .040
                   END-IF
               WHEN PM-RENTERS
                   MOVE .100 TO WS-DEPREC-PCT
           END-EVALUATE.
           IF WS-DEPREC-PCT > .600
               MOVE .600 TO WS-DEPREC-PCT
           END-IF.
           COMPUTE CI-DEPRECIATION ROUNDED = WS-PAYABLE * WS-DEPREC-PCT.
           SUBTRACT CI-DEPRECIATION FROM WS-PAYABLE.
       3200-COINSURANCE.
      *    INSURED FOR LESS THAN 80 PERCENT OF VALUE: PAID IN PROPORTION
           IF PM-HOME AND CI-COV-CODE = 'DWL'
               COMPUTE WS-REQUIRED = PM-HOME-VALUE * .80
               IF PM-DWELL-LIMIT < WS-REQUIRED
                   COMPUTE WS-PAYABLE ROUNDED =
                       WS-PAYABLE * PM-DWELL-LIMIT / WS-REQUIRED
               END-IF
           END-IF.
       3400-DEDUCTIBLE.
           IF CI-GLASS
               GO TO 3400-EXIT
           END-IF.
           SET CV-IX TO 1.
           SEARCH CV-ENTRY
               AT END
                   GO TO 3400-EXIT
               WHEN CV-LINE (CV-IX) = PM-LINE-CODE
                AND CV-CODE (CV-IX) = CI-COV-CODE
                   CONTINUE
           END-SEARCH.
           EVALUATE TRUE
               WHEN CV-DED-NONE (CV-IX)
                   GO TO 3400-EXIT
               WHEN CV-DED-PERCENT (CV-IX) AND CI-WIND-HAIL
                   COMPUTE WS-DEDUCT ROUNDED = PM-DWELL-LIMIT * .02
                   COMPUTE WS-DEDUCT = FUNCTION MAX
                       (WS-DEDUCT  PM-COV-DEDUCT (PM-CVX)  1000)
               WHEN OTHER
                   MOVE PM-COV-DEDUCT (PM-CVX) TO WS-DEDUCT
           END-EVALUATE.
           PERFORM 3500-DISAPPEARING-DEDUCTIBLE.
           IF WS-PAYABLE NOT > WS-DEDUCT
               SET CI-DENIED TO TRUE
               MOVE 'BD' TO CI-REASON
               MOVE ZERO TO WS-PAYABLE
           ELSE
               SUBTRACT WS-DEDUCT FROM WS-PAYABLE
           END-IF.
           MOVE WS-DEDUCT TO CI-DEDUCT-APPLIED.
       3400-EXIT.
           EXIT.
       3500-DISAPPEARING-DEDUCTIBLE.
      *    FIFTY OFF FOR EACH YEAR WITHOUT A CLAIM, 250 AT MOST
           IF PM-AUTO AND CI-CLAIM-FREE-YRS > ZERO
               COMPUTE WS-CREDIT = CI-CLAIM-FREE-YRS * 50.00
               IF WS-CREDIT > 250.00
                   MOVE 250.00 TO WS-CREDIT
               END-IF
               SUBTRACT WS-CREDIT FROM WS-DEDUCT
               IF WS-DEDUCT < ZERO
                   MOVE ZERO TO WS-DEDUCT
               END-IF
           END-IF.
       3600-LIMIT-AND-AUTHORITY.
           IF CI-DENIED
               GO TO 3600-EXIT
           END-IF.
           IF WS-PAYABLE > PM-COV-LIMIT (PM-CVX)
               MOVE PM-COV-LIMIT (PM-CVX) TO WS-PAYABLE
           END-IF.
      *    LIABILITY AND LARGE LOSSES ARE NEVER PAID BY THE SYSTEM
           IF CI-LIABILITY OR WS-PAYABLE > WS-AUTHORITY
               SET CI-REFERRED TO TRUE
               MOVE 'AU' TO CI-REASON
           ELSE
               SET CI-PAID TO TRUE
               MOVE WS-PAYABLE TO CI-PAID-AMT
               ADD WS-PAYABLE TO WS-TOTAL-PAID
           END-IF.
       3600-EXIT.
           EXIT.
       6000-UPDATE-RESERVE.
           MOVE CI-CAUSE-CODE TO WS-RESERVE-SLOT.
           READ RESERVE-FILE
               INVALID KEY
                   INITIALIZE RS-RESERVE-REC
                   MOVE CI-CAUSE-CODE TO RS-CAUSE-CODE
                   WRITE RS-RESERVE-REC
           END-READ.
           IF CI-PAID
               ADD CI-PAID-AMT TO RS-PAID
           ELSE
               IF CI-REFERRED
                   ADD 1 TO RS-OPEN-COUNT
                   ADD WS-PAYABLE TO RS-RESERVED
               END-IF
           END-IF.
           REWRITE RS-RESERVE-REC
               INVALID KEY
                   MOVE 'RESERVE'     TO FS-FILE-NAME
                   MOVE 'REWRITE'     TO FS-OPERATION
                   MOVE WS-RSV-STATUS TO FS-STATUS
                   GO TO 9900-ABEND
           END-REWRITE.
       7000-WRITE-CLAIM.
           MOVE CI-CLAIM-REC TO CM-CLAIM-REC.
           WRITE CM-CLAIM-REC
               INVALID KEY
                   REWRITE CM-CLAIM-REC
           END-WRITE.
           IF RH-LINE-CNT NOT < RH-MAX-LINES
               ADD 1 TO RH-PAGE-CNT
               MOVE RH-PAGE-CNT TO RH-PAGE-NO
               WRITE PRINT-LINE FROM RH-HEADING-1 AFTER ADVANCING PAGE
               MOVE 1 TO RH-LINE-CNT
           END-IF.
           MOVE CI-CLAIM-NO       TO DT-CLAIM.
           MOVE CI-POLICY-NO      TO DT-POLICY.
           MOVE CI-COV-CODE       TO DT-COVERAGE.
           MOVE CI-CLAIMED-AMT    TO DT-CLAIMED.
           MOVE CI-DEDUCT-APPLIED TO DT-DEDUCT.
           MOVE CI-DEPRECIATION   TO DT-DEPREC.
           MOVE CI-PAID-AMT       TO DT-PAID.
           MOVE CI-STATUS         TO DT-STATUS.
           MOVE SPACES            TO DT-REASON.
           SET WS-RX TO 1.
           SEARCH WS-REASON
               WHEN WS-REASON-CODE (WS-RX) = CI-REASON
                   MOVE WS-REASON-TEXT (WS-RX) TO DT-REASON
           END-SEARCH.
           WRITE PRINT-LINE FROM WS-DETAIL-LINE AFTER ADVANCING 1 LINE.
           ADD 1 TO RH-LINE-CNT.
       8000-READ-CLAIM.
           READ CLAIM-IN
               AT END
                   SET CLAIMS-DONE TO TRUE
           END-READ.
       COPY PBABEND.
