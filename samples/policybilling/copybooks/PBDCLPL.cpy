      *    PBDCLPL - TABLE PB_POLICY AND ITS HOST VARIABLES
           EXEC SQL DECLARE PB_POLICY TABLE
             ( POLICY_NO        CHAR(10)       NOT NULL,
               LINE_CODE        CHAR(2)        NOT NULL,
               STATE_CODE       CHAR(2)        NOT NULL,
               AGENT_NO         INTEGER        NOT NULL,
               INSURED_NAME     VARCHAR(40)    NOT NULL,
               INSURED_AGE      SMALLINT       NOT NULL,
               EXPIRY_DATE      CHAR(8)        NOT NULL,
               CURRENT_PREMIUM  DECIMAL(9,2)   NOT NULL,
               CLAIM_COUNT      SMALLINT       NOT NULL,
               CLAIM_PAID       DECIMAL(9,2)   NOT NULL,
               LATE_COUNT       SMALLINT       NOT NULL,
               RENEWAL_STATUS   CHAR(1)
             ) END-EXEC.
       01  HV-POLICY.
           05  HV-POLICY-NO                PIC X(10).
           05  HV-LINE-CODE                PIC X(02).
           05  HV-STATE-CODE               PIC X(02).
           05  HV-AGENT-NO                 PIC S9(9)     COMP.
           05  HV-INSURED-NAME.
               49  HV-NAME-LEN             PIC S9(4)     COMP.
               49  HV-NAME-TEXT            PIC X(40).
           05  HV-INSURED-AGE              PIC S9(4)     COMP.
           05  HV-EXPIRY-DATE              PIC X(08).
           05  HV-CURRENT-PREMIUM          PIC S9(7)V99  COMP-3.
           05  HV-CLAIM-COUNT              PIC S9(4)     COMP.
           05  HV-CLAIM-PAID               PIC S9(7)V99  COMP-3.
           05  HV-LATE-COUNT               PIC S9(4)     COMP.
           05  HV-RENEWAL-STATUS           PIC X(01).
           05  HV-RENEWAL-IND              PIC S9(4)     COMP.
