       IDENTIFICATION DIVISION.
       PROGRAM-ID.    PBTAX01.
       AUTHOR.        M OKAFOR.
       DATE-WRITTEN.  1994-04-02.
      *----------------------------------------------------------------*
      * PREMIUM TAX, FIRE MARSHAL LEVY AND STAMPING FEE BY STATE.
      * CALLED BY PBRATE01 AND PBRNWL1.
      *
      * RETURN CODE  00 OK   10 STATE NOT WRITTEN   20 BAD PREMIUM
      *
      * 1994-04 MO  FIRST VERSION
      * 2009-12 DL  RATES OF 2010; SENIOR RELIEF IN FL AND PA
      * 2019-12 PA  RATES OF 2020
      *----------------------------------------------------------------*
       ENVIRONMENT DIVISION.
       DATA DIVISION.
       WORKING-STORAGE SECTION.
      *    STATE, AUTO RATE, PROPERTY RATE, FIRE LEVY, STAMPING FEE
      *    THE STATES STAND IN ALPHABETICAL ORDER (SEARCH ALL)
       01  TX-TABLE-VALUES.
           05  FILLER        PIC X(18)  VALUE 'CA0235023500000000'.
           05  FILLER        PIC X(18)  VALUE 'CT0150017500000200'.
           05  FILLER        PIC X(18)  VALUE 'FL0175017501000400'.
           05  FILLER        PIC X(18)  VALUE 'GA0225022500500000'.
           05  FILLER        PIC X(18)  VALUE 'IL0050010001000300'.
           05  FILLER        PIC X(18)  VALUE 'MA0228022800000000'.
           05  FILLER        PIC X(18)  VALUE 'NJ0210021000750000'.
           05  FILLER        PIC X(18)  VALUE 'NY0200020001250250'.
           05  FILLER        PIC X(18)  VALUE 'OH0140014000750000'.
           05  FILLER        PIC X(18)  VALUE 'PA0200020000000500'.
           05  FILLER        PIC X(18)  VALUE 'TX0160016000800150'.
           05  FILLER        PIC X(18)  VALUE 'VA0225022501000000'.
       01  TX-TABLE REDEFINES TX-TABLE-VALUES.
           05  TX-ENTRY OCCURS 12 TIMES
                        ASCENDING KEY IS TX-STATE
                        INDEXED BY TX-IX.
               10  TX-STATE             PIC X(02).
               10  TX-AUTO-RATE         PIC V9(04).
               10  TX-PROP-RATE         PIC V9(04).
               10  TX-LEVY-RATE         PIC V9(04).
               10  TX-STAMP-FEE         PIC 99V99.
       01  WS-WORK.
           05  WS-RATE                  PIC SV9(04)   COMP-3.
           05  WS-TAXABLE               PIC S9(07)V99 COMP-3.
           05  WS-LEVY-CAP              PIC S9(03)V99 COMP-3
                                                      VALUE 75.00.
       LINKAGE SECTION.
       COPY PBTAXLK.
       PROCEDURE DIVISION USING TL-TAX-PARMS.
       0000-MAIN.
           MOVE ZERO TO TL-TAX
                        TL-LEVY
                        TL-STAMP
                        TL-RETURN-CODE.
           IF TL-PREMIUM < ZERO
               SET TL-BAD-PREMIUM TO TRUE
               GO TO 0000-EXIT
           END-IF.
           SEARCH ALL TX-ENTRY
               AT END
                   SET TL-STATE-UNKNOWN TO TRUE
               WHEN TX-STATE (TX-IX) = TL-STATE
                   PERFORM 1000-PREMIUM-TAX
                   PERFORM 2000-FIRE-LEVY
                   MOVE TX-STAMP-FEE (TX-IX) TO TL-STAMP
           END-SEARCH.
       0000-EXIT.
           GOBACK.

       1000-PREMIUM-TAX.
           IF TL-LINE = 'PA'
               MOVE TX-AUTO-RATE (TX-IX) TO WS-RATE
           ELSE
               MOVE TX-PROP-RATE (TX-IX) TO WS-RATE
           END-IF.
           MOVE TL-PREMIUM TO WS-TAXABLE.
           PERFORM 1100-SENIOR-RELIEF.
           COMPUTE TL-TAX ROUNDED = WS-TAXABLE * WS-RATE.

       1100-SENIOR-RELIEF.
      *    THE FIRST 500 OF PREMIUM IS FREE OF TAX FOR THE ELDERLY
           IF TL-INSURED-AGE NOT < 65
              AND (TL-STATE = 'FL' OR 'PA')
              AND TL-LINE NOT = 'PA'
               SUBTRACT 500.00 FROM WS-TAXABLE
               IF WS-TAXABLE < ZERO
                   MOVE ZERO TO WS-TAXABLE
               END-IF
           END-IF.

       2000-FIRE-LEVY.
      *    PROPERTY LINES ONLY, AND NEVER MORE THAN THE CAP
           IF TL-LINE = 'HO' OR TL-LINE = 'RN'
               COMPUTE TL-LEVY ROUNDED =
                       TL-PREMIUM * TX-LEVY-RATE (TX-IX)
               IF TL-LEVY > WS-LEVY-CAP
                   MOVE WS-LEVY-CAP TO TL-LEVY
               END-IF
           END-IF.
