       IDENTIFICATION DIVISION.
       PROGRAM-ID.    PBINQ01.
       AUTHOR.        D LINDQVIST.
       DATE-WRITTEN.  2003-11-12.
      *----------------------------------------------------------------*
      * TRANSACTION PBI1: POLICY INQUIRY, PAYMENT AND REINSTATEMENT.
      * ENTER SHOWS THE POLICY, PF5 TAKES A PAYMENT, PF3/CLEAR ENDS.
      *
      * 2003-11 DL  FIRST VERSION (INQUIRY)
      * 2006-04 DL  PAYMENT BY TELEPHONE
      * 2012-08 DL  REINSTATEMENT WITHIN 30 DAYS OF THE LAPSE
      *----------------------------------------------------------------*
       ENVIRONMENT DIVISION.
       DATA DIVISION.
       WORKING-STORAGE SECTION.
       77  WS-RESP                     PIC S9(08)    COMP  VALUE ZERO.
       77  WS-ABSTIME                  PIC S9(15)    COMP-3.
       77  WS-TODAY                    PIC 9(08).
       77  WS-BIG-PAYMENT              PIC S9(07)V99 COMP-3
                                                     VALUE 10000.00.
       01  WS-WORK.
           05  WS-AMOUNT-TEXT          PIC X(12).
           05  WS-PAY-LEFT             PIC S9(07)V99 COMP-3.
           05  WS-TOTAL-DUE            PIC S9(07)V99 COMP-3 VALUE 0.
           05  WS-DAYS-LAPSED          PIC S9(07)    COMP-3.
           05  WS-MESSAGE              PIC X(60)     VALUE SPACES.
           05  WS-CURSOR-HOME          PIC S9(04)    COMP  VALUE -1.
           05  WS-ATTR-BRIGHT          PIC X(01)     VALUE 'H'.
       COPY PBMAP01.
       COPY PBCOMMA.
       COPY PBFEELK.
       COPY PBPOLMS REPLACING ==:TAG:== BY ==PM==.
       LINKAGE SECTION.
       01  DFHCOMMAREA.
           05  LK-COMMAREA             PIC X(21).
       PROCEDURE DIVISION.
       0000-MAIN.
           EXEC CICS HANDLE CONDITION
                MAPFAIL(8100-NO-DATA)
                NOTFND(8200-NOT-FOUND)
                ERROR(8900-FAILURE)
           END-EXEC.
           EXEC CICS HANDLE AID
                CLEAR(9000-END-SESSION)
                PF3(9000-END-SESSION)
                PF5(3000-PAYMENT)
           END-EXEC.
           IF EIBCALEN = ZERO
               GO TO 1000-FIRST-SCREEN
           END-IF.
           MOVE LK-COMMAREA TO CA-COMMAREA.
           EXEC CICS ASKTIME ABSTIME(WS-ABSTIME) END-EXEC.
           EXEC CICS FORMATTIME ABSTIME(WS-ABSTIME)
                YYYYMMDD(WS-TODAY)
           END-EXEC.
           EXEC CICS RECEIVE MAP('PBM1') MAPSET('PBMS01')
                INTO(PBM1I)
           END-EXEC.
           GO TO 2000-INQUIRY.
       1000-FIRST-SCREEN.
           MOVE LOW-VALUES TO PBM1O.
           MOVE 'ENTER A POLICY NUMBER' TO MSGO.
           MOVE WS-CURSOR-HOME TO POLNOL.
           INITIALIZE CA-COMMAREA.
           SET CA-FIRST-TIME TO TRUE.
           EXEC CICS SEND MAP('PBM1') MAPSET('PBMS01')
                FROM(PBM1O) ERASE CURSOR
           END-EXEC.
           EXEC CICS RETURN TRANSID('PBI1')
                COMMAREA(CA-COMMAREA) LENGTH(21)
           END-EXEC.
       2000-INQUIRY.
           IF POLNOL = ZERO OR POLNOI = SPACES
               SET CA-FIRST-TIME TO TRUE
               MOVE 'POLICY NUMBER IS MISSING' TO WS-MESSAGE
               GO TO 7000-SHOW
           END-IF.
           MOVE POLNOI TO CA-POLICY-NO.
           EXEC CICS READ DATASET('POLMAST')
                INTO(PM-POLICY-REC)
                RIDFLD(CA-POLICY-NO)
           END-EXEC.
           SET CA-POLICY-SHOWN TO TRUE.
           PERFORM 2100-TOTAL-DUE THRU 2100-EXIT.
           EVALUATE TRUE
               WHEN PM-LAPSED AND WS-DAYS-LAPSED > 30
                   MOVE 'LAPSED - TOO LATE TO REINSTATE' TO WS-MESSAGE
               WHEN PM-LAPSED
                   MOVE 'LAPSED - PF5 PAYS AND REINSTATES' TO WS-MESSAGE
               WHEN PM-BILLABLE AND WS-TOTAL-DUE > ZERO
                   MOVE 'PF5 TO TAKE A PAYMENT' TO WS-MESSAGE
           END-EVALUATE.
           GO TO 7000-SHOW.
       2100-TOTAL-DUE.
      *    BILLED AND NOT PAID, PLUS FEES; FOR A LAPSED POLICY ALSO
      *    THE REINSTATEMENT FEE
           MOVE ZERO TO WS-DAYS-LAPSED.
           COMPUTE WS-TOTAL-DUE = PM-AMT-BILLED - PM-AMT-PAID
                                + PM-FEE-BALANCE.
           IF NOT PM-LAPSED
               GO TO 2100-EXIT
           END-IF.
           COMPUTE WS-DAYS-LAPSED =
                   FUNCTION INTEGER-OF-DATE (WS-TODAY)
                 - FUNCTION INTEGER-OF-DATE (PM-CANCEL-DATE).
           INITIALIZE FL-FEE-PARMS.
           SET FL-REINSTATE TO TRUE.
           MOVE PM-STATE       TO FL-STATE.
           MOVE WS-DAYS-LAPSED TO FL-DAYS-LATE.
           MOVE PM-LATE-COUNT  TO FL-PRIOR-COUNT.
           EXEC CICS LINK PROGRAM('PBFEE01')
                COMMAREA(FL-FEE-PARMS)
                LENGTH(LENGTH OF FL-FEE-PARMS)
           END-EXEC.
           ADD FL-FEE TO WS-TOTAL-DUE.
       2100-EXIT.
           EXIT.
       3000-PAYMENT.
           IF CA-FIRST-TIME
               MOVE 'SHOW A POLICY FIRST' TO WS-MESSAGE
               GO TO 7000-SHOW
           END-IF.
           EXEC CICS READ DATASET('POLMAST') UPDATE
                INTO(PM-POLICY-REC)
                RIDFLD(CA-POLICY-NO)
           END-EXEC.
           PERFORM 2100-TOTAL-DUE THRU 2100-EXIT.
           PERFORM 3100-CHECK-AMOUNT THRU 3100-EXIT.
           IF WS-MESSAGE = SPACES
               PERFORM 3200-ACCEPT-PAYMENT THRU 3200-EXIT
           END-IF.
           IF WS-MESSAGE NOT = SPACES
               EXEC CICS UNLOCK DATASET('POLMAST') END-EXEC
               GO TO 7000-SHOW
           END-IF.
           PERFORM 3300-POST-PAYMENT.
           EXEC CICS REWRITE DATASET('POLMAST')
                FROM(PM-POLICY-REC)
                RESP(WS-RESP)
           END-EXEC.
           IF WS-RESP NOT = ZERO
               GO TO 8900-FAILURE
           END-IF.
           PERFORM 2100-TOTAL-DUE THRU 2100-EXIT.
           MOVE 'PAYMENT POSTED' TO WS-MESSAGE.
           SET CA-POLICY-SHOWN TO TRUE.
           GO TO 7000-SHOW.
       3100-CHECK-AMOUNT.
           INSPECT PAYAMTI REPLACING ALL LOW-VALUE BY SPACE.
           MOVE PAYAMTI TO WS-AMOUNT-TEXT.
           INSPECT WS-AMOUNT-TEXT
               CONVERTING '0123456789.,' TO '            '.
           IF PAYAMTL = ZERO OR WS-AMOUNT-TEXT NOT = SPACES
               MOVE 'AMOUNT IS NOT A NUMBER' TO WS-MESSAGE
               GO TO 3100-EXIT
           END-IF.
           COMPUTE WS-PAY-LEFT = FUNCTION NUMVAL-C (PAYAMTI).
           IF WS-PAY-LEFT < 1.00
               MOVE 'AMOUNT MUST BE 1.00 OR MORE' TO WS-MESSAGE
           END-IF.
           IF WS-PAY-LEFT > WS-BIG-PAYMENT
               MOVE 'OVER 10,000.00 - REFER TO CASHIER' TO WS-MESSAGE
           END-IF.
       3100-EXIT.
           EXIT.
       3200-ACCEPT-PAYMENT.
           IF PM-CANCELLED OR PM-EXPIRED
               MOVE 'POLICY IS CLOSED - NO PAYMENT' TO WS-MESSAGE
               GO TO 3200-EXIT
           END-IF.
      *    REINSTATEMENT TAKES THE WHOLE DEBT, IN TIME AND NOT TOO OFTEN
           IF PM-LAPSED
               IF FL-RETURN-CODE NOT = ZERO
                   MOVE 'REINSTATEMENT NOT ALLOWED' TO WS-MESSAGE
               ELSE
                   IF WS-PAY-LEFT < WS-TOTAL-DUE
                       MOVE 'FULL AMOUNT NEEDED TO REINSTATE'
                           TO WS-MESSAGE
                   ELSE
                       ADD FL-FEE TO PM-FEE-BALANCE
                       SET PM-ACTIVE TO TRUE
                       MOVE ZERO   TO PM-CANCEL-DATE PM-DUNN-LEVEL
                       MOVE SPACES TO PM-CANCEL-REASON
                   END-IF
               END-IF
               GO TO 3200-EXIT
           END-IF.
      *    AN OVERPAYMENT MUST BE CONFIRMED BY A SECOND PF5
           IF WS-PAY-LEFT > WS-TOTAL-DUE
              AND NOT (CA-CONFIRM-PAYMENT
                       AND CA-PAY-AMOUNT = WS-PAY-LEFT)
               SET CA-CONFIRM-PAYMENT TO TRUE
               MOVE WS-PAY-LEFT TO CA-PAY-AMOUNT
               MOVE 'MORE THAN IS DUE - PF5 AGAIN TO CONFIRM'
                   TO WS-MESSAGE
           END-IF.
       3200-EXIT.
           EXIT.
       3300-POST-PAYMENT.
           IF WS-PAY-LEFT > PM-FEE-BALANCE
               SUBTRACT PM-FEE-BALANCE FROM WS-PAY-LEFT
               MOVE ZERO TO PM-FEE-BALANCE
           ELSE
               SUBTRACT WS-PAY-LEFT FROM PM-FEE-BALANCE
               MOVE ZERO TO WS-PAY-LEFT
           END-IF.
           ADD WS-PAY-LEFT TO PM-AMT-PAID.
           IF WS-PAY-LEFT NOT < PM-PAST-DUE
               MOVE ZERO TO PM-PAST-DUE
               SET PM-ACTIVE TO TRUE
           ELSE
               SUBTRACT WS-PAY-LEFT FROM PM-PAST-DUE
           END-IF.
       7000-SHOW.
           MOVE LOW-VALUES TO PBM1O.
           IF NOT CA-FIRST-TIME
               MOVE PM-POLICY-NO     TO POLNOO
               MOVE SPACES           TO NAMEO
               STRING PM-FIRST-NAME DELIMITED BY '  '
                      ' '           DELIMITED BY SIZE
                      PM-LAST-NAME  DELIMITED BY SIZE
                   INTO NAMEO
               PERFORM 7100-STATUS-TEXT
               MOVE PM-TOTAL-PREM    TO TOTALO
               MOVE PM-PAST-DUE      TO PASTDUEO
               MOVE PM-FEE-BALANCE   TO FEESO
           END-IF.
           IF CA-CONFIRM-PAYMENT
               MOVE CA-PAY-AMOUNT TO PAYAMTO
           END-IF.
           MOVE WS-TOTAL-DUE TO CA-TOTAL-DUE.
           MOVE WS-MESSAGE TO MSGO.
           MOVE WS-CURSOR-HOME TO POLNOL.
           EXEC CICS SEND MAP('PBM1') MAPSET('PBMS01')
                FROM(PBM1O) ERASE CURSOR
           END-EXEC.
           EXEC CICS RETURN TRANSID('PBI1')
                COMMAREA(CA-COMMAREA) LENGTH(21)
           END-EXEC.
       7100-STATUS-TEXT.
           EVALUATE PM-STATUS
               WHEN 'A'   MOVE 'ACTIVE'    TO STATUSO
               WHEN 'G'   MOVE 'IN GRACE'  TO STATUSO
               WHEN 'L'   MOVE 'LAPSED'    TO STATUSO
                          MOVE WS-ATTR-BRIGHT TO STATUSA
               WHEN OTHER MOVE 'CLOSED'    TO STATUSO
           END-EVALUATE.
       8100-NO-DATA.
           GO TO 1000-FIRST-SCREEN.
       8200-NOT-FOUND.
           SET CA-FIRST-TIME TO TRUE.
           MOVE 'POLICY NOT FOUND' TO WS-MESSAGE.
           GO TO 7000-SHOW.
       8900-FAILURE.
           EXEC CICS ABEND ABCODE('PBI9') END-EXEC.
       9000-END-SESSION.
           EXEC CICS SEND CONTROL ERASE FREEKB END-EXEC.
           EXEC CICS RETURN END-EXEC.
           GOBACK.
