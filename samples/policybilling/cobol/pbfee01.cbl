       IDENTIFICATION DIVISION.
       PROGRAM-ID.    PBFEE01.
       AUTHOR.        M OKAFOR.
       DATE-WRITTEN.  1995-02-14.
      *----------------------------------------------------------------*
      * FEE ROUTINE: LATE FEE, RETURNED PAYMENT FEE, REINSTATEMENT FEE
      * AND INSTALMENT FEE.
      * LINKED ON-LINE BY PBINQ01 AND CALLED IN BATCH BY PBBILL01.
      * THE FIRST PARAMETER IS THE INTERFACE BLOCK THAT THE ON-LINE
      * MONITOR HANDS OVER; BATCH CALLERS PASS SPACES BY CONTENT.
      *
      * 1995-02 MO  FIRST VERSION
      * 2001-07 DL  LOYALTY WAIVER OF THE FIRST LATE FEE
      * 2014-01 PA  STATE CAPS ON THE LATE FEE
      *----------------------------------------------------------------*
       ENVIRONMENT DIVISION.
       DATA DIVISION.
       WORKING-STORAGE SECTION.
       01  WS-CONSTANTS.
           05  WS-LATE-FREE-DAYS       PIC S9(03)    COMP-3 VALUE 5.
           05  WS-LATE-MINIMUM         PIC S9(03)V99 COMP-3 VALUE 10.00.
           05  WS-LATE-PERCENT         PIC V999      COMP-3 VALUE .050.
           05  WS-LATE-CAP             PIC S9(03)V99 COMP-3 VALUE 35.00.
           05  WS-NSF-BASE             PIC S9(03)V99 COMP-3 VALUE 20.00.
           05  WS-NSF-CAP              PIC S9(03)V99 COMP-3 VALUE 40.00.
           05  WS-REINST-BASE          PIC S9(03)V99 COMP-3 VALUE 25.00.
       LINKAGE SECTION.
       01  LK-INTERFACE-BLOCK          PIC X(85).
       COPY PBFEELK.
       PROCEDURE DIVISION USING LK-INTERFACE-BLOCK
                                FL-FEE-PARMS.
       0000-MAIN.
           MOVE ZERO TO FL-FEE
                        FL-RETURN-CODE.
           MOVE 'N'  TO FL-WAIVED.
           EVALUATE TRUE
               WHEN FL-LATE
                   PERFORM 1000-LATE-FEE THRU 1000-EXIT
               WHEN FL-NSF
                   PERFORM 2000-NSF-FEE
               WHEN FL-REINSTATE
                   PERFORM 3000-REINSTATEMENT-FEE
               WHEN FL-INSTALMENT
                   PERFORM 4000-INSTALMENT-FEE
               WHEN OTHER
                   MOVE 10 TO FL-RETURN-CODE
           END-EVALUATE.
           GOBACK.

       1000-LATE-FEE.
           IF FL-DAYS-LATE NOT > WS-LATE-FREE-DAYS
               GO TO 1000-EXIT
           END-IF.
      *    AUTOMATIC WITHDRAWALS ARE OUR OWN TIMING, NEVER LATE
           IF FL-BILL-METHOD = 'E'
               MOVE 'Y' TO FL-WAIVED
               GO TO 1000-EXIT
           END-IF.
      *    FIRST LATE PAYMENT OF A CUSTOMER OF FIVE YEARS OR MORE
           IF FL-PRIOR-COUNT = ZERO AND FL-YEARS-INSURED NOT < 5
               MOVE 'Y' TO FL-WAIVED
               GO TO 1000-EXIT
           END-IF.
           COMPUTE FL-FEE ROUNDED = FL-AMOUNT * WS-LATE-PERCENT.
           IF FL-FEE < WS-LATE-MINIMUM
               MOVE WS-LATE-MINIMUM TO FL-FEE
           END-IF.
           PERFORM 1100-STATE-CAP.
       1000-EXIT.
           EXIT.

       1100-STATE-CAP.
           EVALUATE FL-STATE
               WHEN 'NY'
               WHEN 'MA'
                   IF FL-FEE > 10.00
                       MOVE 10.00 TO FL-FEE
                   END-IF
               WHEN 'CA'
                   IF FL-FEE > 15.00
                       MOVE 15.00 TO FL-FEE
                   END-IF
               WHEN OTHER
                   IF FL-FEE > WS-LATE-CAP
                       MOVE WS-LATE-CAP TO FL-FEE
                   END-IF
           END-EVALUATE.

       2000-NSF-FEE.
      *    TWENTY DOLLARS, TEN MORE FOR EACH EARLIER RETURNED PAYMENT
           COMPUTE FL-FEE = WS-NSF-BASE + 10.00 * FL-PRIOR-COUNT.
           IF FL-FEE > WS-NSF-CAP
               MOVE WS-NSF-CAP TO FL-FEE
           END-IF.
           IF FL-STATE = 'NY' AND FL-FEE > 20.00
               MOVE 20.00 TO FL-FEE
           END-IF.

       3000-REINSTATEMENT-FEE.
           IF FL-DAYS-LATE > 30
               MOVE 20 TO FL-RETURN-CODE
           ELSE
               IF FL-PRIOR-COUNT > 2
                   MOVE 30 TO FL-RETURN-CODE
               ELSE
                   COMPUTE FL-FEE = WS-REINST-BASE
                                  + 5.00 * FL-PRIOR-COUNT
               END-IF
           END-IF.

       4000-INSTALMENT-FEE.
           EVALUATE FL-PAY-PLAN ALSO FL-BILL-METHOD
               WHEN 'A' ALSO ANY
                   MOVE ZERO TO FL-FEE
               WHEN ANY ALSO 'E'
                   MOVE 1.00 TO FL-FEE
               WHEN 'M' ALSO ANY
                   MOVE 5.00 TO FL-FEE
               WHEN 'Q' ALSO ANY
                   MOVE 4.00 TO FL-FEE
               WHEN OTHER
                   MOVE 3.00 TO FL-FEE
           END-EVALUATE.
