#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "workbench/codemodel/cobol/procedure/markedstatements.h"

namespace qmrules::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using workbench::codemodel::Entity;

constexpr std::string_view kCicsData = R"(       DATA DIVISION.
       WORKING-STORAGE SECTION.
       01  A PIC X(10).
       01  B PIC X(10).
       01  N PIC S9(04) COMP.
       01  R PIC S9(08) COMP.
       01  KEY-1 PIC X(06).
       01  P POINTER.
       01  TAB.
           05  T PIC X(10) OCCURS 5.
       01  MAP1I.
           05  FLD1I PIC X(05).
       01  MAP1O REDEFINES MAP1I.
           05  FLD1O PIC X(05).
       LINKAGE SECTION.
       01  DFHCOMMAREA PIC X(10).
)";

TEST(CicsFileCommands, BringRecordsInAndOut) {
  const auto marked =
      ExpectMarked(kCicsData,
                   "EXEC CICS READ FILE($File[['MASTER']]) INTO($IntoIn[[A]]) RIDFLD($KeyOut[[KEY-1]])\n"
                   "     LENGTH($LengthInOut[[N]]) UPDATE RESP($StatusIn[[R]]) RESP2($StatusIn[[R]])\n"
                   "END-EXEC.\n"
                   "EXEC CICS READ DATASET($FileOut[[B]]) SET($AddressOfIn[[ADDRESS OF A]])\n"
                   "     RIDFLD($KeyOut[[T ($SubscriptOut[[N]])]]) END-EXEC.\n"
                   "EXEC CICS REWRITE FILE($File[['MASTER']]) FROM($FromOut[[A]])\n"
                   "     LENGTH($LengthOfNone[[LENGTH OF A]]) END-EXEC.\n"
                   "EXEC CICS WRITE FILE($File[['MASTER']]) FROM($FromOut[[A]]) RIDFLD($KeyOut[[KEY-1]]) END-EXEC.\n"
                   "EXEC CICS DELETE FILE($File[['MASTER']]) RIDFLD($KeyOut[[KEY-1]]) NUMREC($TargetIn[[N]])\n"
                   "END-EXEC\n"
                   "EXEC CICS UNLOCK FILE($File[['MASTER']]) END-EXEC.");
  EXPECT_THAT(marked.Statements(),
              ElementsAre("IOSTAT EXEC CICS READ", "IOSTAT EXEC CICS READ", "IOSTAT EXEC CICS REWRITE",
                          "IOSTAT EXEC CICS WRITE", "IOSTAT EXEC CICS DELETE", "IOSTAT EXEC CICS UNLOCK"));
  EXPECT_EQ(marked.Text(marked.Nodes(Entity::Ref)[0].name), "MASTER");
}

TEST(CicsFileCommands, ChangeTheKeyWhileBrowsing) {
  ExpectMarked(kCicsData,
               "EXEC CICS STARTBR FILE($File[['M']]) RIDFLD($KeyOut[[KEY-1]]) GTEQ END-EXEC.\n"
               "EXEC CICS READNEXT FILE($File[['M']]) INTO($IntoIn[[A]]) RIDFLD($KeyInOut[[KEY-1]]) END-EXEC.\n"
               "EXEC CICS READPREV FILE($File[['M']]) INTO($IntoIn[[A]]) RIDFLD($KeyInOut[[KEY-1]]) END-EXEC.\n"
               "EXEC CICS RESETBR FILE($File[['M']]) RIDFLD($KeyOut[[KEY-1]]) END-EXEC.\n"
               "EXEC CICS ENDBR FILE($File[['M']]) END-EXEC.");
}

TEST(CicsQueueCommands, BringItemsInAndOut) {
  const auto marked = ExpectMarked(kCicsData,
                                   "EXEC CICS WRITEQ TS QUEUE($File[['Q1']]) FROM($FromOut[[A]]) ITEM($KeyInOut[[N]])\n"
                                   "END-EXEC.\n"
                                   "EXEC CICS READQ TS QUEUE($FileOut[[B]]) INTO($IntoIn[[A]]) ITEM($KeyOut[[N]])\n"
                                   "     LENGTH($LengthInOut[[N]]) NUMITEMS($TargetIn[[N]]) END-EXEC.\n"
                                   "EXEC CICS READQ TD QUEUE($File[['L86O']]) INTO($IntoIn[[A]]) END-EXEC.\n"
                                   "EXEC CICS DELETEQ TS QUEUE($File[['Q1']]) END-EXEC.");
  EXPECT_THAT(marked.Statements(), ElementsAre("IOSTAT EXEC CICS WRITEQ TS", "IOSTAT EXEC CICS READQ TS",
                                               "IOSTAT EXEC CICS READQ TD", "IOSTAT EXEC CICS DELETEQ TS"));
}

TEST(CicsProgramCommands, AreCallsAndReturns) {
  const auto marked = ExpectMarked(kCicsData,
                                   "EXEC CICS LINK PROGRAM($Program[['sub1']]) COMMAREA($ArgumentInOut[[A]])\n"
                                   "     LENGTH($Length[[10]]) END-EXEC.\n"
                                   "EXEC CICS LINK PROGRAM($ProgramOut[[B]]) END-EXEC.\n"
                                   "EXEC CICS XCTL PROGRAM($Program[['SUB2']]) COMMAREA($ArgumentOut[[A]]) END-EXEC.\n"
                                   "EXEC CICS RETURN TRANSID($Other[['PBI1']]) COMMAREA($ArgumentOut[[A]]) END-EXEC.\n"
                                   "EXEC CICS RETURN END-EXEC.");
  EXPECT_THAT(marked.Statements(), ElementsAre("PORT EXEC CICS LINK", "PORT EXEC CICS LINK", "PORT EXEC CICS XCTL",
                                               "PORT EXEC CICS RETURN", "PORT EXEC CICS RETURN"));
  std::vector<std::string> calls;
  int returns = 0;
  for (const auto& port : marked.Nodes(Entity::Port)) {
    const bool isReturn = (port.flags & workbench::codemodel::kPortReturn) != 0;
    if (isReturn && (port.flags & workbench::codemodel::kImplicit) == 0) ++returns;
    if (!isReturn && (port.flags & workbench::codemodel::kPortUsing) == 0) calls.push_back(marked.Text(port.detail));
  }
  EXPECT_THAT(calls, ElementsAre("SUB1", "", "SUB2"));
  EXPECT_EQ(returns, 2);
}

TEST(CicsProgramCommands, LoadBringsAddressesIn) {
  ExpectMarked(kCicsData,
               "EXEC CICS LOAD PROGRAM($Program[['TAB1']]) SET($IntoIn[[P]]) LENGTH($LengthIn[[R]]) END-EXEC.\n"
               "EXEC CICS RELEASE PROGRAM($Program[['TAB1']]) END-EXEC.\n"
               "EXEC CICS GETMAIN SET($IntoIn[[P]]) FLENGTH($LengthOut[[R]]) INITIMG($OtherOut[[A]]) END-EXEC.");
}

TEST(CicsHandleCommands, NameParagraphs) {
  const auto marked =
      ExpectMarked(kCicsData,
                   "EXEC CICS HANDLE CONDITION NOTFND($Procedure[[MAIN]]) ERROR DUPREC($Procedure[[MAIN]])\n"
                   "END-EXEC.\n"
                   "EXEC CICS HANDLE AID CLEAR($Procedure[[MAIN]]) PF3 END-EXEC.\n"
                   "EXEC CICS HANDLE ABEND LABEL($Procedure[[MAIN]]) END-EXEC.\n"
                   "EXEC CICS HANDLE ABEND PROGRAM($Program[['ABND']]) END-EXEC.\n"
                   "EXEC CICS HANDLE ABEND CANCEL END-EXEC.\n"
                   "EXEC CICS IGNORE CONDITION LENGERR END-EXEC.");
  EXPECT_EQ(marked.Statements()[0], "STAT EXEC CICS HANDLE CONDITION");
  EXPECT_EQ(marked.Statements()[1], "STAT EXEC CICS HANDLE AID");
  for (const auto& node : marked.Nodes(Entity::Ref)) {
    EXPECT_EQ(marked.Model().nodes[node.declaration].entity, Entity::Par);
  }
}

TEST(CicsHandleCommands, TellOfAnUnknownParagraph) {
  const MarkedStatements marked(kCicsData, "EXEC CICS HANDLE CONDITION ERROR(NOWHERE) END-EXEC.");
  EXPECT_THAT(marked.Diagnostics(), ElementsAre("1:34 Paragraph NOWHERE is not in this program."));
}

TEST(CicsTimeCommands, BringTimesIn) {
  ExpectMarked(kCicsData,
               "EXEC CICS ASKTIME ABSTIME($TargetIn[[R]]) END-EXEC.\n"
               "EXEC CICS FORMATTIME ABSTIME($SourceOut[[R]]) YYYYMMDD($TargetIn[[A]]) DATESEP($Other[['/']])\n"
               "     TIME($TargetIn[[B]]) TIMESEP RESP($StatusIn[[R]]) END-EXEC.");
}

TEST(CicsInquiries, BringAnswersIn) {
  ExpectMarked(kCicsData,
               "EXEC CICS ASSIGN USERID($TargetIn[[A]]) ABCODE($TargetIn[[B]]) PROGRAM($TargetIn[[B]]) END-EXEC.\n"
               "EXEC CICS INQUIRE FILE($Other[['MASTER']]) OPENSTATUS($TargetIn[[R]]) RESP($StatusIn[[R]]) END-EXEC.\n"
               "EXEC CICS INQUIRE TRANSACTION($OtherOut[[A]]) STATUS($TargetIn[[R]]) END-EXEC.\n"
               "EXEC CICS INQUIRE FILE($OtherIn[[A]]) NEXT END-EXEC.\n"
               "EXEC CICS ADDRESS COMMAREA($TargetIn[[P]]) CWA($AddressOfIn[[ADDRESS OF A]]) END-EXEC.\n"
               "EXEC CICS SET FILE($File[['MASTER']]) OPEN END-EXEC.");
}

TEST(CicsMapCommands, TakeTheRecordsTheyAreGiven) {
  const auto marked =
      ExpectMarked(kCicsData,
                   "EXEC CICS RECEIVE MAP($Other[['MAP1']]) MAPSET($Other[['SET1']]) INTO($IntoIn[[A]]) END-EXEC.\n"
                   "EXEC CICS SEND MAP($Other[['MAP1']]) MAPSET($Other[['SET1']]) FROM($FromOut[[A]]) ERASE\n"
                   "     CURSOR($OtherOut[[N]]) END-EXEC.");
  EXPECT_THAT(marked.Statements(), ElementsAre("IOSTAT EXEC CICS RECEIVE MAP", "IOSTAT EXEC CICS SEND MAP"));
  EXPECT_THAT(marked.Implicit(), IsEmpty());
}

TEST(CicsMapCommands, MeanTheSymbolicMapWhenNoRecordIsGiven) {
  const auto marked = ExpectMarked(kCicsData,
                                   "EXEC CICS RECEIVE MAP($Other[['MAP1']]) END-EXEC.\n"
                                   "EXEC CICS SEND MAP($Other[['map1']]) DATAONLY END-EXEC.\n"
                                   "EXEC CICS SEND MAP($Other[['MAP1']]) MAPONLY END-EXEC.\n"
                                   "EXEC CICS SEND MAP($Other[['MAP2']]) END-EXEC.\n"
                                   "EXEC CICS SEND MAP($OtherOut[[A]]) END-EXEC.");
  EXPECT_THAT(marked.Implicit(), ElementsAre("Into MAP1I IN", "From MAP1O OUT"));
}

TEST(CicsTerminalCommands, BringTextInAndOut) {
  const auto marked = ExpectMarked(
      kCicsData,
      "EXEC CICS SEND TEXT FROM($FromOut[[A]]) LENGTH($LengthOut[[N]]) ERASE FREEKB END-EXEC.\n"
      "EXEC CICS RECEIVE INTO($IntoIn[[A]]) LENGTH($LengthInOut[[N]]) NOHANDLE END-EXEC.\n"
      "EXEC CICS CONVERSE FROM($FromOut[[A]]) FROMLENGTH($OtherOut[[N]]) INTO($IntoIn[[B]])\n"
      "     TOLENGTH($LengthInOut[[N]]) END-EXEC.\n"
      "EXEC CICS RETRIEVE INTO($IntoIn[[A]]) LENGTH($LengthInOut[[N]]) RTRANSID($TargetIn[[B]]) END-EXEC.\n"
      "EXEC CICS START TRANSID($Other[['PBI2']]) FROM($FromOut[[A]]) LENGTH($LengthOut[[N]]) END-EXEC.\n"
      "EXEC CICS SEND CONTROL ERASE END-EXEC.");
  EXPECT_EQ(marked.Statements()[0], "IOSTAT EXEC CICS SEND TEXT");
  EXPECT_EQ(marked.Statements()[1], "IOSTAT EXEC CICS RECEIVE");
  EXPECT_EQ(marked.Statements()[5], "IOSTAT EXEC CICS SEND CONTROL");
}

TEST(CicsContainerCommands, BringDataInAndOut) {
  ExpectMarked(
      kCicsData,
      "EXEC CICS PUT CONTAINER($File[['C1']]) CHANNEL($Other[['CH']]) FROM($FromOut[[A]]) FLENGTH($LengthOut[[R]])\n"
      "END-EXEC.\n"
      "EXEC CICS GET CONTAINER($FileOut[[B]]) INTO($IntoIn[[A]]) FLENGTH($LengthInOut[[R]]) END-EXEC.");
}

TEST(CicsCommands, TakeExpressionsAndFunctionsAsValues) {
  ExpectMarked(kCicsData,
               "EXEC CICS ABEND ABCODE($Other[['PBI9']]) NODUMP END-EXEC.\n"
               "EXEC CICS DELAY INTERVAL($OtherOut[[N]] + $Other[[1]]) END-EXEC.\n"
               "EXEC CICS ENQ RESOURCE($OtherOut[[FLD1I OF $Qualifier[[MAP1I]]]]) END-EXEC.\n"
               "EXEC CICS BIF DEEDIT FIELD($BothInOut[[A]]) END-EXEC.\n"
               "EXEC CICS SYNCPOINT END-EXEC.");
}

TEST(CicsCommands, TellThatTheyGoOnWhateverComesOfThem) {
  const auto marked = ExpectMarked(kCicsData,
                                   "EXEC CICS READ FILE($File[['M']]) INTO($IntoIn[[A]]) NOHANDLE END-EXEC.\n"
                                   "EXEC CICS READ FILE($File[['M']]) INTO($IntoIn[[A]]) END-EXEC.");
  const auto reads = marked.Nodes(Entity::IoStat);
  ASSERT_EQ(reads.size(), 2U);
  EXPECT_NE(reads[0].flags & workbench::codemodel::kNoHandle, 0);
  EXPECT_EQ(reads[1].flags & workbench::codemodel::kNoHandle, 0);
}

TEST(CicsCommands, CountAndDump) {
  ExpectMarked(kCicsData,
               "EXEC CICS GET COUNTER($OtherOut[[A]]) VALUE($TargetIn[[R]]) INCREMENT($OtherOut[[N]]) END-EXEC.\n"
               "EXEC CICS DUMP TRANSACTION DUMPCODE($Other[['D1']]) DUMPID($TargetIn[[A]]) END-EXEC.");
}

TEST(CicsCommands, TellOfUnknownVariables) {
  const MarkedStatements marked(kCicsData, "EXEC CICS READ FILE('M') INTO(NIL) END-EXEC.");
  EXPECT_THAT(marked.Diagnostics(), ElementsAre("1:31 NIL is not declared."));
}

TEST(CicsValues, AreConstantsOfConditions) {
  const auto marked = ExpectMarked(kCicsData,
                                   "IF $SourceOut[[R]] = $Source[[DFHRESP(NORMAL)]] CONTINUE END-IF.\n"
                                   "MOVE $Source[[DFHVALUE(ACTIVE)]] TO $TargetIn[[R]].");
  EXPECT_EQ(marked.Text(marked.Nodes(Entity::Const)[0].name), "DFHRESP(NORMAL)");
}

}  // namespace
}  // namespace qmrules::test
