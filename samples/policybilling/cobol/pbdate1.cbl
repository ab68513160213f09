000010 IDENTIFICATION DIVISION.                                         PBDATE1
000020 PROGRAM-ID.    PBDATE1.                                          PBDATE1
000030 AUTHOR.        J R TOLLEY.                                       PBDATE1
000040 INSTALLATION.  BRINDLEMOOR MUTUAL DATA CENTRE.                   PBDATE1
000050 DATE-WRITTEN.  NOV 1987.                                         PBDATE1
000060 DATE-COMPILED.                                                   PBDATE1
000070******************************************************************PBDATE1
000080*  DATE ROUTINE FOR ALL BATCH SYSTEMS.                           *PBDATE1
000090*  FUNCTION 01 VALIDATE        02 ADD DAYS     03 DAYS BETWEEN   *PBDATE1
000100*           04 ADD MONTHS      05 AGE IN YEARS 06 LONG FORM      *PBDATE1
000110*  87-11 JRT WRITTEN                                             *PBDATE1
000120*  91-06 JRT FUNCTION 06 FOR THE LETTERS SYSTEM                  *PBDATE1
000130*  98-10 MO  CENTURY IN ALL DATES. WINDOW NO LONGER USED         *PBDATE1
000140******************************************************************PBDATE1
000150 ENVIRONMENT DIVISION.                                            PBDATE1
000160 DATA DIVISION.                                                   PBDATE1
000170 WORKING-STORAGE SECTION.                                         PBDATE1
000180 77  WS-ABS-1               PIC S9(9)  COMP-3  VALUE ZERO.        PBDATE1
000190 77  WS-ABS-2               PIC S9(9)  COMP-3  VALUE ZERO.        PBDATE1
000200 77  WS-PRIOR-YEARS         PIC S9(5)  COMP-3  VALUE ZERO.        PBDATE1
000210 77  WS-QUOT                PIC S9(7)  COMP-3  VALUE ZERO.        PBDATE1
000220 77  WS-REM                 PIC S9(5)  COMP-3  VALUE ZERO.        PBDATE1
000230 77  WS-LEAP-SW             PIC X      VALUE 'N'.                 PBDATE1
000240     88  LEAP-YEAR                     VALUE 'Y'.                 PBDATE1
000250 77  WS-MONTHS              PIC S9(7)  COMP-3  VALUE ZERO.        PBDATE1
000260 77  WS-WORK-DAY            PIC S9(5)  COMP-3  VALUE ZERO.        PBDATE1
000270 77  WS-PTR                 PIC S9(4)  COMP    VALUE ZERO.        PBDATE1
000280 01  WS-DATE                PIC 9(8).                             PBDATE1
000290 01  WS-DATE-X REDEFINES WS-DATE.                                 PBDATE1
000300     03  WS-CCYY            PIC 9(4).                             PBDATE1
000310     03  WS-MM              PIC 99.                               PBDATE1
000320     03  WS-DD              PIC 99.                               PBDATE1
000330 01  WS-OLD-DATE.                                                 PBDATE1
000340     03  WS-OLD-CC          PIC 99.                               PBDATE1
000350     03  WS-OLD-YY          PIC 99.                               PBDATE1
000360 01  WS-MONTH-DATA.                                               PBDATE1
000370     03  FILLER             PIC X(14)  VALUE 'JANUARY  31000'.    PBDATE1
000380     03  FILLER             PIC X(14)  VALUE 'FEBRUARY 28031'.    PBDATE1
000390     03  FILLER             PIC X(14)  VALUE 'MARCH    31059'.    PBDATE1
000400     03  FILLER             PIC X(14)  VALUE 'APRIL    30090'.    PBDATE1
000410     03  FILLER             PIC X(14)  VALUE 'MAY      31120'.    PBDATE1
000420     03  FILLER             PIC X(14)  VALUE 'JUNE     30151'.    PBDATE1
000430     03  FILLER             PIC X(14)  VALUE 'JULY     31181'.    PBDATE1
000440     03  FILLER             PIC X(14)  VALUE 'AUGUST   31212'.    PBDATE1
000450     03  FILLER             PIC X(14)  VALUE 'SEPTEMBER30243'.    PBDATE1
000460     03  FILLER             PIC X(14)  VALUE 'OCTOBER  31273'.    PBDATE1
000470     03  FILLER             PIC X(14)  VALUE 'NOVEMBER 30304'.    PBDATE1
000480     03  FILLER             PIC X(14)  VALUE 'DECEMBER 31334'.    PBDATE1
000490 01  WS-MONTH-TABLE REDEFINES WS-MONTH-DATA.                      PBDATE1
000500     03  WS-MONTH OCCURS 12 TIMES.                                PBDATE1
000510         05  WS-MONTH-NAME  PIC X(9).                             PBDATE1
000520         05  WS-MONTH-DAYS  PIC 99.                               PBDATE1
000530         05  WS-MONTH-CUM   PIC 999.                              PBDATE1
000540 01  WS-DAY-EDIT            PIC Z9.                               PBDATE1
000550 LINKAGE SECTION.                                                 PBDATE1
000560 COPY PBDATLK.                                                    PBDATE1
000570 PROCEDURE DIVISION USING DL-DATE-PARMS.                          PBDATE1
000580 0000-MAIN-LINE.                                                  PBDATE1
000590     MOVE ZERO TO DL-RETURN-CODE.                                 PBDATE1
000600     IF DL-FUNCTION NOT NUMERIC                                   PBDATE1
000610         MOVE 99 TO DL-RETURN-CODE                                PBDATE1
000620         GO TO 9999-EXIT.                                         PBDATE1
000630*    DATE 1 IS NEEDED BY EVERY FUNCTION                           PBDATE1
000640     MOVE DL-DATE-1 TO WS-DATE.                                   PBDATE1
000650     PERFORM 8000-CHECK-DATE THRU 8000-EXIT.                      PBDATE1
000660     IF DL-RETURN-CODE NOT = ZERO                                 PBDATE1
000670         GO TO 9999-EXIT.                                         PBDATE1
000680     GO TO 9999-EXIT                                              PBDATE1
000690           2000-ADD-DAYS                                          PBDATE1
000700           3000-DAYS-BETWEEN                                      PBDATE1
000710           4000-ADD-MONTHS                                        PBDATE1
000720           5000-AGE-YEARS                                         PBDATE1
000730           6000-LONG-FORM                                         PBDATE1
000740         DEPENDING ON DL-FUNCTION.                                PBDATE1
000750     MOVE 90 TO DL-RETURN-CODE.                                   PBDATE1
000760     GO TO 9999-EXIT.                                             PBDATE1
000770 2000-ADD-DAYS.                                                   PBDATE1
000780     PERFORM 8100-TO-DAYS THRU 8100-EXIT.                         PBDATE1
000790     ADD DL-NUMBER TO WS-ABS-1.                                   PBDATE1
000800     IF WS-ABS-1 < 1                                              PBDATE1
000810         MOVE 40 TO DL-RETURN-CODE                                PBDATE1
000820         GO TO 9999-EXIT.                                         PBDATE1
000830     PERFORM 8200-FROM-DAYS THRU 8200-EXIT.                       PBDATE1
000840     MOVE WS-DATE TO DL-DATE-2.                                   PBDATE1
000850     GO TO 9999-EXIT.                                             PBDATE1
000860 3000-DAYS-BETWEEN.                                               PBDATE1
000870*    DATE 2 MINUS DATE 1, NEGATIVE WHEN DATE 2 IS EARLIER         PBDATE1
000880     PERFORM 8100-TO-DAYS THRU 8100-EXIT.                         PBDATE1
000890     MOVE WS-ABS-1 TO WS-ABS-2.                                   PBDATE1
000900     MOVE DL-DATE-2 TO WS-DATE.                                   PBDATE1
000910     PERFORM 8000-CHECK-DATE THRU 8000-EXIT.                      PBDATE1
000920     IF DL-RETURN-CODE NOT = ZERO                                 PBDATE1
000930         GO TO 9999-EXIT.                                         PBDATE1
000940     PERFORM 8100-TO-DAYS THRU 8100-EXIT.                         PBDATE1
000950     SUBTRACT WS-ABS-2 FROM WS-ABS-1 GIVING DL-NUMBER.            PBDATE1
000960     GO TO 9999-EXIT.                                             PBDATE1
000970 4000-ADD-MONTHS.                                                 PBDATE1
000980*    THE DAY IS CUT TO THE LAST DAY OF A SHORTER MONTH            PBDATE1
000990     MOVE WS-DD TO WS-WORK-DAY.                                   PBDATE1
001000     COMPUTE WS-MONTHS = WS-CCYY * 12 + WS-MM - 1 + DL-NUMBER.    PBDATE1
001010     DIVIDE WS-MONTHS BY 12 GIVING WS-QUOT REMAINDER WS-REM.      PBDATE1
001020     MOVE WS-QUOT TO WS-CCYY.                                     PBDATE1
001030     ADD 1 WS-REM GIVING WS-MM.                                   PBDATE1
001040     PERFORM 8300-SET-LEAP THRU 8300-EXIT.                        PBDATE1
001050     IF WS-WORK-DAY > WS-MONTH-DAYS (WS-MM)                       PBDATE1
001060         IF WS-MM = 2 AND LEAP-YEAR                               PBDATE1
001070             MOVE 29 TO WS-WORK-DAY                               PBDATE1
001080         ELSE                                                     PBDATE1
001090             MOVE WS-MONTH-DAYS (WS-MM) TO WS-WORK-DAY.           PBDATE1
001100     MOVE WS-WORK-DAY TO WS-DD.                                   PBDATE1
001110     MOVE WS-DATE TO DL-DATE-2.                                   PBDATE1
001120     GO TO 9999-EXIT.                                             PBDATE1
001130 5000-AGE-YEARS.                                                  PBDATE1
001140*    AGE LAST BIRTHDAY OF A PERSON BORN ON DATE 1, AT DATE 2      PBDATE1
001150     MOVE WS-DATE TO WS-ABS-1.                                    PBDATE1
001160     MOVE DL-DATE-2 TO WS-DATE.                                   PBDATE1
001170     PERFORM 8000-CHECK-DATE THRU 8000-EXIT.                      PBDATE1
001180     IF DL-RETURN-CODE NOT = ZERO                                 PBDATE1
001190         GO TO 9999-EXIT.                                         PBDATE1
001200     IF WS-DATE < WS-ABS-1                                        PBDATE1
001210         MOVE ZERO TO DL-NUMBER                                   PBDATE1
001220         MOVE 50 TO DL-RETURN-CODE                                PBDATE1
001230         GO TO 9999-EXIT.                                         PBDATE1
001240     SUBTRACT WS-ABS-1 FROM WS-DATE GIVING WS-ABS-2.              PBDATE1
001250     DIVIDE WS-ABS-2 BY 10000 GIVING DL-NUMBER.                   PBDATE1
001260     GO TO 9999-EXIT.                                             PBDATE1
001270 6000-LONG-FORM.                                                  PBDATE1
001280     MOVE SPACES TO DL-LONG-DATE.                                 PBDATE1
001290     MOVE WS-DD TO WS-DAY-EDIT.                                   PBDATE1
001300     MOVE 1 TO WS-PTR.                                            PBDATE1
001310     STRING WS-MONTH-NAME (WS-MM) DELIMITED BY SPACE              PBDATE1
001320            ' ' WS-DAY-EDIT ', ' WS-CCYY DELIMITED BY SIZE        PBDATE1
001330         INTO DL-LONG-DATE WITH POINTER WS-PTR.                   PBDATE1
001340     GO TO 9999-EXIT.                                             PBDATE1
001350*                                                                 PBDATE1
001360*    CENTURY WINDOW - REPLACED 98-10, KEPT FOR REFERENCE          PBDATE1
001370 7000-CENTURY-WINDOW.                                             PBDATE1
001380     IF WS-OLD-YY < 50                                            PBDATE1
001390         MOVE 20 TO WS-OLD-CC                                     PBDATE1
001400     ELSE                                                         PBDATE1
001410         MOVE 19 TO WS-OLD-CC.                                    PBDATE1
001420 7000-EXIT.                                                       PBDATE1
001430     EXIT.                                                        PBDATE1
001440*                                                                 PBDATE1
001450 8000-CHECK-DATE.                                                 PBDATE1
001460     IF WS-DATE NOT NUMERIC                                       PBDATE1
001470         MOVE 10 TO DL-RETURN-CODE                                PBDATE1
001480         GO TO 8000-EXIT.                                         PBDATE1
001490     IF WS-CCYY < 1850 OR WS-CCYY > 2199                          PBDATE1
001500         MOVE 20 TO DL-RETURN-CODE                                PBDATE1
001510         GO TO 8000-EXIT.                                         PBDATE1
001520     IF WS-MM < 1 OR WS-MM > 12                                   PBDATE1
001530         MOVE 30 TO DL-RETURN-CODE                                PBDATE1
001540         GO TO 8000-EXIT.                                         PBDATE1
001550     PERFORM 8300-SET-LEAP THRU 8300-EXIT.                        PBDATE1
001560     IF WS-DD < 1                                                 PBDATE1
001570         MOVE 31 TO DL-RETURN-CODE                                PBDATE1
001580     ELSE                                                         PBDATE1
001590         IF WS-DD > WS-MONTH-DAYS (WS-MM)                         PBDATE1
001600             IF WS-MM = 2 AND WS-DD = 29 AND LEAP-YEAR            PBDATE1
001610                 NEXT SENTENCE                                    PBDATE1
001620             ELSE                                                 PBDATE1
001630                 MOVE 31 TO DL-RETURN-CODE.                       PBDATE1
001640 8000-EXIT.                                                       PBDATE1
001650     EXIT.                                                        PBDATE1
001660 8100-TO-DAYS.                                                    PBDATE1
001670     SUBTRACT 1 FROM WS-CCYY GIVING WS-PRIOR-YEARS.               PBDATE1
001680     MULTIPLY WS-PRIOR-YEARS BY 365 GIVING WS-ABS-1.              PBDATE1
001690     DIVIDE WS-PRIOR-YEARS BY 4 GIVING WS-QUOT.                   PBDATE1
001700     ADD WS-QUOT TO WS-ABS-1.                                     PBDATE1
001710     DIVIDE WS-PRIOR-YEARS BY 100 GIVING WS-QUOT.                 PBDATE1
001720     SUBTRACT WS-QUOT FROM WS-ABS-1.                              PBDATE1
001730     DIVIDE WS-PRIOR-YEARS BY 400 GIVING WS-QUOT.                 PBDATE1
001740     ADD WS-QUOT WS-MONTH-CUM (WS-MM) WS-DD TO WS-ABS-1.          PBDATE1
001750     PERFORM 8300-SET-LEAP THRU 8300-EXIT.                        PBDATE1
001760     IF LEAP-YEAR AND WS-MM > 2                                   PBDATE1
001770         ADD 1 TO WS-ABS-1.                                       PBDATE1
001780 8100-EXIT.                                                       PBDATE1
001790     EXIT.                                                        PBDATE1
001800 8200-FROM-DAYS.                                                  PBDATE1
001810*    STEP DOWN FROM A YEAR THAT IS SURELY NOT TOO EARLY           PBDATE1
001820     MOVE WS-ABS-1 TO WS-ABS-2.                                   PBDATE1
001830     DIVIDE WS-ABS-2 BY 365 GIVING WS-QUOT.                       PBDATE1
001840     ADD 1 WS-QUOT GIVING WS-CCYY.                                PBDATE1
001850 8210-TRY-YEAR.                                                   PBDATE1
001860     MOVE 1 TO WS-MM.                                             PBDATE1
001870     MOVE 1 TO WS-DD.                                             PBDATE1
001880     PERFORM 8100-TO-DAYS THRU 8100-EXIT.                         PBDATE1
001890     IF WS-ABS-1 > WS-ABS-2                                       PBDATE1
001900         SUBTRACT 1 FROM WS-CCYY                                  PBDATE1
001910         GO TO 8210-TRY-YEAR.                                     PBDATE1
001920     SUBTRACT WS-ABS-1 FROM WS-ABS-2.                             PBDATE1
001930     ADD 1 TO WS-ABS-2.                                           PBDATE1
001940 8220-TRY-MONTH.                                                  PBDATE1
001950     MOVE WS-MONTH-DAYS (WS-MM) TO WS-WORK-DAY.                   PBDATE1
001960     IF WS-MM = 2 AND LEAP-YEAR                                   PBDATE1
001970         ADD 1 TO WS-WORK-DAY.                                    PBDATE1
001980     IF WS-ABS-2 > WS-WORK-DAY                                    PBDATE1
001990         SUBTRACT WS-WORK-DAY FROM WS-ABS-2                       PBDATE1
002000         ADD 1 TO WS-MM                                           PBDATE1
002010         GO TO 8220-TRY-MONTH.                                    PBDATE1
002020     MOVE WS-ABS-2 TO WS-DD.                                      PBDATE1
002030 8200-EXIT.                                                       PBDATE1
002040     EXIT.                                                        PBDATE1
002050 8300-SET-LEAP.                                                   PBDATE1
002060     MOVE 'N' TO WS-LEAP-SW.                                      PBDATE1
002070     DIVIDE WS-CCYY BY 4 GIVING WS-QUOT REMAINDER WS-REM.         PBDATE1
002080     IF WS-REM NOT = ZERO                                         PBDATE1
002090         GO TO 8300-EXIT.                                         PBDATE1
002100     MOVE 'Y' TO WS-LEAP-SW.                                      PBDATE1
002110     DIVIDE WS-CCYY BY 100 GIVING WS-QUOT REMAINDER WS-REM.       PBDATE1
002120     IF WS-REM NOT = ZERO                                         PBDATE1
002130         GO TO 8300-EXIT.                                         PBDATE1
002140     DIVIDE WS-CCYY BY 400 GIVING WS-QUOT REMAINDER WS-REM.       PBDATE1
002150     IF WS-REM NOT = ZERO                                         PBDATE1
002160         MOVE 'N' TO WS-LEAP-SW.                                  PBDATE1
002170 8300-EXIT.                                                       PBDATE1
002180     EXIT.                                                        PBDATE1
002190 9999-EXIT.                                                       PBDATE1
002200     EXIT PROGRAM.                                                PBDATE1
