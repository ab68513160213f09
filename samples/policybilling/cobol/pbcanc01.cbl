       identification division.
       program-id.    pbcanc01.
       author.        p arundel.
       date-written.  2016-05-17.
      *----------------------------------------------------------------
      * Cancellations and refunds.
      * Reads the cancel requests of billing and of the service desk,
      * works out the earned premium (pro rata, short rate or flat),
      * refunds what is left or hands the debt to collection, and
      * takes the unearned commission back from the agent.
      *
      * 2016-05 PA  first version, replaces the last part of billing
      * 2019-03 PA  no refund below the minimum
      *----------------------------------------------------------------
       environment division.
       input-output section.
       file-control.
           select cancel-file    assign to CANREQ
               file status is ws-cancel-status.
           select policy-master  assign to POLMAST
               organization is indexed
               access mode is random
               record key is pm-policy-no
               file status is ws-polmast-status.
           select comm-file      assign to COMMTRN
               file status is ws-comm-status.
           select refund-file    assign to REFUNDS
               file status is ws-refund-status.
       data division.
       file section.
       fd  cancel-file.
       copy PBCANRC.
       fd  policy-master.
       copy PBPOLMS replacing ==:TAG:== by ==pm==.
       fd  comm-file.
       copy PBCMTRC replacing ==:TAG:== by ==ct==.
       fd  refund-file.
       01  rf-refund-rec.
           05  rf-policy-no            pic x(10).
           05  rf-kind                 pic x(01).
               88  rf-refund                       value 'R'.
               88  rf-collection                   value 'C'.
           05  rf-method               pic x(10).
           05  rf-amount               pic 9(07)v99.
           05  rf-earned               pic 9(07)v99.
           05  rf-days                 pic 9(03).
       working-storage section.
       01  ws-file-status.
           05  ws-cancel-status        pic x(02)  value '00'.
               88  end-of-requests                value '10'.
           05  ws-polmast-status       pic x(02)  value '00'.
               88  polmast-ok                     value '00' '02'.
           05  ws-comm-status          pic x(02)  value '00'.
               88  comm-ok                        value '00' '05'.
           05  ws-refund-status        pic x(02)  value '00'.
       01  ws-totals.
           05  ws-cancelled-count      pic s9(05)    comp-3 value 0.
           05  ws-skipped-count        pic s9(05)    comp-3 value 0.
           05  ws-refund-total         pic s9(09)v99 comp-3 value 0.
       01  ws-work.
           05  ws-term-days            pic s9(05)    comp-3.
           05  ws-days-covered         pic s9(05)    comp-3.
           05  ws-refundable           pic s9(07)v99 comp-3.
           05  ws-earned               pic s9(07)v99 comp-3.
           05  ws-unearned             pic s9(07)v99 comp-3.
           05  ws-balance              pic s9(07)v99 comp-3.
           05  ws-method               pic x(10).
           05  ws-min-refund           pic s9(03)v99 comp-3 value 5.00.
           05  ws-min-debt             pic s9(03)v99 comp-3 value 10.00.
           05  ws-short-rate           pic sv99      comp-3 value .90.
       copy PBDATLK.
       copy PBFSWRK replacing ==:PGM:== by =='PBCANC01'==.
       procedure division.
       main-line.
           perform open-files.
           perform read-request.
           perform until end-of-requests
               perform process-request thru process-request-exit
               perform read-request
           end-perform.
           display 'PBCANC01 cancelled ' ws-cancelled-count
                   ' skipped ' ws-skipped-count
                   ' refunded ' ws-refund-total.
           close cancel-file policy-master comm-file refund-file.
           stop run.

       open-files.
           move 'OPEN' to fs-operation.
           open input cancel-file.
           if ws-cancel-status not = '00'
               move 'CANREQ' to fs-file-name
               move ws-cancel-status to fs-status
               go to 9900-abend
           end-if.
           open i-o policy-master.
           if not polmast-ok
               move 'POLMAST' to fs-file-name
               move ws-polmast-status to fs-status
               go to 9900-abend
           end-if.
           open extend comm-file.
           if not comm-ok
               move 'COMMTRN' to fs-file-name
               move ws-comm-status to fs-status
               go to 9900-abend
           end-if.
           open output refund-file.

       process-request.
           move cr-policy-no to pm-policy-no.
           read policy-master
               invalid key
                   add 1 to ws-skipped-count
                   go to process-request-exit
           end-read.
           if pm-cancelled or pm-expired
               add 1 to ws-skipped-count
               go to process-request-exit
           end-if.
      *    A lapsed policy may have been reinstated in the meantime.
           if cr-non-payment and not pm-lapsed
               add 1 to ws-skipped-count
               go to process-request-exit
           end-if.
           perform compute-days.
           perform choose-method.
           perform settle-balance thru settle-balance-exit.
           perform charge-back-commission.
           set pm-cancelled to true.
           move cr-cancel-date to pm-cancel-date.
           move cr-reason      to pm-cancel-reason.
           move zero to pm-past-due pm-fee-balance.
           rewrite pm-policy-rec.
           add 1 to ws-cancelled-count.
       process-request-exit.
           exit.

       compute-days.
           set dl-days-between to true.
           move pm-eff-date to dl-date-1.
           move pm-exp-date to dl-date-2.
           call 'PBDATE1' using dl-date-parms.
           move dl-number to ws-term-days.
           move cr-cancel-date to dl-date-2.
           call 'PBDATE1' using by reference dl-date-parms.
           move dl-number to ws-days-covered.
           if ws-days-covered < 0
               move 0 to ws-days-covered
           end-if.
           if ws-days-covered > ws-term-days
               move ws-term-days to ws-days-covered
           end-if.

       choose-method.
      *    The policy fee is never given back, except on a flat cancel.
           subtract pm-policy-fee from pm-total-prem
               giving ws-refundable.
           evaluate true
               when ws-days-covered = 0
               when cr-insured-request and ws-days-covered <= 10
                   move 'FLAT' to ws-method
                   move 0 to ws-earned
               when cr-insured-request
                   move 'SHORT RATE' to ws-method
                   perform pro-rata-earned
                   compute ws-unearned rounded =
                       (ws-refundable - ws-earned) * ws-short-rate
                   compute ws-earned = ws-refundable - ws-unearned
                                     + pm-policy-fee
               when other
                   move 'PRO RATA' to ws-method
                   perform pro-rata-earned
                   add pm-policy-fee to ws-earned
           end-evaluate.
           subtract ws-earned from pm-total-prem giving ws-unearned.

       pro-rata-earned.
           compute ws-earned rounded =
               ws-refundable * ws-days-covered / ws-term-days.

       settle-balance.
      *    Paid less earned less open fees. Trifles are written off.
           compute ws-balance =
               pm-amt-paid - ws-earned - pm-fee-balance.
           if ws-method = 'FLAT'
               move pm-amt-paid to ws-balance
           end-if.
           if ws-balance >= 0 and ws-balance < ws-min-refund
               go to settle-balance-exit
           end-if.
           if ws-balance < 0 and function abs (ws-balance) < ws-min-debt
               go to settle-balance-exit
           end-if.
      *    The estate of a deceased insured is never sent to collection.
           if ws-balance < 0 and cr-deceased
               go to settle-balance-exit
           end-if.
           if ws-balance > 0
               set rf-refund to true
               add ws-balance to ws-refund-total
           else
               set rf-collection to true
           end-if.
           move pm-policy-no    to rf-policy-no.
           move ws-method       to rf-method.
           move ws-balance      to rf-amount.
           move ws-earned       to rf-earned.
           move ws-days-covered to rf-days.
           write rf-refund-rec.
       settle-balance-exit.
           exit.

       charge-back-commission.
      *    Commission was paid on money received, so only the part of
      *    the payments above the earned premium is taken back.
      *    A rewritten policy keeps its commission.
           if not cr-rewritten and pm-amt-paid > ws-earned
               move pm-agent-no    to ct-agent-no
               move pm-policy-no   to ct-policy-no
               set ct-charge-back  to true
               compute ct-amount = ws-earned - pm-amt-paid
               move cr-cancel-date to ct-post-date
               write ct-comm-rec
           end-if.

       read-request.
           read cancel-file
               at end
                   set end-of-requests to true
           end-read.

       copy PBABEND.
