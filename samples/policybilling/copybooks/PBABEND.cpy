      *****************************************************************
      *  PBABEND - COMMON ABEND PARAGRAPH (PROCEDURE DIVISION)         *
      *****************************************************************
       9900-ABEND.
           DISPLAY '*** ' FS-PROGRAM ' ENDS ABNORMALLY'.
           DISPLAY '*** FILE ' FS-FILE-NAME ' OPERATION ' FS-OPERATION
                   ' STATUS ' FS-STATUS.
           MOVE 16 TO RETURN-CODE.
           STOP RUN.
