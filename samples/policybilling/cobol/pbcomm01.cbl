       IDENTIFICATION DIVISION.
       PROGRAM-ID.    PBCOMM01.
       AUTHOR.        J R TOLLEY.
       DATE-WRITTEN.  JUN 1989.
      *
      *  MONTHLY AGENT COMMISSIONS
      *  SORTS THE COMMISSION TRANSACTIONS BY AGENT AND POLICY, PAYS BY
      *  LINE, KIND OF BUSINESS AND PREMIUM TIER, TAKES CHARGEBACKS OFF.
      *
      *  89-06 JRT WRITTEN
      *  96-08 MO  LINES HO AND RN
      *  05-11 DL  LOSS RATIO BONUS, LICENCE CHECK
      *
       ENVIRONMENT DIVISION.
       INPUT-OUTPUT SECTION.
       FILE-CONTROL.
           SELECT COMM-FILE      ASSIGN TO COMMTRN
               FILE STATUS IS WS-COMM-STATUS.
           SELECT AGENT-MASTER   ASSIGN TO AGTMAST
               ORGANIZATION IS INDEXED
               ACCESS MODE IS RANDOM
               RECORD KEY IS AG-AGENT-NO
               FILE STATUS IS WS-AGT-STATUS.
           SELECT SORT-FILE      ASSIGN TO SORTWK1.
           SELECT STATEMENT-FILE ASSIGN TO COMMRPT
               FILE STATUS IS WS-PRT-STATUS.
       DATA DIVISION.
       FILE SECTION.
       FD  COMM-FILE.
       COPY PBCMTRC REPLACING ==:TAG:== BY ==CT==.
       FD  AGENT-MASTER.
       COPY PBAGNRC.
       SD  SORT-FILE.
       COPY PBCMTRC REPLACING ==:TAG:== BY ==SW==.
       FD  STATEMENT-FILE.
       01  PRINT-LINE              PIC X(132).
       WORKING-STORAGE SECTION.
       77  WS-COMM-STATUS          PIC XX           VALUE '00'.
       77  WS-AGT-STATUS           PIC XX           VALUE '00'.
           88  AGT-OK                               VALUE '00' '02'.
       77  WS-PRT-STATUS           PIC XX           VALUE '00'.
       77  WS-EOF                  PIC X            VALUE 'N'.
       77  WS-SORT-EOF             PIC X            VALUE 'N'.
       77  WS-AGENT-FOUND          PIC X            VALUE 'N'.
       77  WS-DROPPED              PIC S9(7)        COMP-3 VALUE 0.
       77  WS-PREV-AGENT           PIC 9(5)         VALUE ZERO.
       77  WS-RATE                 PIC SV9(4)       COMP-3.
       77  WS-COMMISSION           PIC S9(7)V99     COMP-3.
       77  WS-AGENT-PREMIUM        PIC S9(9)V99     COMP-3 VALUE 0.
       77  WS-AGENT-COMM           PIC S9(7)V99     COMP-3 VALUE 0.
       77  WS-BONUS                PIC S9(7)V99     COMP-3 VALUE 0.
       77  WS-NET                  PIC S9(7)V99     COMP-3 VALUE 0.
       77  WS-GRAND-TOTAL          PIC S9(9)V99     COMP-3 VALUE 0.
       77  WS-TODAY                PIC 9(8).
      *    RATE BY LINE: NEW BUSINESS, RENEWAL
       01  WS-LINE-RATES.
           03  FILLER              PIC X(10)  VALUE 'HO15001200'.
           03  FILLER              PIC X(10)  VALUE 'PA12001000'.
           03  FILLER              PIC X(10)  VALUE 'RN18001500'.
       01  WS-LINE-TABLE REDEFINES WS-LINE-RATES.
           03  WS-LINE-ENTRY OCCURS 3 TIMES
                             ASCENDING KEY IS LR-LINE
                             INDEXED BY LR-IX.
               05  LR-LINE         PIC XX.
               05  LR-NEW          PIC V9999.
               05  LR-RENEWAL      PIC V9999.
      *    YEAR TO DATE PREMIUM TIERS: UP TO, ADDED TO THE RATE
       01  WS-TIER-VALUES.
           03  FILLER              PIC X(13)  VALUE '0000500000000'.
           03  FILLER              PIC X(13)  VALUE '0002500000100'.
           03  FILLER              PIC X(13)  VALUE '0010000000200'.
           03  FILLER              PIC X(13)  VALUE '9999999990300'.
       01  WS-TIER-TABLE REDEFINES WS-TIER-VALUES.
           03  WS-TIER OCCURS 4 TIMES INDEXED BY TI-IX.
               05  TI-UP-TO        PIC 9(9).
               05  TI-ADD          PIC V9999.
       COPY PBFSWRK REPLACING ==:PGM:== BY =='PBCOMM01'==.
       COPY PBRPTHD REPLACING ==:TITLE:==
                           BY =='AGENT COMMISSION STATEMENT'==.
       01  WS-AGENT-LINE.
           03  FILLER              PIC X(6)   VALUE 'AGENT '.
           03  AL-AGENT            PIC 9(5).
           03  FILLER              PIC X(2)   VALUE SPACES.
           03  AL-NAME             PIC X(30).
       01  WS-DETAIL-LINE.
           03  FILLER              PIC X(4)   VALUE SPACES.
           03  DT-POLICY           PIC X(12).
           03  DT-TYPE             PIC X(4).
           03  DT-AMOUNT           PIC ZZZ,ZZ9.99-.
           03  DT-RATE             PIC BBZ9.99.
           03  FILLER              PIC X      VALUE '%'.
           03  DT-COMMISSION       PIC ZZZ,ZZ9.99-.
       01  WS-SUM-LINE.
           03  FILLER              PIC X(4)   VALUE SPACES.
           03  SL-TEXT             PIC X(35).
           03  SL-AMOUNT           PIC ZZZ,ZZ9.99-.
       PROCEDURE DIVISION.
       0000-CONTROL SECTION.
       0000-START.
           MOVE FUNCTION CURRENT-DATE (1:8) TO WS-TODAY.
           MOVE WS-TODAY TO RH-RUN-DATE.
           OPEN I-O AGENT-MASTER.
           IF NOT AGT-OK
               MOVE 'AGTMAST' TO FS-FILE-NAME
               MOVE 'OPEN'    TO FS-OPERATION
               MOVE WS-AGT-STATUS TO FS-STATUS
               GO TO 9900-ABEND.
           OPEN OUTPUT STATEMENT-FILE.
           SORT SORT-FILE
               ON ASCENDING KEY SW-AGENT-NO
               ON ASCENDING KEY SW-POLICY-NO
               ON DESCENDING KEY SW-TYPE
               INPUT PROCEDURE IS 1000-SELECT
               OUTPUT PROCEDURE IS 2000-REPORT.
           CLOSE AGENT-MASTER STATEMENT-FILE.
           STOP RUN.

       1000-SELECT SECTION.
       1000-START.
           OPEN INPUT COMM-FILE.
           IF WS-COMM-STATUS NOT = '00'
               MOVE 'COMMTRN' TO FS-FILE-NAME
               MOVE 'OPEN'    TO FS-OPERATION
               MOVE WS-COMM-STATUS TO FS-STATUS
               GO TO 9900-ABEND.
       1010-READ.
           READ COMM-FILE AT END GO TO 1090-DONE.
      *    ZERO AMOUNTS AND UNKNOWN KINDS ARE NOT SORTED
           IF CT-AMOUNT = ZERO
               ADD 1 TO WS-DROPPED
               GO TO 1010-READ.
           IF NOT CT-NEW-BUSINESS
               IF NOT CT-RENEWAL
                   IF NOT CT-CHARGE-BACK
                       ADD 1 TO WS-DROPPED
                       GO TO 1010-READ.
           MOVE CT-COMM-REC TO SW-COMM-REC.
           RELEASE SW-COMM-REC.
           GO TO 1010-READ.
       1090-DONE.
           CLOSE COMM-FILE.

       2000-REPORT SECTION.
       2000-START.
           PERFORM 2100-RETURN THRU 2100-EXIT.
           IF WS-SORT-EOF = 'Y'
               GO TO 2000-EXIT.
           PERFORM 3000-NEW-AGENT THRU 3000-EXIT.
           PERFORM 2200-ONE-TRANS THRU 2200-EXIT
               UNTIL WS-SORT-EOF = 'Y'.
           PERFORM 4000-AGENT-TOTAL THRU 4000-EXIT.
           MOVE 'TOTAL OF ALL AGENTS' TO SL-TEXT.
           MOVE WS-GRAND-TOTAL TO SL-AMOUNT.
           WRITE PRINT-LINE FROM WS-SUM-LINE AFTER ADVANCING 3 LINES.
           GO TO 2000-EXIT.
       2100-RETURN.
           RETURN SORT-FILE AT END MOVE 'Y' TO WS-SORT-EOF.
       2100-EXIT.
           EXIT.
       2200-ONE-TRANS.
           IF SW-AGENT-NO NOT = WS-PREV-AGENT
               PERFORM 4000-AGENT-TOTAL THRU 4000-EXIT
               PERFORM 3000-NEW-AGENT THRU 3000-EXIT.
           PERFORM 5000-FIND-RATE THRU 5000-EXIT.
           COMPUTE WS-COMMISSION ROUNDED = SW-AMOUNT * WS-RATE.
           IF SW-CHARGE-BACK
               NEXT SENTENCE
           ELSE
               ADD SW-AMOUNT TO WS-AGENT-PREMIUM AG-YTD-PREMIUM.
           ADD WS-COMMISSION TO WS-AGENT-COMM.
           MOVE SW-POLICY-NO   TO DT-POLICY.
           MOVE SW-TYPE        TO DT-TYPE.
           MOVE SW-AMOUNT      TO DT-AMOUNT.
           COMPUTE DT-RATE = WS-RATE * 100.
           MOVE WS-COMMISSION  TO DT-COMMISSION.
           WRITE PRINT-LINE FROM WS-DETAIL-LINE AFTER ADVANCING 1 LINE.
           PERFORM 2100-RETURN THRU 2100-EXIT.
       2200-EXIT.
           EXIT.
       3000-NEW-AGENT.
           MOVE SW-AGENT-NO TO WS-PREV-AGENT AG-AGENT-NO.
           MOVE ZERO TO WS-AGENT-PREMIUM WS-AGENT-COMM.
           MOVE 'Y' TO WS-AGENT-FOUND.
           READ AGENT-MASTER
               INVALID KEY MOVE 'N' TO WS-AGENT-FOUND.
           IF WS-AGENT-FOUND = 'N'
               INITIALIZE AG-AGENT-REC
               MOVE WS-PREV-AGENT TO AG-AGENT-NO
               MOVE '** NOT ON AGENT MASTER **' TO AG-NAME.
           ADD 1 TO RH-PAGE-CNT.
           MOVE RH-PAGE-CNT TO RH-PAGE-NO.
           WRITE PRINT-LINE FROM RH-HEADING-1 AFTER ADVANCING PAGE.
           MOVE AG-AGENT-NO TO AL-AGENT.
           MOVE AG-NAME     TO AL-NAME.
           WRITE PRINT-LINE FROM WS-AGENT-LINE AFTER ADVANCING 2 LINES.
       3000-EXIT.
           EXIT.
       4000-AGENT-TOTAL.
           PERFORM 4100-BONUS THRU 4100-EXIT.
           COMPUTE WS-NET = WS-AGENT-COMM + WS-BONUS - AG-DEBIT-BALANCE.
           MOVE 'LOSS RATIO BONUS' TO SL-TEXT.
           MOVE WS-BONUS TO SL-AMOUNT.
           WRITE PRINT-LINE FROM WS-SUM-LINE AFTER ADVANCING 2 LINES.
           PERFORM 4200-WITHHOLD THRU 4200-EXIT.
           MOVE WS-NET TO SL-AMOUNT.
           WRITE PRINT-LINE FROM WS-SUM-LINE AFTER ADVANCING 1 LINE.
           ADD WS-NET TO WS-GRAND-TOTAL.
           IF WS-AGENT-FOUND = 'Y'
               ADD WS-NET TO AG-YTD-COMMISSION
               REWRITE AG-AGENT-REC.
       4000-EXIT.
           EXIT.
       4100-BONUS.
      *    5 PERCENT OF THE COMMISSION FOR A GOOD BOOK, 10 FOR ELITE
           MOVE ZERO TO WS-BONUS.
           IF WS-AGENT-COMM > ZERO
               IF AG-LOSS-RATIO < .500
                   IF AG-YTD-PREMIUM > 25000
                       IF AG-ELITE
                           COMPUTE WS-BONUS ROUNDED
                                 = WS-AGENT-COMM * .10
                       ELSE
                           COMPUTE WS-BONUS ROUNDED
                                 = WS-AGENT-COMM * .05.
       4100-EXIT.
           EXIT.
       4200-WITHHOLD.
           MOVE 'COMMISSION PAYABLE' TO SL-TEXT.
           MOVE ZERO TO AG-DEBIT-BALANCE.
           IF WS-NET < ZERO
               MOVE 'CARRIED TO NEXT MONTH AS DEBIT' TO SL-TEXT
               SUBTRACT WS-NET FROM ZERO GIVING AG-DEBIT-BALANCE
               MOVE ZERO TO WS-NET
               GO TO 4200-EXIT.
      *    NO LICENCE, NO MONEY: HELD AS A NEGATIVE DEBIT
           IF AG-TERMINATED OR AG-SUSPENDED
                            OR AG-LICENSE-EXP < WS-TODAY
                            OR WS-AGENT-FOUND = 'N'
               MOVE 'WITHHELD - LICENCE OR STATUS' TO SL-TEXT
               SUBTRACT WS-NET FROM ZERO GIVING AG-DEBIT-BALANCE
               MOVE ZERO TO WS-NET.
       4200-EXIT.
           EXIT.
       5000-FIND-RATE.
      *    RENEWALS AND CHARGEBACKS GO AT THE RENEWAL RATE
           MOVE ZERO TO WS-RATE.
           SEARCH ALL WS-LINE-ENTRY
               AT END GO TO 5000-EXIT
               WHEN LR-LINE (LR-IX) = SW-POLICY-NO (1:2)
                   MOVE LR-RENEWAL (LR-IX) TO WS-RATE.
           IF SW-NEW-BUSINESS
               MOVE LR-NEW (LR-IX) TO WS-RATE.
      *    THE TIER OF THE YEAR'S PREMIUM RAISES THE RATE
           SET TI-IX TO 1.
           SEARCH WS-TIER
               WHEN AG-YTD-PREMIUM NOT > TI-UP-TO (TI-IX)
                   ADD TI-ADD (TI-IX) TO WS-RATE.
           IF AG-ELITE
               ADD .0100 TO WS-RATE
           ELSE
               IF AG-PREFERRED
                   ADD .0050 TO WS-RATE.
       5000-EXIT.
           EXIT.
       2000-EXIT.
           EXIT.

       9000-COMMON SECTION.
       COPY PBABEND.
