       IDENTIFICATION DIVISION.
       PROGRAM-ID.    PBRNWL1.
       AUTHOR.        P ARUNDEL.
       DATE-WRITTEN.  2017-02-20.
      *----------------------------------------------------------------*
      * RENEWAL OFFERS. READS THE POLICIES THAT EXPIRE WITHIN 45 DAYS
      * FROM THE DATA WAREHOUSE COPY OF THE POLICY FILE, DECIDES
      * WHETHER TO RENEW, PRICES THE OFFER AND STORES IT.
      *
      * 2017-02 PA  FIRST VERSION
      * 2020-10 PA  INCREASE CAPPED AT 12 PERCENT
      *----------------------------------------------------------------*
       ENVIRONMENT DIVISION.
       DATA DIVISION.
       WORKING-STORAGE SECTION.
           EXEC SQL INCLUDE SQLCA END-EXEC.
           EXEC SQL INCLUDE PBDCLPL END-EXEC.
           EXEC SQL BEGIN DECLARE SECTION END-EXEC.
       01  HV-RUN.
           05  HV-TODAY                PIC X(08).
           05  HV-HORIZON              PIC X(08).
           05  HV-OFFER-PREMIUM        PIC S9(7)V99  COMP-3.
           05  HV-OFFER-TAX            PIC S9(7)V99  COMP-3.
           05  HV-AGENT-LEVEL          PIC X(01).
           05  HV-AGENT-IND            PIC S9(4)     COMP.
           EXEC SQL END DECLARE SECTION END-EXEC.
           EXEC SQL
               DECLARE RENEWAL_CSR CURSOR WITH HOLD FOR
               SELECT POLICY_NO, LINE_CODE, STATE_CODE, AGENT_NO,
                      INSURED_NAME, INSURED_AGE, EXPIRY_DATE,
                      CURRENT_PREMIUM, CLAIM_COUNT, CLAIM_PAID,
                      LATE_COUNT, RENEWAL_STATUS
                 FROM PB_POLICY
                WHERE EXPIRY_DATE BETWEEN :HV-TODAY AND :HV-HORIZON
                ORDER BY STATE_CODE, POLICY_NO
                  FOR UPDATE OF RENEWAL_STATUS
           END-EXEC.
       01  WS-COUNTERS.
           05  WS-READ                 PIC S9(07)    COMP-3 VALUE 0.
           05  WS-OFFERED              PIC S9(07)    COMP-3 VALUE 0.
           05  WS-REFUSED              PIC S9(07)    COMP-3 VALUE 0.
           05  WS-SINCE-COMMIT         PIC S9(04)    COMP   VALUE 0.
       01  WS-WORK.
           05  WS-LOSS-RATIO           PIC S9(03)V999 COMP-3.
           05  WS-CHANGE-PCT           PIC S9V999    COMP-3.
           05  WS-MAX-INCREASE         PIC S9V999    COMP-3 VALUE .120.
           05  WS-DECISION             PIC X(01).
               88  WS-RENEW                          VALUE 'R'.
               88  WS-NON-RENEW                      VALUE 'N'.
               88  WS-REVIEW                         VALUE 'U'.
           05  WS-DISPLAY-CODE         PIC -(8)9.
       COPY PBDATLK.
       COPY PBTAXLK.
       PROCEDURE DIVISION.
       0000-MAIN.
           PERFORM 1000-OPEN-CURSOR.
           PERFORM 2000-FETCH.
           PERFORM UNTIL SQLCODE = 100
               ADD 1 TO WS-READ
               PERFORM 3000-DECIDE THRU 3000-EXIT
               IF WS-RENEW
                   PERFORM 4000-PRICE-OFFER
                   PERFORM 5000-STORE-OFFER
               ELSE
                   ADD 1 TO WS-REFUSED
               END-IF
               PERFORM 6000-MARK-POLICY
               PERFORM 2000-FETCH
           END-PERFORM.
           EXEC SQL CLOSE RENEWAL_CSR END-EXEC.
           EXEC SQL COMMIT END-EXEC.
           DISPLAY 'PBRNWL1 READ ' WS-READ ' OFFERED ' WS-OFFERED
                   ' NOT RENEWED ' WS-REFUSED.
           STOP RUN.

       1000-OPEN-CURSOR.
           MOVE FUNCTION CURRENT-DATE (1:8) TO HV-TODAY DL-DATE-1.
           SET DL-ADD-DAYS TO TRUE.
           MOVE 45 TO DL-NUMBER.
           CALL 'PBDATE1' USING DL-DATE-PARMS.
           MOVE DL-DATE-2 TO HV-HORIZON.
           EXEC SQL OPEN RENEWAL_CSR END-EXEC.
           IF SQLCODE NOT = ZERO
               PERFORM 9000-SQL-ERROR
           END-IF.

       2000-FETCH.
           EXEC SQL
               FETCH RENEWAL_CSR
                INTO :HV-POLICY-NO, :HV-LINE-CODE, :HV-STATE-CODE,
                     :HV-AGENT-NO, :HV-INSURED-NAME, :HV-INSURED-AGE,
                     :HV-EXPIRY-DATE, :HV-CURRENT-PREMIUM,
                     :HV-CLAIM-COUNT, :HV-CLAIM-PAID, :HV-LATE-COUNT,
                     :HV-RENEWAL-STATUS:HV-RENEWAL-IND
           END-EXEC.
           EVALUATE TRUE
               WHEN SQLCODE = ZERO
               WHEN SQLCODE = 100
                   CONTINUE
               WHEN OTHER
                   PERFORM 9000-SQL-ERROR
           END-EVALUATE.

       3000-DECIDE.
           SET WS-RENEW TO TRUE.
           IF HV-CURRENT-PREMIUM > ZERO
               COMPUTE WS-LOSS-RATIO ROUNDED =
                       HV-CLAIM-PAID / HV-CURRENT-PREMIUM
                   ON SIZE ERROR
                       MOVE 999 TO WS-LOSS-RATIO
               END-COMPUTE
           ELSE
               SET WS-REVIEW TO TRUE
               GO TO 3000-EXIT
           END-IF.
      *    THREE CLAIMS OR FOUR TIMES THE PREMIUM: NO RENEWAL
           IF HV-CLAIM-COUNT > 2 OR WS-LOSS-RATIO > 4
               SET WS-NON-RENEW TO TRUE
      *    NEW YORK ALLOWS IT ONLY AFTER A REVIEW BY HAND
               IF HV-STATE-CODE = 'NY'
                   SET WS-REVIEW TO TRUE
               END-IF
               GO TO 3000-EXIT
           END-IF.
           IF HV-LATE-COUNT > 3
               PERFORM 3100-AGENT-LEVEL
               IF HV-AGENT-LEVEL NOT = 'E'
                   SET WS-REVIEW TO TRUE
               END-IF
           END-IF.
       3000-EXIT.
           EXIT.

       3100-AGENT-LEVEL.
           EXEC SQL
               SELECT CONTRACT_LEVEL
                 INTO :HV-AGENT-LEVEL:HV-AGENT-IND
                 FROM PB_AGENT
                WHERE AGENT_NO = :HV-AGENT-NO
           END-EXEC.
           IF SQLCODE = 100 OR HV-AGENT-IND < ZERO
               MOVE 'S' TO HV-AGENT-LEVEL
           ELSE
               IF SQLCODE < ZERO
                   PERFORM 9000-SQL-ERROR
               END-IF
           END-IF.

       4000-PRICE-OFFER.
           MOVE .030 TO WS-CHANGE-PCT.
           EVALUATE HV-CLAIM-COUNT ALSO TRUE
               WHEN 0 ALSO HV-LATE-COUNT = ZERO
                   MOVE -.020 TO WS-CHANGE-PCT
               WHEN 0 ALSO ANY
                   CONTINUE
               WHEN 1 ALSO WS-LOSS-RATIO < .5
                   ADD .040 TO WS-CHANGE-PCT
               WHEN 1 ALSO ANY
                   ADD .080 TO WS-CHANGE-PCT
               WHEN OTHER
                   ADD .150 TO WS-CHANGE-PCT
           END-EVALUATE.
           IF WS-CHANGE-PCT > WS-MAX-INCREASE
               MOVE WS-MAX-INCREASE TO WS-CHANGE-PCT
           END-IF.
           COMPUTE HV-OFFER-PREMIUM ROUNDED =
                   HV-CURRENT-PREMIUM * (1 + WS-CHANGE-PCT).
           MOVE HV-STATE-CODE    TO TL-STATE.
           MOVE HV-LINE-CODE     TO TL-LINE.
           MOVE HV-INSURED-AGE   TO TL-INSURED-AGE.
           MOVE HV-OFFER-PREMIUM TO TL-PREMIUM.
           CALL 'PBTAX01' USING TL-TAX-PARMS.
           ADD TL-TAX TL-LEVY TL-STAMP GIVING HV-OFFER-TAX.

       5000-STORE-OFFER.
           EXEC SQL
               INSERT INTO PB_RENEWAL_OFFER
                      (POLICY_NO, OFFER_DATE, PREMIUM, TAX)
               VALUES (:HV-POLICY-NO, :HV-TODAY,
                       :HV-OFFER-PREMIUM, :HV-OFFER-TAX)
           END-EXEC.
           EVALUATE SQLCODE
               WHEN ZERO
                   ADD 1 TO WS-OFFERED
      *    OFFERED BY AN EARLIER RUN
               WHEN -803
                   CONTINUE
               WHEN OTHER
                   PERFORM 9000-SQL-ERROR
           END-EVALUATE.

       6000-MARK-POLICY.
           MOVE WS-DECISION TO HV-RENEWAL-STATUS.
           EXEC SQL
               UPDATE PB_POLICY
                  SET RENEWAL_STATUS = :HV-RENEWAL-STATUS
                WHERE CURRENT OF RENEWAL_CSR
           END-EXEC.
           IF SQLCODE NOT = ZERO
               PERFORM 9000-SQL-ERROR
           END-IF.
           ADD 1 TO WS-SINCE-COMMIT.
           IF WS-SINCE-COMMIT NOT < 100
               EXEC SQL COMMIT END-EXEC
               MOVE ZERO TO WS-SINCE-COMMIT
           END-IF.

       9000-SQL-ERROR.
           MOVE SQLCODE TO WS-DISPLAY-CODE.
           DISPLAY 'PBRNWL1 SQL ERROR ' WS-DISPLAY-CODE
                   ' POLICY ' HV-POLICY-NO.
           EXEC SQL ROLLBACK END-EXEC.
           MOVE 16 TO RETURN-CODE.
           STOP RUN.
