       IDENTIFICATION DIVISION.
       PROGRAM-ID.    PBRATE01.
       AUTHOR.        M OKAFOR.
       DATE-WRITTEN.  1994-03-21.
      ******************************************************************
      * PREMIUM RATING.                                                *
      * READS THE TRANSACTIONS OF THE AGENCY ENTRY SYSTEM, EDITS THEM, *
      * RATES NEW BUSINESS, ENDORSEMENTS AND RENEWALS AND WRITES THE   *
      * POLICY MASTER. REJECTED TRANSACTIONS GO BACK TO THE AGENCY.    *
      *----------------------------------------------------------------*
      * 1994-03 MO  FIRST VERSION (AUTO)                               *
      * 1996-08 MO  HOMEOWNERS AND RENTERS                             *
      * 1998-10 MO  CENTURY IN ALL DATES                               *
      * 2003-02 DL  SENIOR AND LOYALTY DISCOUNTS, CAP OF 25 PERCENT    *
      * 2011-09 DL  ROOF AGE RULE AFTER THE HAIL YEAR                  *
      * 2018-06 PA  MILEAGE FACTOR, TERRITORY TABLE FROM A FILE        *
      ******************************************************************
       ENVIRONMENT DIVISION.
       INPUT-OUTPUT SECTION.
       FILE-CONTROL.
           SELECT TRANS-FILE     ASSIGN TO TRANSIN
               FILE STATUS IS WS-TRANS-STATUS.
           SELECT RATE-FILE      ASSIGN TO RATETAB
               FILE STATUS IS WS-RATE-STATUS.
           SELECT POLICY-MASTER  ASSIGN TO POLMAST
               ORGANIZATION IS INDEXED
               ACCESS MODE IS RANDOM
               RECORD KEY IS PM-POLICY-NO
               FILE STATUS IS WS-POLMAST-STATUS.
           SELECT REJECT-FILE    ASSIGN TO REJECTS
               FILE STATUS IS WS-REJECT-STATUS.
           SELECT WORKSHEET      ASSIGN TO RATERPT
               FILE STATUS IS WS-PRINT-STATUS.
       DATA DIVISION.
       FILE SECTION.
       FD  TRANS-FILE
           RECORDING MODE IS F.
       COPY PBTRNRC.
       FD  RATE-FILE
           RECORDING MODE IS F.
       01  RATE-REC.
           05  RATE-LINE               PIC X(02).
           05  RATE-TERRITORY          PIC 9(03).
           05  RATE-BASE               PIC 9(05)V99.
           05  RATE-FACTOR             PIC 9V9(04).
           05  RATE-MINIMUM            PIC 9(05)V99.
       FD  POLICY-MASTER.
       COPY PBPOLMS REPLACING ==:TAG:== BY ==PM==.
       FD  REJECT-FILE
           RECORDING MODE IS F.
       01  REJECT-REC.
           05  REJ-CODE                PIC X(04).
           05  REJ-TRANS               PIC X(266).
       FD  WORKSHEET.
       01  PRINT-LINE                  PIC X(132).
       WORKING-STORAGE SECTION.
       77  WS-TRANS-COUNT              PIC S9(07)    COMP-3 VALUE ZERO.
       77  WS-REJECT-COUNT             PIC S9(07)    COMP-3 VALUE ZERO.
       77  WS-RATED-COUNT              PIC S9(07)    COMP-3 VALUE ZERO.
       77  WS-MAX-RATES                PIC S9(04)    COMP   VALUE 300.
       01  WS-FILE-STATUS.
           05  WS-TRANS-STATUS         PIC X(02)  VALUE '00'.
           05  WS-RATE-STATUS          PIC X(02)  VALUE '00'.
           05  WS-POLMAST-STATUS       PIC X(02)  VALUE '00'.
               88  POLMAST-OK                     VALUE '00' '02'.
               88  POLMAST-NOT-FOUND              VALUE '23'.
               88  POLMAST-NO-FILE                VALUE '35'.
           05  WS-REJECT-STATUS        PIC X(02)  VALUE '00'.
           05  WS-PRINT-STATUS         PIC X(02)  VALUE '00'.
       01  WS-SWITCHES.
           05  WS-EOF-SW               PIC X(01)  VALUE 'N'.
               88  END-OF-TRANS                   VALUE 'Y'.
           05  WS-RATE-EOF-SW          PIC X(01)  VALUE 'N'.
               88  END-OF-RATES                   VALUE 'Y'.
           05  WS-FOUND-SW             PIC X(01)  VALUE 'N'.
               88  POLICY-FOUND                   VALUE 'Y'.
           05  WS-REJECT-CODE          PIC X(04)  VALUE SPACES.
               88  TRANS-IS-GOOD                  VALUE SPACES.
       01  WS-RATE-TABLE.
           05  WS-RATE-CNT             PIC S9(04) COMP   VALUE ZERO.
           05  WS-RATE-ENTRY OCCURS 1 TO 300 TIMES
                             DEPENDING ON WS-RATE-CNT
                             ASCENDING KEY IS RT-KEY
                             INDEXED BY RT-IX.
               10  RT-KEY.
                   15  RT-LINE         PIC X(02).
                   15  RT-TERRITORY    PIC 9(03).
               10  RT-BASE             PIC S9(05)V99 COMP-3.
               10  RT-FACTOR           PIC S9V9(04)  COMP-3.
               10  RT-MINIMUM          PIC S9(05)V99 COMP-3.
       01  WS-SEARCH-KEY.
           05  WS-SEARCH-LINE          PIC X(02).
           05  WS-SEARCH-TERR          PIC 9(03).
       01  WS-RATING-WORK.
           05  WS-AGE                  PIC 9(03).
           05  WS-YEARS-INSURED        PIC 9(03).
           05  WS-ROOF-AGE             PIC S9(04)    COMP.
           05  WS-BUILD-AGE            PIC S9(04)    COMP.
           05  WS-EFF-YEAR             PIC 9(04).
           05  WS-START-PREM           PIC S9(07)V99 COMP-3.
           05  WS-MIN-PREM             PIC S9(05)V99 COMP-3.
           05  WS-AGE-FACTOR           PIC S9V9(04)  COMP-3.
           05  WS-RISK-FACTOR          PIC S9(02)V9(04) COMP-3.
           05  WS-MILE-FACTOR          PIC S9V9(04)  COMP-3.
           05  WS-DED-FACTOR           PIC S9V9(04)  COMP-3.
           05  WS-SURCHARGE-PCT        PIC S9V999    COMP-3.
           05  WS-DISCOUNT-PCT         PIC S9V999    COMP-3.
           05  WS-MAX-DISCOUNT         PIC SV999     COMP-3 VALUE .250.
           05  WS-OFFENCE              PIC S9(04)    COMP.
           05  WS-NET-PREM             PIC S9(07)V99 COMP-3.
           05  WS-STD-FEE              PIC S9(03)V99 COMP-3 VALUE 25.00.
       COPY PBPOLMS REPLACING ==:TAG:== BY ==WP==.
       COPY PBCOVTB.
       COPY PBDATLK.
       COPY PBTAXLK.
       COPY PBFSWRK REPLACING ==:PGM:== BY =='PBRATE01'==.
       COPY PBRPTHD REPLACING ==:TITLE:==
                           BY =='PREMIUM RATING WORKSHEET'==.
       01  WS-COLUMN-LINE.
           05  FILLER                  PIC X(44)  VALUE
               'POLICY      INSURED               AGE   BASE'.
           05  FILLER                  PIC X(44)  VALUE
               '   SURCHARGE    DISCOUNT       TAX      FEE '.
           05  FILLER                  PIC X(12)  VALUE '       TOTAL'.
       01  WS-DETAIL-LINE.
           05  DT-POLICY               PIC X(10).
           05  FILLER                  PIC X(02)  VALUE SPACES.
           05  DT-NAME                 PIC X(20).
           05  FILLER                  PIC X(02)  VALUE SPACES.
           05  DT-AGE                  PIC ZZ9.
           05  DT-BASE                 PIC ZZZ,ZZ9.99.
           05  DT-SURCHARGE            PIC ZZZZ,ZZ9.99.
           05  DT-DISCOUNT             PIC ZZZZ,ZZ9.99-.
           05  DT-TAX                  PIC ZZ,ZZ9.99.
           05  DT-FEE                  PIC ZZ,ZZ9.99.
           05  DT-TOTAL                PIC ZZZZ,ZZ9.99.
       PROCEDURE DIVISION.
       0000-MAIN.
           PERFORM 1000-INITIALIZE THRU 1000-EXIT.
           PERFORM 2000-PROCESS-TRANS THRU 2000-EXIT
               UNTIL END-OF-TRANS.
           PERFORM 9000-TERMINATE.
           STOP RUN.

       1000-INITIALIZE.
           MOVE FUNCTION CURRENT-DATE (1:8) TO RH-RUN-DATE.
           MOVE 'OPEN' TO FS-OPERATION.
           OPEN INPUT TRANS-FILE.
           IF WS-TRANS-STATUS NOT = '00'
               MOVE 'TRANSIN' TO FS-FILE-NAME
               MOVE WS-TRANS-STATUS TO FS-STATUS
               GO TO 9900-ABEND
           END-IF.
           OPEN INPUT RATE-FILE.
           IF WS-RATE-STATUS NOT = '00'
               MOVE 'RATETAB' TO FS-FILE-NAME
               MOVE WS-RATE-STATUS TO FS-STATUS
               GO TO 9900-ABEND
           END-IF.
           OPEN I-O POLICY-MASTER.
      *    VERY FIRST RUN: THE MASTER DOES NOT YET EXIST
           IF POLMAST-NO-FILE
               OPEN OUTPUT POLICY-MASTER
               CLOSE POLICY-MASTER
               OPEN I-O POLICY-MASTER
           END-IF.
           IF NOT POLMAST-OK
               MOVE 'POLMAST' TO FS-FILE-NAME
               MOVE WS-POLMAST-STATUS TO FS-STATUS
               GO TO 9900-ABEND
           END-IF.
           OPEN OUTPUT REJECT-FILE WORKSHEET.
           PERFORM 1100-LOAD-RATES
               UNTIL END-OF-RATES OR WS-RATE-CNT NOT < WS-MAX-RATES.
           CLOSE RATE-FILE.
           PERFORM 8000-READ-TRANS.
       1000-EXIT.
           EXIT.

       1100-LOAD-RATES.
      *    THE FILE IS SORTED BY LINE AND TERRITORY
           READ RATE-FILE
               AT END
                   SET END-OF-RATES TO TRUE
               NOT AT END
                   ADD 1 TO WS-RATE-CNT
                   SET RT-IX TO WS-RATE-CNT
                   MOVE RATE-LINE      TO RT-LINE (RT-IX)
                   MOVE RATE-TERRITORY TO RT-TERRITORY (RT-IX)
                   MOVE RATE-BASE      TO RT-BASE (RT-IX)
                   MOVE RATE-FACTOR    TO RT-FACTOR (RT-IX)
                   MOVE RATE-MINIMUM   TO RT-MINIMUM (RT-IX)
           END-READ.

       2000-PROCESS-TRANS.
           ADD 1 TO WS-TRANS-COUNT.
           MOVE SPACES TO WS-REJECT-CODE.
           PERFORM 2100-EDIT-TRANS THRU 2100-EXIT.
           IF TRANS-IS-GOOD
               PERFORM 2200-READ-EXISTING
           END-IF.
           IF TRANS-IS-GOOD
               PERFORM 2300-BUILD-POLICY
               PERFORM 2400-ELIGIBILITY THRU 2400-EXIT
           END-IF.
           IF TRANS-IS-GOOD
               PERFORM 3000-RATE-POLICY THRU 3000-EXIT
           END-IF.
           IF TRANS-IS-GOOD
               PERFORM 4000-WRITE-MASTER
           END-IF.
           IF NOT TRANS-IS-GOOD
               ADD 1 TO WS-REJECT-COUNT
               MOVE WS-REJECT-CODE TO REJ-CODE
               MOVE TR-TRANS-REC TO REJ-TRANS
               WRITE REJECT-REC
           END-IF.
           PERFORM 8000-READ-TRANS.
       2000-EXIT.
           EXIT.

       2100-EDIT-TRANS.
           IF NOT TR-TYPE-OK
               MOVE 'E001' TO WS-REJECT-CODE
               GO TO 2100-EXIT
           END-IF.
           IF TR-LINE-CODE NOT = 'PA' AND 'HO' AND 'RN'
               MOVE 'E002' TO WS-REJECT-CODE
               GO TO 2100-EXIT
           END-IF.
           IF TR-POLICY-SEQ NOT NUMERIC OR TR-LAST-NAME = SPACES
               MOVE 'E003' TO WS-REJECT-CODE
               GO TO 2100-EXIT
           END-IF.
           SET DL-VALIDATE TO TRUE.
           MOVE TR-EFF-DATE TO DL-DATE-1.
           CALL 'PBDATE1' USING DL-DATE-PARMS.
           IF NOT DL-OK
               MOVE 'E004' TO WS-REJECT-CODE
               GO TO 2100-EXIT
           END-IF.
           SET DL-AGE-YEARS TO TRUE.
           MOVE TR-BIRTH-DATE TO DL-DATE-1.
           MOVE TR-EFF-DATE   TO DL-DATE-2.
           CALL 'PBDATE1' USING DL-DATE-PARMS.
           IF NOT DL-OK
               MOVE 'E005' TO WS-REJECT-CODE
               GO TO 2100-EXIT
           END-IF.
           MOVE DL-NUMBER TO WS-AGE.
           IF TR-COVERAGE-CNT < 1 OR > 6
               MOVE 'E006' TO WS-REJECT-CODE
               GO TO 2100-EXIT
           END-IF.
           PERFORM 2110-CHECK-COVERAGE
               VARYING TR-CVX FROM 1 BY 1
               UNTIL TR-CVX > TR-COVERAGE-CNT
                  OR NOT TRANS-IS-GOOD.
       2100-EXIT.
           EXIT.

       2110-CHECK-COVERAGE.
           SET CV-IX TO 1.
           SEARCH CV-ENTRY
               AT END
                   MOVE 'E007' TO WS-REJECT-CODE
               WHEN CV-LINE (CV-IX) = TR-LINE-CODE
                AND CV-CODE (CV-IX) = TR-COV-CODE (TR-CVX)
                   CONTINUE
           END-SEARCH.

       2200-READ-EXISTING.
           MOVE 'N' TO WS-FOUND-SW.
           MOVE TR-POLICY-NO TO PM-POLICY-NO.
           READ POLICY-MASTER
               INVALID KEY
                   CONTINUE
               NOT INVALID KEY
                   SET POLICY-FOUND TO TRUE
           END-READ.
           EVALUATE TRUE ALSO POLICY-FOUND
               WHEN TR-NEW ALSO TRUE
                   MOVE 'E010' TO WS-REJECT-CODE
               WHEN TR-ENDORSE ALSO FALSE
                   MOVE 'E011' TO WS-REJECT-CODE
               WHEN TR-RENEW ALSO FALSE
                   MOVE 'E012' TO WS-REJECT-CODE
               WHEN OTHER
                   CONTINUE
           END-EVALUATE.

       2300-BUILD-POLICY.
           IF TR-NEW
               INITIALIZE PM-POLICY-REC
               MOVE TR-POLICY-NO TO PM-POLICY-NO
               SET PM-ACTIVE TO TRUE
           END-IF.
           MOVE TR-LAST-NAME   TO PM-LAST-NAME.
           MOVE TR-FIRST-NAME  TO PM-FIRST-NAME.
           MOVE TR-BIRTH-DATE  TO PM-BIRTH-DATE.
           MOVE TR-STREET      TO PM-STREET.
           MOVE TR-CITY        TO PM-CITY.
           MOVE TR-STATE       TO PM-STATE.
           MOVE TR-ZIP         TO PM-ZIP.
           MOVE TR-AGENT-NO    TO PM-AGENT-NO.
           MOVE TR-TERRITORY   TO PM-TERRITORY.
           MOVE TR-PAY-PLAN    TO PM-PAY-PLAN.
           MOVE TR-BILL-METHOD TO PM-BILL-METHOD.
           MOVE TR-RISK-DATA   TO PM-RISK-DATA.
      *    AN ENDORSEMENT KEEPS THE TERM, A RENEWAL STARTS A NEW ONE
           IF NOT TR-ENDORSE
               MOVE TR-EFF-DATE  TO PM-EFF-DATE
               MOVE TR-ORIG-DATE TO PM-ORIG-DATE
               SET DL-ADD-MONTHS TO TRUE
               MOVE TR-EFF-DATE  TO DL-DATE-1
               MOVE 12           TO DL-NUMBER
               CALL 'PBDATE1' USING DL-DATE-PARMS
               MOVE DL-DATE-2    TO PM-EXP-DATE
               MOVE ZERO TO PM-AMT-BILLED  PM-AMT-PAID
                            PM-PAST-DUE    PM-FEE-BALANCE
                            PM-LAST-INST-BILLED
                            PM-LAST-INST-LATE
                            PM-DUNN-LEVEL
               MOVE TR-EFF-DATE  TO PM-NEXT-DUE-DATE
           END-IF.
           MOVE TR-COVERAGE-CNT TO PM-COVERAGE-CNT.
           PERFORM VARYING PM-CVX FROM 1 BY 1
                     UNTIL PM-CVX > PM-COVERAGE-CNT
               SET TR-CVX TO PM-CVX
               MOVE TR-COV-CODE   (TR-CVX) TO PM-COV-CODE   (PM-CVX)
               MOVE TR-COV-LIMIT  (TR-CVX) TO PM-COV-LIMIT  (PM-CVX)
               MOVE TR-COV-DEDUCT (TR-CVX) TO PM-COV-DEDUCT (PM-CVX)
           END-PERFORM.

       2400-ELIGIBILITY.
      *    UNDERWRITING RULES: WHO WE DO NOT WRITE AT ALL
           IF WS-AGE < 16
               MOVE 'U001' TO WS-REJECT-CODE
               GO TO 2400-EXIT
           END-IF.
           IF PM-AUTO
               IF PM-VIOLATION-CNT > 4
                  OR PM-ACCIDENT-CNT > 3
                  OR PM-VIOLATION-CNT + PM-ACCIDENT-CNT > 5
                   MOVE 'U002' TO WS-REJECT-CODE
                   GO TO 2400-EXIT
               END-IF
           END-IF.
           IF PM-HOME
               MOVE TR-EFF-DATE (1:4) TO WS-EFF-YEAR
               COMPUTE WS-ROOF-AGE  = WS-EFF-YEAR - PM-ROOF-YEAR
               COMPUTE WS-BUILD-AGE = WS-EFF-YEAR - PM-BUILD-YEAR
               IF WS-ROOF-AGE > 25
                   MOVE 'U003' TO WS-REJECT-CODE
               ELSE
                   IF PM-PROT-CLASS > 9 AND PM-FRAME
                       MOVE 'U004' TO WS-REJECT-CODE
                   ELSE
                       IF PM-DWELL-LIMIT < 60000
                           MOVE 'U005' TO WS-REJECT-CODE
                       END-IF
                   END-IF
               END-IF
           END-IF.
       2400-EXIT.
           EXIT.

       3000-RATE-POLICY.
           PERFORM 3100-BASE-RATE.
           IF NOT TRANS-IS-GOOD
               GO TO 3000-EXIT
           END-IF.
           MOVE ZERO TO WS-SURCHARGE-PCT WS-DISCOUNT-PCT.
           EVALUATE PM-LINE-CODE
               WHEN 'PA'
                   PERFORM 3200-AUTO-FACTORS
                   PERFORM 3250-DRIVING-RECORD
               WHEN 'HO'
                   PERFORM 3300-HOME-FACTORS
               WHEN 'RN'
                   MOVE 1 TO WS-RISK-FACTOR
           END-EVALUATE.
           COMPUTE WS-START-PREM ROUNDED =
                   WS-START-PREM * WS-RISK-FACTOR.
           PERFORM 3400-COVERAGE-PREMIUM.
           PERFORM 3500-DISCOUNTS THRU 3560-CAP-EXIT.
           PERFORM 3600-NET-PREMIUM.
           PERFORM 3700-TAX-AND-FEES.
       3000-EXIT.
           EXIT.

       3100-BASE-RATE.
           MOVE PM-LINE-CODE TO WS-SEARCH-LINE.
           MOVE PM-TERRITORY TO WS-SEARCH-TERR.
           SEARCH ALL WS-RATE-ENTRY
               AT END
                   MOVE 'R001' TO WS-REJECT-CODE
               WHEN RT-KEY (RT-IX) = WS-SEARCH-KEY
                   COMPUTE WS-START-PREM ROUNDED =
                           RT-BASE (RT-IX) * RT-FACTOR (RT-IX)
                   MOVE RT-MINIMUM (RT-IX) TO WS-MIN-PREM
           END-SEARCH.

       3200-AUTO-FACTORS.
           EVALUATE WS-AGE
               WHEN 16 THRU 20
                   MOVE 1.9500 TO WS-AGE-FACTOR
               WHEN 21 THRU 24
                   MOVE 1.4500 TO WS-AGE-FACTOR
               WHEN 25 THRU 64
                   MOVE 1.0000 TO WS-AGE-FACTOR
               WHEN 65 THRU 74
                   MOVE 1.0500 TO WS-AGE-FACTOR
               WHEN OTHER
                   MOVE 1.2000 TO WS-AGE-FACTOR
           END-EVALUATE.
           EVALUATE TRUE
               WHEN PM-ANNUAL-MILES < 5000
                   MOVE 0.9200 TO WS-MILE-FACTOR
               WHEN PM-ANNUAL-MILES > 20000
                   MOVE 1.1800 TO WS-MILE-FACTOR
               WHEN PM-ANNUAL-MILES > 15000
                   MOVE 1.1000 TO WS-MILE-FACTOR
               WHEN OTHER
                   MOVE 1.0000 TO WS-MILE-FACTOR
           END-EVALUATE.
           COMPUTE WS-RISK-FACTOR ROUNDED =
                   WS-AGE-FACTOR * WS-MILE-FACTOR
                   * (0.80 + PM-VEH-SYMBOL * 0.03).

       3250-DRIVING-RECORD.
      *    FIRST OFFENCE 10 PERCENT, EACH FURTHER ONE 15 PERCENT,
      *    EACH ACCIDENT AT FAULT 25 PERCENT, 90 PERCENT AT MOST
           PERFORM VARYING WS-OFFENCE FROM 1 BY 1
                     UNTIL WS-OFFENCE > PM-VIOLATION-CNT
               IF WS-OFFENCE = 1
                   ADD .100 TO WS-SURCHARGE-PCT
               ELSE
                   ADD .150 TO WS-SURCHARGE-PCT
               END-IF
           END-PERFORM.
           COMPUTE WS-SURCHARGE-PCT =
                   WS-SURCHARGE-PCT + .250 * PM-ACCIDENT-CNT.
           IF WS-SURCHARGE-PCT > .900
               MOVE .900 TO WS-SURCHARGE-PCT
           END-IF.

       3300-HOME-FACTORS.
      *    THE BASE RATE IS FOR EACH 100,000 OF DWELLING LIMIT
           COMPUTE WS-RISK-FACTOR = PM-DWELL-LIMIT / 100000.
           IF PM-FRAME
               COMPUTE WS-RISK-FACTOR ROUNDED = WS-RISK-FACTOR * 1.15
           END-IF.
           EVALUATE PM-PROT-CLASS
               WHEN 1 THRU 4
                   CONTINUE
               WHEN 5 THRU 7
                   COMPUTE WS-RISK-FACTOR = WS-RISK-FACTOR * 1.10
               WHEN OTHER
                   COMPUTE WS-RISK-FACTOR = WS-RISK-FACTOR * 1.35
           END-EVALUATE.
           IF WS-BUILD-AGE > 40
               ADD .100 TO WS-SURCHARGE-PCT
           END-IF.
           IF WS-ROOF-AGE > 15
               ADD .080 TO WS-SURCHARGE-PCT
           END-IF.

       3400-COVERAGE-PREMIUM.
           MOVE ZERO TO PM-BASE-PREM.
           PERFORM 3410-ONE-COVERAGE
               VARYING PM-CVX FROM 1 BY 1
               UNTIL PM-CVX > PM-COVERAGE-CNT.

       3410-ONE-COVERAGE.
           PERFORM 3420-DEDUCTIBLE-CREDIT.
           SET CV-IX TO 1.
           SEARCH CV-ENTRY
               WHEN CV-LINE (CV-IX) = PM-LINE-CODE
                AND CV-CODE (CV-IX) = PM-COV-CODE (PM-CVX)
                   COMPUTE PM-COV-PREM (PM-CVX) ROUNDED =
                       WS-START-PREM * CV-SHARE (CV-IX) * WS-DED-FACTOR
           END-SEARCH.
           ADD PM-COV-PREM (PM-CVX) TO PM-BASE-PREM.

       3420-DEDUCTIBLE-CREDIT.
           EVALUATE PM-COV-DEDUCT (PM-CVX)
               WHEN 0 THRU 249
                   MOVE 1.0000 TO WS-DED-FACTOR
               WHEN 250 THRU 499
                   MOVE 0.9500 TO WS-DED-FACTOR
               WHEN 500 THRU 999
                   MOVE 0.8800 TO WS-DED-FACTOR
               WHEN OTHER
                   MOVE 0.8000 TO WS-DED-FACTOR
           END-EVALUATE.

       3500-DISCOUNTS.
           COMPUTE PM-SURCHARGE-AMT ROUNDED =
                   PM-BASE-PREM * WS-SURCHARGE-PCT.
       3510-SENIOR-DISCOUNT.
      *    CLEAN DRIVERS AND HOME OWNERS FROM THE AGE OF 65
           IF WS-AGE NOT < 65
               IF PM-AUTO
                   IF PM-VIOLATION-CNT = ZERO AND PM-ACCIDENT-CNT = ZERO
                       ADD .080 TO WS-DISCOUNT-PCT
                   END-IF
               ELSE
                   ADD .050 TO WS-DISCOUNT-PCT
               END-IF
           END-IF.
       3520-LOYALTY-DISCOUNT.
           SET DL-AGE-YEARS TO TRUE.
           MOVE PM-ORIG-DATE TO DL-DATE-1.
           MOVE PM-EFF-DATE  TO DL-DATE-2.
           CALL 'PBDATE1' USING DL-DATE-PARMS.
           IF DL-OK
               MOVE DL-NUMBER TO WS-YEARS-INSURED
           ELSE
               MOVE ZERO TO WS-YEARS-INSURED
           END-IF.
           EVALUATE WS-YEARS-INSURED
               WHEN 0 THRU 2
                   CONTINUE
               WHEN 3 THRU 4
                   ADD .030 TO WS-DISCOUNT-PCT
               WHEN 5 THRU 9
                   ADD .060 TO WS-DISCOUNT-PCT
               WHEN OTHER
                   ADD .100 TO WS-DISCOUNT-PCT
           END-EVALUATE.
       3530-MULTI-POLICY-DISCOUNT.
      *    THE OTHER POLICY MUST BE IN FORCE AND OF THE SAME NAME.
      *    OUR OWN RECORD IS KEPT ASIDE WHILE THE OTHER IS READ.
           IF TR-OTHER-POLICY NOT = SPACES
               MOVE PM-POLICY-REC TO WP-POLICY-REC
               MOVE TR-OTHER-POLICY TO PM-POLICY-NO
               READ POLICY-MASTER
                   INVALID KEY
                       CONTINUE
                   NOT INVALID KEY
                       IF PM-BILLABLE
                          AND PM-LAST-NAME = WP-LAST-NAME
                          AND PM-LINE-CODE NOT = WP-LINE-CODE
                           ADD .100 TO WS-DISCOUNT-PCT
                       END-IF
               END-READ
               MOVE WP-POLICY-REC TO PM-POLICY-REC
           END-IF.
       3540-PROTECTION-DISCOUNT.
           EVALUATE TRUE
               WHEN PM-AUTO
                   IF PM-ANTI-THEFT = 'Y'
                       ADD .030 TO WS-DISCOUNT-PCT
                   END-IF
                   IF PM-GOOD-STUDENT = 'Y' AND WS-AGE < 25
                       ADD .070 TO WS-DISCOUNT-PCT
                   END-IF
               WHEN PM-HOME
                   IF PM-ALARM = 'Y'
                       ADD .040 TO WS-DISCOUNT-PCT
                   END-IF
                   IF PM-SPRINKLER = 'Y'
                       ADD .050 TO WS-DISCOUNT-PCT
                   END-IF
           END-EVALUATE.
       3560-DISCOUNT-CAP.
           IF WS-DISCOUNT-PCT > WS-MAX-DISCOUNT
               MOVE WS-MAX-DISCOUNT TO WS-DISCOUNT-PCT
           END-IF.
           COMPUTE PM-DISCOUNT-AMT ROUNDED =
                   (PM-BASE-PREM + PM-SURCHARGE-AMT) * WS-DISCOUNT-PCT.
       3560-CAP-EXIT.
           EXIT.

       3600-NET-PREMIUM.
           COMPUTE WS-NET-PREM = PM-BASE-PREM + PM-SURCHARGE-AMT
                               - PM-DISCOUNT-AMT.
      *    THE DISCOUNT GIVES WAY TO THE MINIMUM PREMIUM
           IF WS-NET-PREM < WS-MIN-PREM
               COMPUTE PM-DISCOUNT-AMT = PM-BASE-PREM
                     + PM-SURCHARGE-AMT - WS-MIN-PREM
               MOVE WS-MIN-PREM TO WS-NET-PREM
           END-IF.

       3700-TAX-AND-FEES.
           MOVE PM-STATE     TO TL-STATE.
           MOVE PM-LINE-CODE TO TL-LINE.
           MOVE WS-AGE       TO TL-INSURED-AGE.
           MOVE WS-NET-PREM  TO TL-PREMIUM.
           CALL 'PBTAX01' USING TL-TAX-PARMS.
           IF TL-OK
               COMPUTE PM-TAX-AMT = TL-TAX + TL-LEVY
               COMPUTE PM-POLICY-FEE = WS-STD-FEE + TL-STAMP
               IF TR-RENEW
                   MOVE TL-STAMP TO PM-POLICY-FEE
               END-IF
               COMPUTE PM-TOTAL-PREM = WS-NET-PREM + PM-TAX-AMT
                                     + PM-POLICY-FEE
           ELSE
               MOVE 'R002' TO WS-REJECT-CODE
           END-IF.

      *    TERRITORY BY ZIP CODE - REPLACED BY THE RATE FILE IN 2018
       3900-OLD-TERRITORY.
           IF PM-ZIP (1:3) = '432' OR '441'
               MOVE 010 TO PM-TERRITORY
           ELSE
               IF PM-ZIP (1:1) = '4'
                   MOVE 020 TO PM-TERRITORY
               ELSE
                   MOVE 090 TO PM-TERRITORY
               END-IF
           END-IF.

       4000-WRITE-MASTER.
           IF TR-NEW
               WRITE PM-POLICY-REC
           ELSE
               REWRITE PM-POLICY-REC
           END-IF.
           IF NOT POLMAST-OK
               MOVE 'POLMAST' TO FS-FILE-NAME
               MOVE 'WRITE'   TO FS-OPERATION
               MOVE WS-POLMAST-STATUS TO FS-STATUS
               GO TO 9900-ABEND
           END-IF.
           ADD 1 TO WS-RATED-COUNT.
           PERFORM 5000-PRINT-DETAIL.

       5000-PRINT-DETAIL.
           IF RH-LINE-CNT NOT < RH-MAX-LINES
               ADD 1 TO RH-PAGE-CNT
               MOVE RH-PAGE-CNT TO RH-PAGE-NO
               WRITE PRINT-LINE FROM RH-HEADING-1
                   AFTER ADVANCING PAGE
               WRITE PRINT-LINE FROM WS-COLUMN-LINE
                   AFTER ADVANCING 2 LINES
               MOVE 3 TO RH-LINE-CNT
           END-IF.
           MOVE PM-POLICY-NO     TO DT-POLICY.
           MOVE PM-LAST-NAME     TO DT-NAME.
           MOVE WS-AGE           TO DT-AGE.
           MOVE PM-BASE-PREM     TO DT-BASE.
           MOVE PM-SURCHARGE-AMT TO DT-SURCHARGE.
           MOVE PM-DISCOUNT-AMT  TO DT-DISCOUNT.
           MOVE PM-TAX-AMT       TO DT-TAX.
           MOVE PM-POLICY-FEE    TO DT-FEE.
           MOVE PM-TOTAL-PREM    TO DT-TOTAL.
           WRITE PRINT-LINE FROM WS-DETAIL-LINE
               AFTER ADVANCING 1 LINE.
           ADD 1 TO RH-LINE-CNT.

       8000-READ-TRANS.
           READ TRANS-FILE
               AT END
                   SET END-OF-TRANS TO TRUE
           END-READ.

       9000-TERMINATE.
           DISPLAY 'PBRATE01 READ '  WS-TRANS-COUNT
                   ' RATED '         WS-RATED-COUNT
                   ' REJECTED '      WS-REJECT-COUNT.
           CLOSE TRANS-FILE POLICY-MASTER REJECT-FILE WORKSHEET.
           IF WS-REJECT-COUNT > ZERO
               MOVE 4 TO RETURN-CODE
           END-IF.

       COPY PBABEND.
