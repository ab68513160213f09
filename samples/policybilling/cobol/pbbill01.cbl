       IDENTIFICATION DIVISION.
       PROGRAM-ID.    PBBILL01.
       AUTHOR.        M OKAFOR.
       DATE-WRITTEN.  1995-01-30.
      ******************************************************************
      * DAILY BILLING.                                                 *
      *   STEP 1  PAYMENTS AND RETURNED PAYMENTS ARE POSTED            *
      *   STEP 2  EVERY POLICY IN FORCE: SCHEDULE, BILLS THAT FALL DUE,*
      *           LATE FEE, GRACE PERIOD, LAPSE AND DUNNING LEVEL      *
      * OUTPUT: BILL FILE, COMMISSION TRANSACTIONS, CANCEL REQUESTS,   *
      *         DUNNING EXTRACT AND THE BILLING REGISTER.              *
      *----------------------------------------------------------------*
      * 1995-01 MO  FIRST VERSION                                      *
      * 1998-10 MO  CENTURY IN ALL DATES                               *
      * 2001-07 DL  FEES MOVED OUT TO PBFEE01                          *
      * 2007-03 DL  GRACE PERIOD BY PLAN, STATE AND AGE                *
      * 2016-05 PA  CANCEL REQUESTS INSTEAD OF CANCELLING HERE         *
      ******************************************************************
       ENVIRONMENT DIVISION.
       INPUT-OUTPUT SECTION.
       FILE-CONTROL.
           SELECT CONTROL-FILE   ASSIGN TO CTLCARD
               FILE STATUS IS WS-CTL-STATUS.
           SELECT PAYMENT-FILE   ASSIGN TO PAYMENTS
               FILE STATUS IS WS-PAY-STATUS.
           SELECT POLICY-MASTER  ASSIGN TO POLMAST
               ORGANIZATION IS INDEXED
               ACCESS MODE IS DYNAMIC
               RECORD KEY IS PM-POLICY-NO
               FILE STATUS IS WS-POLMAST-STATUS.
           SELECT BILL-FILE      ASSIGN TO BILLFILE
               ORGANIZATION IS INDEXED
               ACCESS MODE IS DYNAMIC
               RECORD KEY IS BL-KEY
               ALTERNATE RECORD KEY IS BL-DUE-DATE WITH DUPLICATES
               FILE STATUS IS WS-BILL-STATUS.
           SELECT COMM-FILE      ASSIGN TO COMMTRN
               FILE STATUS IS WS-OUT-STATUS.
           SELECT CANCEL-FILE    ASSIGN TO CANREQ
               FILE STATUS IS WS-OUT-STATUS.
           SELECT DUNNING-FILE   ASSIGN TO DUNNING
               FILE STATUS IS WS-OUT-STATUS.
           SELECT REGISTER-FILE  ASSIGN TO BILLRPT
               FILE STATUS IS WS-OUT-STATUS.
       DATA DIVISION.
       FILE SECTION.
       FD  CONTROL-FILE.
       01  CONTROL-CARD.
           05  CC-RUN-DATE             PIC 9(08).
           05  FILLER                  PIC X(72).
       FD  PAYMENT-FILE.
       COPY PBPAYRC.
       FD  POLICY-MASTER.
       COPY PBPOLMS REPLACING ==:TAG:== BY ==PM==.
       FD  BILL-FILE.
       01  BL-BILL-REC.
           05  BL-KEY.
               10  BL-POLICY-NO        PIC X(10).
               10  BL-EFF-DATE         PIC 9(08).
               10  BL-INST-NO          PIC 9(02).
           05  BL-DUE-DATE             PIC 9(08).
           05  BL-AMOUNT               PIC S9(07)V99 COMP-3.
           05  BL-INST-FEE             PIC S9(05)V99 COMP-3.
           05  BL-BILL-DATE            PIC 9(08).
       FD  COMM-FILE.
       COPY PBCMTRC REPLACING ==:TAG:== BY ==CT==.
       FD  CANCEL-FILE.
       COPY PBCANRC.
       FD  DUNNING-FILE.
       COPY PBDUNRC.
       FD  REGISTER-FILE.
       01  PRINT-LINE                  PIC X(132).
       WORKING-STORAGE SECTION.
       01  WS-FILE-STATUS.
           05  WS-CTL-STATUS           PIC X(02)  VALUE '00'.
           05  WS-PAY-STATUS           PIC X(02)  VALUE '00'.
           05  WS-POLMAST-STATUS       PIC X(02)  VALUE '00'.
               88  POLMAST-OK                     VALUE '00' '02'.
               88  POLMAST-END                    VALUE '10'.
           05  WS-BILL-STATUS          PIC X(02)  VALUE '00'.
               88  BILL-OK                        VALUE '00' '02'.
               88  BILL-NO-FILE                   VALUE '35'.
               88  BILL-DUPLICATE                 VALUE '22'.
           05  WS-OUT-STATUS           PIC X(02)  VALUE '00'.
       01  WS-SWITCHES.
           05  WS-PAY-EOF-SW           PIC X(01)  VALUE 'N'.
               88  END-OF-PAYMENTS                VALUE 'Y'.
       01  WS-COUNTERS.
           05  WS-PAY-POSTED           PIC S9(07)    COMP-3 VALUE 0.
           05  WS-PAY-REJECTED         PIC S9(07)    COMP-3 VALUE 0.
           05  WS-BILLS-WRITTEN        PIC S9(07)    COMP-3 VALUE 0.
           05  WS-LATE-FEES            PIC S9(07)    COMP-3 VALUE 0.
           05  WS-LAPSES               PIC S9(07)    COMP-3 VALUE 0.
       01  FILLER REDEFINES WS-COUNTERS.
           05  WS-TOTAL-COUNT          PIC S9(07)    COMP-3
                                       OCCURS 5 TIMES.
       01  WS-TOTAL-NAMES.
           05  FILLER                  PIC X(40)  VALUE
               'PAYMENTS POSTED     PAYMENTS REJECTED   '.
           05  FILLER                  PIC X(60)  VALUE
       'BILLS WRITTEN       LATE FEES ASSESSED  POLICIES LAPSED     '.
       01  FILLER REDEFINES WS-TOTAL-NAMES.
           05  WS-TOTAL-NAME           PIC X(20)  OCCURS 5 TIMES.
       01  WS-SCHEDULE.
           05  WS-INST-CNT             PIC S9(04) COMP  VALUE 1.
           05  WS-INST OCCURS 1 TO 12 TIMES
                       DEPENDING ON WS-INST-CNT
                       INDEXED BY WS-IX.
               10  WS-INST-DUE         PIC 9(08).
               10  WS-INST-AMT         PIC S9(07)V99 COMP-3.
       01  WS-WORK.
           05  WS-DOWN-PCT             PIC S9V999    COMP-3.
           05  WS-STEP-MONTHS          PIC S9(03)    COMP-3.
           05  WS-REMAINDER            PIC S9(07)V99 COMP-3.
           05  WS-BILL-FROM            PIC 9(08).
           05  WS-CUM-DUE              PIC S9(07)V99 COMP-3.
           05  WS-OLDEST-DUE           PIC 9(08).
           05  WS-OLDEST-INST          PIC S9(04)    COMP.
           05  WS-DAYS-LATE            PIC S9(05)    COMP-3.
           05  WS-GRACE-DAYS           PIC S9(03)    COMP-3.
           05  WS-NEW-LEVEL            PIC 9(01).
           05  WS-AGE                  PIC 9(03).
           05  WS-YEARS-INSURED        PIC 9(03).
           05  WS-PAY-LEFT             PIC S9(07)V99 COMP-3.
           05  WS-NO-INTERFACE         PIC X(85)     VALUE SPACES.
           05  WS-ACTION               PIC X(24).
           05  WS-TX                   PIC S9(04)    COMP.
       COPY PBDATLK.
       COPY PBFEELK.
       COPY PBFSWRK REPLACING ==:PGM:== BY =='PBBILL01'==.
       COPY PBRPTHD REPLACING ==:TITLE:== BY =='BILLING REGISTER'==.
       01  WS-DETAIL-LINE.
           05  DT-POLICY               PIC X(12).
           05  DT-ACTION               PIC X(24).
           05  DT-DATE                 PIC 9999/99/99.
           05  DT-AMOUNT               PIC ZZZZ,ZZ9.99-.
           05  DT-FEES                 PIC ZZ,ZZ9.99-.
           05  FILLER                  PIC X(02)  VALUE SPACES.
           05  DT-STATUS               PIC X(01).
       01  WS-TOTAL-LINE.
           05  TT-TEXT                 PIC X(24).
           05  TT-COUNT                PIC ZZZ,ZZ9.
       PROCEDURE DIVISION.
       0000-MAIN.
           PERFORM 1000-INITIALIZE THRU 1000-EXIT.
           PERFORM 2000-POST-PAYMENT THRU 2000-EXIT
               UNTIL END-OF-PAYMENTS.
           PERFORM 3000-START-MASTER.
           PERFORM 3100-BILL-POLICY THRU 3100-EXIT
               UNTIL POLMAST-END.
           PERFORM 9000-TERMINATE.
           STOP RUN.

       1000-INITIALIZE.
           MOVE 'OPEN' TO FS-OPERATION.
           OPEN INPUT CONTROL-FILE PAYMENT-FILE.
           IF WS-CTL-STATUS NOT = '00' OR WS-PAY-STATUS NOT = '00'
               MOVE 'CTL/PAY' TO FS-FILE-NAME
               MOVE WS-CTL-STATUS TO FS-STATUS
               GO TO 9900-ABEND
           END-IF.
           READ CONTROL-FILE
               AT END
                   MOVE 'CTLCARD' TO FS-FILE-NAME
                   GO TO 9900-ABEND
           END-READ.
           MOVE CC-RUN-DATE TO RH-RUN-DATE.
           OPEN I-O POLICY-MASTER.
           IF NOT POLMAST-OK
               MOVE 'POLMAST' TO FS-FILE-NAME
               MOVE WS-POLMAST-STATUS TO FS-STATUS
               GO TO 9900-ABEND
           END-IF.
           OPEN I-O BILL-FILE.
           IF BILL-NO-FILE
               OPEN OUTPUT BILL-FILE
               CLOSE BILL-FILE
               OPEN I-O BILL-FILE
           END-IF.
           OPEN OUTPUT COMM-FILE CANCEL-FILE DUNNING-FILE REGISTER-FILE.
      *    BILLS GO OUT 20 DAYS BEFORE THE DUE DATE
           SET DL-ADD-DAYS TO TRUE.
           MOVE CC-RUN-DATE TO DL-DATE-1.
           MOVE 20 TO DL-NUMBER.
           CALL 'PBDATE1' USING DL-DATE-PARMS.
           MOVE DL-DATE-2 TO WS-BILL-FROM.
           PERFORM 8000-READ-PAYMENT.
       1000-EXIT.
           EXIT.

       2000-POST-PAYMENT.
           MOVE PY-POLICY-NO TO PM-POLICY-NO.
           READ POLICY-MASTER
               INVALID KEY
                   ADD 1 TO WS-PAY-REJECTED
                   MOVE 'PAYMENT - NO POLICY' TO WS-ACTION
                   MOVE PY-AMOUNT TO DT-AMOUNT
                   PERFORM 7000-PRINT-LINE
                   GO TO 2000-NEXT
           END-READ.
           MOVE PY-AMOUNT TO DT-AMOUNT.
           EVALUATE TRUE
               WHEN PY-NSF-REVERSAL
                   PERFORM 2200-RETURNED-PAYMENT
               WHEN PM-CANCELLED
                   ADD 1 TO WS-PAY-REJECTED
                   MOVE 'PAYMENT - CANCELLED' TO WS-ACTION
               WHEN OTHER
                   PERFORM 2100-APPLY-PAYMENT
           END-EVALUATE.
           REWRITE PM-POLICY-REC.
           PERFORM 7000-PRINT-LINE.
       2000-NEXT.
           PERFORM 8000-READ-PAYMENT.
       2000-EXIT.
           EXIT.

       2100-APPLY-PAYMENT.
      *    FEES FIRST, THE REST TO THE PREMIUM
           MOVE PY-AMOUNT TO WS-PAY-LEFT.
           IF WS-PAY-LEFT > PM-FEE-BALANCE
               SUBTRACT PM-FEE-BALANCE FROM WS-PAY-LEFT
               MOVE ZERO TO PM-FEE-BALANCE
           ELSE
               SUBTRACT WS-PAY-LEFT FROM PM-FEE-BALANCE
               MOVE ZERO TO WS-PAY-LEFT
           END-IF.
           ADD WS-PAY-LEFT TO PM-AMT-PAID.
           ADD 1 TO WS-PAY-POSTED.
           MOVE 'PAYMENT POSTED' TO WS-ACTION.
           IF WS-PAY-LEFT > ZERO
               MOVE PM-AGENT-NO  TO CT-AGENT-NO
               MOVE PM-POLICY-NO TO CT-POLICY-NO
               MOVE WS-PAY-LEFT  TO CT-AMOUNT
               MOVE CC-RUN-DATE  TO CT-POST-DATE
               IF PM-ORIG-DATE = PM-EFF-DATE
                   SET CT-NEW-BUSINESS TO TRUE
               ELSE
                   SET CT-RENEWAL TO TRUE
               END-IF
               WRITE CT-COMM-REC
           END-IF.

       2200-RETURNED-PAYMENT.
           SUBTRACT PY-AMOUNT FROM PM-AMT-PAID.
           INITIALIZE FL-FEE-PARMS.
           SET FL-NSF TO TRUE.
           MOVE PM-STATE     TO FL-STATE.
           MOVE PM-NSF-COUNT TO FL-PRIOR-COUNT.
           CALL 'PBFEE01' USING BY CONTENT   WS-NO-INTERFACE
                                BY REFERENCE FL-FEE-PARMS.
           ADD FL-FEE TO PM-FEE-BALANCE.
           ADD 1 TO PM-NSF-COUNT.
      *    TWO RETURNED WITHDRAWALS: BACK TO PAPER BILLS
           IF PM-NSF-COUNT > 1 AND PM-BILL-EFT
               SET PM-BILL-DIRECT TO TRUE
           END-IF.
           MOVE 'RETURNED PAYMENT' TO WS-ACTION.

       3000-START-MASTER.
           MOVE LOW-VALUES TO PM-POLICY-NO.
           START POLICY-MASTER KEY IS NOT LESS THAN PM-POLICY-NO
               INVALID KEY
                   SET POLMAST-END TO TRUE
               NOT INVALID KEY
                   PERFORM 8100-NEXT-POLICY
           END-START.

       3100-BILL-POLICY.
           IF NOT PM-BILLABLE
               GO TO 3100-NEXT
           END-IF.
      *    TERM IS OVER: NO FURTHER BILLS
           IF PM-EXP-DATE NOT > CC-RUN-DATE
               SET PM-EXPIRED TO TRUE
               REWRITE PM-POLICY-REC
               GO TO 3100-NEXT
           END-IF.
           PERFORM 3200-BUILD-SCHEDULE THRU 3200-EXIT.
           PERFORM 3300-BILL-INSTALMENTS
               VARYING WS-IX FROM 1 BY 1
               UNTIL WS-IX > WS-INST-CNT.
           PERFORM 3400-FIND-PAST-DUE.
           IF PM-PAST-DUE > ZERO
               PERFORM 3500-ASSESS-LATE-FEE
               PERFORM 3600-GRACE-PERIOD THRU 3600-EXIT
               PERFORM 3800-DUNNING
           ELSE
               SET PM-ACTIVE TO TRUE
               MOVE ZERO TO PM-DUNN-LEVEL
           END-IF.
           REWRITE PM-POLICY-REC.
       3100-NEXT.
           PERFORM 8100-NEXT-POLICY.
       3100-EXIT.
           EXIT.

       3200-BUILD-SCHEDULE.
           EVALUATE TRUE
               WHEN PM-PLAN-SEMI
                   MOVE 2 TO WS-INST-CNT
                   MOVE .500 TO WS-DOWN-PCT
                   MOVE 6 TO WS-STEP-MONTHS
               WHEN PM-PLAN-QUARTERLY
                   MOVE 4 TO WS-INST-CNT
                   MOVE .250 TO WS-DOWN-PCT
                   MOVE 3 TO WS-STEP-MONTHS
               WHEN PM-PLAN-MONTHLY
                   MOVE 10 TO WS-INST-CNT
                   MOVE .200 TO WS-DOWN-PCT
                   MOVE 1 TO WS-STEP-MONTHS
               WHEN OTHER
                   MOVE 1 TO WS-INST-CNT
                   MOVE 1 TO WS-DOWN-PCT
                   MOVE 12 TO WS-STEP-MONTHS
           END-EVALUATE.
      *    AFTER TWO RETURNED PAYMENTS THE DOWN PAYMENT IS 40 PCT
           IF PM-PLAN-MONTHLY AND PM-NSF-COUNT > 1
               MOVE .400 TO WS-DOWN-PCT
           END-IF.
           MOVE PM-EFF-DATE TO WS-INST-DUE (1).
           COMPUTE WS-INST-AMT (1) ROUNDED =
                   PM-TOTAL-PREM * WS-DOWN-PCT.
           SUBTRACT WS-INST-AMT (1) FROM PM-TOTAL-PREM
               GIVING WS-REMAINDER.
           IF WS-INST-CNT = 1
               GO TO 3200-EXIT
           END-IF.
           PERFORM VARYING WS-IX FROM 2 BY 1 UNTIL WS-IX > WS-INST-CNT
               SET DL-ADD-MONTHS TO TRUE
               MOVE PM-EFF-DATE TO DL-DATE-1
               SET DL-NUMBER TO WS-IX
               COMPUTE DL-NUMBER = (DL-NUMBER - 1) * WS-STEP-MONTHS
               CALL 'PBDATE1' USING DL-DATE-PARMS
               MOVE DL-DATE-2 TO WS-INST-DUE (WS-IX)
               COMPUTE WS-INST-AMT (WS-IX) =
                   (PM-TOTAL-PREM - WS-INST-AMT (1)) / (WS-INST-CNT - 1)
               SUBTRACT WS-INST-AMT (WS-IX) FROM WS-REMAINDER
           END-PERFORM.
      *    THE LAST INSTALMENT TAKES THE CENTS LEFT OVER
           ADD WS-REMAINDER TO WS-INST-AMT (WS-INST-CNT).
       3200-EXIT.
           EXIT.

       3300-BILL-INSTALMENTS.
           IF WS-IX > PM-LAST-INST-BILLED
              AND WS-INST-DUE (WS-IX) NOT > WS-BILL-FROM
               INITIALIZE FL-FEE-PARMS
               SET FL-INSTALMENT TO TRUE
               MOVE PM-PAY-PLAN    TO FL-PAY-PLAN
               MOVE PM-BILL-METHOD TO FL-BILL-METHOD
               CALL 'PBFEE01' USING BY CONTENT   WS-NO-INTERFACE
                                    BY REFERENCE FL-FEE-PARMS
               ADD FL-FEE TO PM-FEE-BALANCE
               MOVE PM-POLICY-NO        TO BL-POLICY-NO
               MOVE PM-EFF-DATE         TO BL-EFF-DATE
               SET BL-INST-NO           TO WS-IX
               MOVE WS-INST-DUE (WS-IX) TO BL-DUE-DATE
                                           PM-NEXT-DUE-DATE
               MOVE WS-INST-AMT (WS-IX) TO BL-AMOUNT  DT-AMOUNT
               MOVE FL-FEE              TO BL-INST-FEE
               MOVE CC-RUN-DATE         TO BL-BILL-DATE
               WRITE BL-BILL-REC
               IF BILL-OK OR BILL-DUPLICATE
                   ADD WS-INST-AMT (WS-IX) TO PM-AMT-BILLED
                   SET PM-LAST-INST-BILLED TO WS-IX
                   ADD 1 TO WS-BILLS-WRITTEN
                   MOVE 'INSTALMENT BILLED' TO WS-ACTION
                   PERFORM 7000-PRINT-LINE
               ELSE
                   MOVE 'BILLFILE' TO FS-FILE-NAME
                   MOVE 'WRITE'    TO FS-OPERATION
                   MOVE WS-BILL-STATUS TO FS-STATUS
                   GO TO 9900-ABEND
               END-IF
           END-IF.

       3400-FIND-PAST-DUE.
      *    WHAT WAS DUE BEFORE TODAY AND IS NOT COVERED BY PAYMENTS
           MOVE ZERO TO WS-CUM-DUE WS-OLDEST-DUE WS-OLDEST-INST.
           PERFORM VARYING WS-IX FROM 1 BY 1
                     UNTIL WS-IX > WS-INST-CNT
                        OR WS-INST-DUE (WS-IX) NOT < CC-RUN-DATE
               ADD WS-INST-AMT (WS-IX) TO WS-CUM-DUE
               IF WS-CUM-DUE > PM-AMT-PAID AND WS-OLDEST-DUE = ZERO
                   MOVE WS-INST-DUE (WS-IX) TO WS-OLDEST-DUE
                   SET WS-OLDEST-INST TO WS-IX
               END-IF
           END-PERFORM.
           COMPUTE PM-PAST-DUE = WS-CUM-DUE - PM-AMT-PAID.
           IF PM-PAST-DUE < ZERO
               MOVE ZERO TO PM-PAST-DUE
           END-IF.
           IF WS-OLDEST-DUE > ZERO
               SET DL-DAYS-BETWEEN TO TRUE
               MOVE WS-OLDEST-DUE TO DL-DATE-1
               MOVE CC-RUN-DATE   TO DL-DATE-2
               CALL 'PBDATE1' USING DL-DATE-PARMS
               MOVE DL-NUMBER TO WS-DAYS-LATE
           ELSE
               MOVE ZERO TO WS-DAYS-LATE
           END-IF.

       3500-ASSESS-LATE-FEE.
      *    ONE LATE FEE FOR EACH INSTALMENT
           SET DL-AGE-YEARS TO TRUE.
           MOVE PM-ORIG-DATE TO DL-DATE-1.
           MOVE CC-RUN-DATE  TO DL-DATE-2.
           CALL 'PBDATE1' USING DL-DATE-PARMS.
           MOVE DL-NUMBER TO WS-YEARS-INSURED.
           IF WS-OLDEST-INST > PM-LAST-INST-LATE
               INITIALIZE FL-FEE-PARMS
               SET FL-LATE TO TRUE
               MOVE PM-STATE         TO FL-STATE
               MOVE PM-BILL-METHOD   TO FL-BILL-METHOD
               MOVE WS-DAYS-LATE     TO FL-DAYS-LATE
               MOVE PM-PAST-DUE      TO FL-AMOUNT
               MOVE PM-LATE-COUNT    TO FL-PRIOR-COUNT
               MOVE WS-YEARS-INSURED TO FL-YEARS-INSURED
               CALL 'PBFEE01' USING BY CONTENT   WS-NO-INTERFACE
                                    BY REFERENCE FL-FEE-PARMS
               IF FL-FEE > ZERO OR FL-WAIVED = 'Y'
                   ADD FL-FEE TO PM-FEE-BALANCE
                   ADD 1 TO PM-LATE-COUNT
                   MOVE WS-OLDEST-INST TO PM-LAST-INST-LATE
                   ADD 1 TO WS-LATE-FEES
                   MOVE FL-FEE TO DT-AMOUNT
                   IF FL-WAIVED = 'Y'
                       MOVE 'LATE FEE WAIVED' TO WS-ACTION
                   ELSE
                       MOVE 'LATE FEE' TO WS-ACTION
                   END-IF
                   PERFORM 7000-PRINT-LINE
               END-IF
           END-IF.

       3600-GRACE-PERIOD.
           PERFORM 3700-GRACE-DAYS.
           SET PM-IN-GRACE TO TRUE.
           IF WS-DAYS-LATE NOT > WS-GRACE-DAYS
               GO TO 3600-EXIT
           END-IF.
      *    SMALL BALANCES DO NOT LAPSE A POLICY
           IF PM-PAST-DUE < 10.00
               GO TO 3600-EXIT
           END-IF.
           SET PM-LAPSED TO TRUE.
           MOVE CC-RUN-DATE TO PM-CANCEL-DATE.
           MOVE 'NP' TO PM-CANCEL-REASON.
           MOVE PM-POLICY-NO TO CR-POLICY-NO.
           MOVE CC-RUN-DATE  TO CR-CANCEL-DATE.
           SET CR-NON-PAYMENT TO TRUE.
           MOVE 'PBBILL01'   TO CR-SOURCE.
           WRITE CR-CANCEL-REC.
           ADD 1 TO WS-LAPSES.
           MOVE PM-PAST-DUE TO DT-AMOUNT.
           MOVE 'LAPSED - GRACE OVER' TO WS-ACTION.
           PERFORM 7000-PRINT-LINE.
       3600-EXIT.
           EXIT.

       3700-GRACE-DAYS.
           EVALUATE PM-PAY-PLAN
               WHEN 'M'   MOVE 10 TO WS-GRACE-DAYS
               WHEN 'Q'   MOVE 15 TO WS-GRACE-DAYS
               WHEN OTHER MOVE 30 TO WS-GRACE-DAYS
           END-EVALUATE.
           IF PM-STATE = 'NY' OR 'NJ'
               ADD 5 TO WS-GRACE-DAYS
           END-IF.
           SET DL-AGE-YEARS TO TRUE.
           MOVE PM-BIRTH-DATE TO DL-DATE-1.
           MOVE CC-RUN-DATE   TO DL-DATE-2.
           CALL 'PBDATE1' USING DL-DATE-PARMS.
           MOVE DL-NUMBER TO WS-AGE.
           IF WS-AGE NOT < 65
               ADD 10 TO WS-GRACE-DAYS
           END-IF.

       3800-DUNNING.
           EVALUATE TRUE
               WHEN PM-LAPSED          MOVE 3 TO WS-NEW-LEVEL
               WHEN WS-DAYS-LATE > 9   MOVE 2 TO WS-NEW-LEVEL
               WHEN WS-DAYS-LATE > 4   MOVE 1 TO WS-NEW-LEVEL
               WHEN OTHER              MOVE 0 TO WS-NEW-LEVEL
           END-EVALUATE.
      *    EACH LEVEL IS SENT ONCE
           IF WS-NEW-LEVEL > PM-DUNN-LEVEL
               MOVE WS-NEW-LEVEL TO PM-DUNN-LEVEL  DN-LEVEL
               MOVE PM-POLICY-NO TO DN-POLICY-NO
               MOVE SPACES TO DN-FULL-NAME
               STRING PM-LAST-NAME  DELIMITED BY '  '
                      ', '          DELIMITED BY SIZE
                      PM-FIRST-NAME DELIMITED BY '  '
                   INTO DN-FULL-NAME
               MOVE PM-STREET      TO DN-STREET
               MOVE PM-CITY        TO DN-CITY
               MOVE PM-STATE       TO DN-STATE
               MOVE PM-ZIP         TO DN-ZIP
               MOVE PM-AGENT-NO    TO DN-AGENT-NO
               MOVE PM-PAST-DUE    TO DN-PAST-DUE
               MOVE PM-FEE-BALANCE TO DN-FEES-DUE
               MOVE WS-OLDEST-DUE  TO DN-DUE-DATE  DL-DATE-1
               SET DL-ADD-DAYS     TO TRUE
               MOVE WS-GRACE-DAYS  TO DL-NUMBER
               CALL 'PBDATE1' USING DL-DATE-PARMS
               MOVE DL-DATE-2      TO DN-GRACE-END
               WRITE DN-DUNNING-REC
           END-IF.

       7000-PRINT-LINE.
           IF RH-LINE-CNT NOT < RH-MAX-LINES
               ADD 1 TO RH-PAGE-CNT
               MOVE RH-PAGE-CNT TO RH-PAGE-NO
               WRITE PRINT-LINE FROM RH-HEADING-1 AFTER ADVANCING PAGE
               MOVE SPACES TO PRINT-LINE
               WRITE PRINT-LINE AFTER ADVANCING 1 LINE
               MOVE 2 TO RH-LINE-CNT
           END-IF.
           MOVE PM-POLICY-NO     TO DT-POLICY.
           MOVE WS-ACTION        TO DT-ACTION.
           MOVE PM-NEXT-DUE-DATE TO DT-DATE.
           MOVE PM-FEE-BALANCE   TO DT-FEES.
           MOVE PM-STATUS        TO DT-STATUS.
           WRITE PRINT-LINE FROM WS-DETAIL-LINE AFTER ADVANCING 1 LINE.
           ADD 1 TO RH-LINE-CNT.

       8000-READ-PAYMENT.
           READ PAYMENT-FILE
               AT END
                   SET END-OF-PAYMENTS TO TRUE
           END-READ.

       8100-NEXT-POLICY.
           READ POLICY-MASTER NEXT RECORD
               AT END
                   SET POLMAST-END TO TRUE
           END-READ.

      *    SERVICE CHARGE OF 1.5 PERCENT A MONTH, STOPPED BY THE STATE
      *    REGULATORS IN 1997. NO LONGER PERFORMED.
       8900-SERVICE-CHARGE.
           COMPUTE FL-FEE ROUNDED = PM-PAST-DUE * .015.
           ADD FL-FEE TO PM-FEE-BALANCE.

       9000-TERMINATE.
           PERFORM VARYING WS-TX FROM 1 BY 1 UNTIL WS-TX > 5
               MOVE WS-TOTAL-NAME  (WS-TX) TO TT-TEXT
               MOVE WS-TOTAL-COUNT (WS-TX) TO TT-COUNT
               WRITE PRINT-LINE FROM WS-TOTAL-LINE
                   AFTER ADVANCING 2 LINES
           END-PERFORM.
           CLOSE CONTROL-FILE PAYMENT-FILE POLICY-MASTER BILL-FILE
                 COMM-FILE CANCEL-FILE DUNNING-FILE REGISTER-FILE.

       COPY PBABEND.
