      *    PBMAP01 - SYMBOLIC MAP OF MAPSET PBMS01, MAP PBM1
       01  PBM1I.
           02  FILLER                 PIC X(12).
           02  POLNOL                 PIC S9(4) COMP.
           02  POLNOF                 PIC X.
           02  FILLER REDEFINES POLNOF.
             03  POLNOA               PIC X.
           02  POLNOI                 PIC X(10).
           02  NAMEL                  PIC S9(4) COMP.
           02  NAMEF                  PIC X.
           02  FILLER REDEFINES NAMEF.
             03  NAMEA                PIC X.
           02  NAMEI                  PIC X(36).
           02  STATUSL                PIC S9(4) COMP.
           02  STATUSF                PIC X.
           02  FILLER REDEFINES STATUSF.
             03  STATUSA              PIC X.
           02  STATUSI                PIC X(09).
           02  TOTALL                 PIC S9(4) COMP.
           02  TOTALF                 PIC X.
           02  FILLER REDEFINES TOTALF.
             03  TOTALA               PIC X.
           02  TOTALI                 PIC X(12).
           02  PASTDUEL               PIC S9(4) COMP.
           02  PASTDUEF               PIC X.
           02  FILLER REDEFINES PASTDUEF.
             03  PASTDUEA             PIC X.
           02  PASTDUEI               PIC X(12).
           02  FEESL                  PIC S9(4) COMP.
           02  FEESF                  PIC X.
           02  FILLER REDEFINES FEESF.
             03  FEESA                PIC X.
           02  FEESI                  PIC X(12).
           02  PAYAMTL                PIC S9(4) COMP.
           02  PAYAMTF                PIC X.
           02  FILLER REDEFINES PAYAMTF.
             03  PAYAMTA              PIC X.
           02  PAYAMTI                PIC X(12).
           02  MSGL                   PIC S9(4) COMP.
           02  MSGF                   PIC X.
           02  FILLER REDEFINES MSGF.
             03  MSGA                 PIC X.
           02  MSGI                   PIC X(60).
       01  PBM1O REDEFINES PBM1I.
           02  FILLER                 PIC X(12).
           02  FILLER                 PIC X(3).
           02  POLNOO                 PIC X(10).
           02  FILLER                 PIC X(3).
           02  NAMEO                  PIC X(36).
           02  FILLER                 PIC X(3).
           02  STATUSO                PIC X(09).
           02  FILLER                 PIC X(3).
           02  TOTALO                 PIC Z,ZZZ,ZZ9.99.
           02  FILLER                 PIC X(3).
           02  PASTDUEO               PIC Z,ZZZ,ZZ9.99.
           02  FILLER                 PIC X(3).
           02  FEESO                  PIC Z,ZZZ,ZZ9.99.
           02  FILLER                 PIC X(3).
           02  PAYAMTO                PIC Z,ZZZ,ZZ9.99.
           02  FILLER                 PIC X(3).
           02  MSGO                   PIC X(60).
