#include "workbench/flow/programnetwork.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <map>

#include "workbench/flow/flowprogram.h"

namespace qmrules::test {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::UnorderedElementsAre;
using workbench::flow::ByteSet;
using workbench::flow::CallContext;
using workbench::flow::CallPassed;
using workbench::flow::NetworkChain;
using workbench::flow::NetworkLink;
using workbench::flow::NetworkProgram;
using workbench::flow::NodeId;
using workbench::flow::ProgramNetwork;

// Programs that call each other. A link is told as "SUB 9 X constant move", the place that the chain has come to.
class Programs : public ::testing::Test {
 protected:
  // A program with these entries in its WORKING-STORAGE and LINKAGE and this procedure division, its header included.
  void Add(const std::string& name, std::string_view data, std::string_view procedures) {
    std::string text = "\n       IDENTIFICATION DIVISION.\n       PROGRAM-ID. " + name + ".\n       DATA DIVISION.\n";
    text += Indented(data) + Indented(procedures);
    programs_.emplace(name, text);
  }

  std::vector<std::string> Reaching(const std::string& program, std::string_view mark,
                                    const CallContext& context = {}) {
    const NodeId node = programs_.at(program).NodeAt(mark);
    return Told(network_.DefinitionsReaching(Of(program), node, ByteSet::All(), context), true);
  }
  std::vector<std::string> Uses(const std::string& program, std::string_view mark, const CallContext& context = {}) {
    const NodeId node = programs_.at(program).NodeAt(mark);
    return Told(network_.UsesReached(Of(program), node, ByteSet::All(), context), false);
  }
  // The call statement that begins at a mark.
  CallPassed CallAt(const std::string& program, std::string_view mark) {
    return {&Of(program), programs_.at(program).NodeAt(mark)};
  }

  std::vector<std::string> gaps_;      // of the last question
  std::vector<CallContext> contexts_;  // of its links

 private:
  static std::string Indented(std::string_view lines) {
    std::string text;
    for (std::size_t at = 0; at < lines.size();) {
      const std::size_t end = lines.find('\n', at) + 1;
      text += "       " + std::string(lines.substr(at, end - at));
      at = end;
    }
    return text;
  }
  std::shared_ptr<const workbench::codemodel::ModelImage> WithEntry(std::string_view name) const {
    for (const auto& [key, program] : programs_) {
      const auto& model = program.Model();
      for (const NodeId port : model.NodesOf(workbench::codemodel::Entity::Port)) {
        const auto& record = model.Nodes()[port];
        const bool isEntry = (record.flags & workbench::codemodel::kPortUsing) != 0 && record.detail != 0;
        if (isEntry && model.Text(record.detail) == name) return program.Image();
      }
    }
    return nullptr;
  }
  NetworkProgram& Of(const std::string& program) { return network_.Add(programs_.at(program).Image(), 0); }
  std::vector<std::string> Told(const NetworkChain& chain, bool backward) {
    std::vector<std::string> texts;
    for (const NetworkLink& found : chain.links) {
      const auto& model = *found.program->model;
      const NodeId operand = backward ? found.link.definition : found.link.use;
      std::string text = found.program->name + " " + std::to_string(model.Nodes()[operand].firstRow) + " " +
                         std::string(model.Text(model.Nodes()[operand].name));
      if (backward) text += " " + std::string(NameOf(found.link.kind));
      texts.push_back(text);
    }
    contexts_.clear();
    for (const NetworkLink& found : chain.links) contexts_.push_back(found.context);
    gaps_.clear();
    for (const auto& gap : chain.gaps) gaps_.push_back(gap.gap.text);
    return texts;
  }

  std::map<std::string, FlowProgram> programs_;
  ProgramNetwork network_{[this](std::string_view name) {
                            const auto found = programs_.find(std::string(name));
                            return found == programs_.end() ? WithEntry(name) : found->second.Image();
                          },
                          [this](std::string_view) {
                            std::vector<std::string> names;
                            for (const auto& [name, program] : programs_) names.push_back(name);
                            return names;
                          }};
};

constexpr const char* kSubData = "LINKAGE SECTION.\n01 X PIC 9.\n01 Y PIC 9.\n";

TEST_F(Programs, WhatACalledProgramAlwaysSetsReplacesWhatWasThereBefore) {
  Add("MAIN", "WORKING-STORAGE SECTION.\n01 A PIC 9.\n01 B PIC 9.\n", R"(PROCEDURE DIVISION.
MAIN-PARA.
    MOVE 1 TO A B
    CALL 'SUB' USING A B
    DISPLAY $a[[A]] $b[[B]]
    GOBACK.
)");
  Add("SUB", kSubData, R"(PROCEDURE DIVISION USING X Y.
SUB-PARA.
    MOVE 7 TO $y[[Y]]
    GOBACK.
)");
  EXPECT_THAT(Reaching("MAIN", "a"), ElementsAre("MAIN 9 A constant move"));
  EXPECT_THAT(Reaching("MAIN", "b"), ElementsAre("SUB 9 Y constant move"));
  EXPECT_THAT(gaps_, IsEmpty());
  EXPECT_THAT(Uses("SUB", "y"), ElementsAre("MAIN 11 B"));
}

TEST_F(Programs, WhatACalledProgramSetsOnSomeWaysStandsBesideWhatWasThereBefore) {
  Add("MAIN", "WORKING-STORAGE SECTION.\n01 A PIC 9.\n01 B PIC 9.\n", R"(PROCEDURE DIVISION.
MAIN-PARA.
    MOVE 1 TO A B
    CALL 'SUB' USING A B
    DISPLAY $b[[B]]
    GOBACK.
)");
  Add("SUB", kSubData, R"(PROCEDURE DIVISION USING X Y.
SUB-PARA.
    IF $x[[X]] > 1
      MOVE 7 TO Y
    END-IF
    GOBACK.
)");
  EXPECT_THAT(Reaching("MAIN", "b"), ElementsAre("MAIN 9 B constant move", "SUB 10 Y constant move"));
}

TEST_F(Programs, AParameterComesFromTheCallersArgumentAtItsPosition) {
  Add("MAIN", "WORKING-STORAGE SECTION.\n01 A PIC 9.\n01 B PIC 9.\n", R"(PROCEDURE DIVISION.
MAIN-PARA.
    MOVE 1 TO $a[[A]]
    MOVE 2 TO B
    CALL 'SUB' USING A B
    GOBACK.
)");
  Add("SUB", kSubData, R"(PROCEDURE DIVISION USING X Y.
SUB-PARA.
    DISPLAY $x[[X]] Y
    GOBACK.
)");
  EXPECT_THAT(Reaching("SUB", "x"), ElementsAre("SUB 5 X parameter", "MAIN 9 A constant move"));
  EXPECT_THAT(Uses("MAIN", "a"), ElementsAre("SUB 9 X"));
}

TEST_F(Programs, APartOfAGroupGoesToTheSameBytesOfTheParameter) {
  Add("MAIN", "WORKING-STORAGE SECTION.\n01 G.\n   05 A PIC XX.\n   05 B PIC X(3).\n", R"(PROCEDURE DIVISION.
MAIN-PARA.
    MOVE 'AA' TO A
    MOVE 'BBB' TO B
    CALL 'SUB' USING G
    DISPLAY $a[[A]]
    GOBACK.
)");
  Add("SUB", "LINKAGE SECTION.\n01 H.\n   05 P PIC X.\n   05 Q PIC X.\n   05 R PIC X(3).\n",
      R"(PROCEDURE DIVISION USING H.
SUB-PARA.
    DISPLAY $r[[R]]
    MOVE 'Q' TO Q
    GOBACK.
)");
  EXPECT_THAT(Reaching("SUB", "r"), ElementsAre("SUB 5 H parameter", "MAIN 11 B constant move"));
  EXPECT_THAT(Reaching("MAIN", "a"), ElementsAre("MAIN 10 A constant move", "SUB 12 Q constant move"));
}

TEST_F(Programs, WhatAProgramLeavesInItsOwnStorageIsUsedAtItsNextCall) {
  Add("MAIN", "WORKING-STORAGE SECTION.\n01 A PIC 9.\n", R"(PROCEDURE DIVISION.
MAIN-PARA.
    PERFORM 2 TIMES
      CALL 'SUB' USING A
    END-PERFORM
    GOBACK.
)");
  Add("SUB",
      "WORKING-STORAGE SECTION.\n01 N PIC 9.\nLOCAL-STORAGE SECTION.\n01 T PIC 9.\nLINKAGE SECTION.\n01 X PIC 9.\n",
      R"(PROCEDURE DIVISION USING X.
SUB-PARA.
    DISPLAY $n[[N]] $t[[T]]
    MOVE 7 TO $storedN[[N]]
    MOVE 7 TO $storedT[[T]]
    GOBACK.
)");
  EXPECT_THAT(Reaching("SUB", "n"), ElementsAre("SUB 5 N initial value", "SUB 13 N constant move"));
  EXPECT_THAT(Uses("SUB", "storedN"), ElementsAre("SUB 12 N"));
  EXPECT_THAT(Reaching("SUB", "t"), ElementsAre("SUB 7 T initial value"));
  EXPECT_THAT(Uses("SUB", "storedT"), IsEmpty());
}

TEST_F(Programs, AProgramThatIsNotThereIsAGap) {
  Add("MAIN", "WORKING-STORAGE SECTION.\n01 A PIC 9.\n", R"(PROCEDURE DIVISION.
MAIN-PARA.
    MOVE 1 TO A
    CALL 'PBX01' USING A
    DISPLAY $a[[A]]
    GOBACK.
)");
  EXPECT_THAT(Reaching("MAIN", "a"), ElementsAre("MAIN 8 A constant move", "MAIN 9 A call"));
  EXPECT_THAT(gaps_, ElementsAre("PBX01 is not in the workspace: what it does with A is not known."));
}

TEST_F(Programs, AVariableNameWithConstantsOnAllPathsLeadsToEachOfThem) {
  Add("MAIN", "WORKING-STORAGE SECTION.\n01 A PIC 9.\n01 P PIC X(8).\n", R"(PROCEDURE DIVISION.
MAIN-PARA.
    MOVE 'SUB' TO P
    IF A = 1
      MOVE 'SUB2' TO P
    END-IF
    CALL P USING A
    DISPLAY $a[[A]]
    GOBACK.
)");
  Add("SUB", "LINKAGE SECTION.\n01 X PIC 9.\n", R"(PROCEDURE DIVISION USING X.
SUB-PARA.
    MOVE 7 TO X
    GOBACK.
)");
  Add("SUB2", "LINKAGE SECTION.\n01 X PIC 9.\n", R"(PROCEDURE DIVISION USING X.
SUB-PARA.
    MOVE 8 TO X
    GOBACK.
)");
  EXPECT_THAT(Reaching("MAIN", "a"), ElementsAre("SUB 8 X constant move", "SUB2 8 X constant move"));
}

TEST_F(Programs, AVariableNameFromOutsideIsAGap) {
  Add("MAIN", "WORKING-STORAGE SECTION.\n01 A PIC 9.\n01 P PIC X(8).\n", R"(PROCEDURE DIVISION.
MAIN-PARA.
    MOVE 'SUB' TO P
    IF A = 1
      ACCEPT P
    END-IF
    CALL P USING A
    DISPLAY $a[[A]]
    GOBACK.
)");
  Add("SUB", "LINKAGE SECTION.\n01 X PIC 9.\n", "PROCEDURE DIVISION USING X.\nSUB-PARA.\n    MOVE 7 TO X.\n");
  EXPECT_THAT(Reaching("MAIN", "a"), ElementsAre("MAIN 5 A initial value", "MAIN 13 A call"));
  EXPECT_THAT(gaps_, ElementsAre("It is not known which program is called: what it does with A is not known."));
}

TEST_F(Programs, ACallByANameThatIsNotKnownMayBeOneOfAnyProgram) {
  Add("MAIN", "WORKING-STORAGE SECTION.\n01 A PIC 9.\n01 P PIC X(8).\n", R"(PROCEDURE DIVISION.
MAIN-PARA.
    CALL 'SUB' USING A
    ACCEPT P
    CALL P USING A
    DISPLAY A
    GOBACK.
)");
  Add("SUB", "LINKAGE SECTION.\n01 X PIC 9.\n", R"(PROCEDURE DIVISION USING X.
SUB-PARA.
    DISPLAY $use[[X]]
    MOVE 7 TO $definition[[X]].
)");
  Reaching("SUB", "use");
  EXPECT_THAT(gaps_, Contains("It is not known which program is called; it may be SUB."));
  Uses("SUB", "definition");
  EXPECT_THAT(gaps_, Contains("It is not known which program is called; it may be SUB."));
}

TEST_F(Programs, ProgramsThatCallEachOtherComeToAnEnd) {
  Add("MAIN", "WORKING-STORAGE SECTION.\n01 A PIC 9.\n", R"(PROCEDURE DIVISION.
MAIN-PARA.
    MOVE 1 TO A
    CALL 'PING' USING A
    DISPLAY $a[[A]]
    GOBACK.
)");
  Add("PING", "LINKAGE SECTION.\n01 X PIC 9.\n", R"(PROCEDURE DIVISION USING X.
PING-PARA.
    IF $x[[X]] > 5 GOBACK.
    ADD 1 TO X.
    CALL 'PONG' USING X.
    GOBACK.
)");
  Add("PONG", "LINKAGE SECTION.\n01 Y PIC 9.\n", R"(PROCEDURE DIVISION USING Y.
PONG-PARA.
    ADD 2 TO Y.
    CALL 'PING' USING Y.
    GOBACK.
)");
  // What PING adds, PONG overwrites before anybody else sees it: the PONG of the PING that MAIN calls, and the one of
  // the PING that PONG calls.
  EXPECT_THAT(Reaching("MAIN", "a"),
              ElementsAre("MAIN 8 A constant move", "PONG 8 Y computation", "PONG 8 Y computation"));
  EXPECT_THAT(Reaching("PING", "x"),
              ElementsAre("PING 5 X parameter", "MAIN 8 A constant move", "PONG 8 Y computation"));
}

constexpr const char* kTwoItems = "WORKING-STORAGE SECTION.\n01 A PIC 9.\n01 B PIC 9.\n";

constexpr const char* kCaller = R"(PROCEDURE DIVISION.
MAIN-PARA.
    MOVE 1 TO A
    $call^CALL 'SUB' USING A B
    DISPLAY $b[[B]]
    GOBACK.
)";

TEST_F(Programs, AChainComesOutOfAProgramAtTheCallThatItIsIn) {
  Add("MAIN", kTwoItems, kCaller);
  Add("OTHER", kTwoItems, kCaller);
  Add("SUB", kSubData, R"(PROCEDURE DIVISION USING X Y.
SUB-PARA.
    ADD 1 $x[[X]] GIVING $y[[Y]]
    GOBACK.
)");
  const CallContext inMain{CallAt("MAIN", "call")};
  EXPECT_THAT(Uses("SUB", "y", inMain), ElementsAre("MAIN 11 B"));
  EXPECT_THAT(contexts_, ElementsAre(CallContext()));
  EXPECT_THAT(Uses("SUB", "y"), ElementsAre("MAIN 11 B", "OTHER 11 B"));
  EXPECT_THAT(Reaching("SUB", "x", inMain), ElementsAre("SUB 5 X parameter", "MAIN 9 A constant move"));
  EXPECT_THAT(Reaching("SUB", "x"),
              ElementsAre("SUB 5 X parameter", "MAIN 9 A constant move", "OTHER 9 A constant move"));
  EXPECT_THAT(Reaching("OTHER", "b"), ElementsAre("SUB 9 Y computation"));
  EXPECT_THAT(contexts_, ElementsAre(CallContext{CallAt("OTHER", "call")}));
}

TEST_F(Programs, TwoCallsOfOneProgramAreTwoContexts) {
  Add("MAIN", kTwoItems, R"(PROCEDURE DIVISION.
MAIN-PARA.
    IF B = 1
      $first^CALL 'SUB' USING A
    ELSE
      $second^CALL 'SUB' USING A
    END-IF
    DISPLAY $a[[A]]
    GOBACK.
)");
  Add("SUB", "LINKAGE SECTION.\n01 X PIC 9.\n", "PROCEDURE DIVISION USING X.\nSUB-PARA.\n    MOVE 7 TO X.\n");
  EXPECT_THAT(Reaching("MAIN", "a"), ElementsAre("SUB 8 X constant move", "SUB 8 X constant move"));
  EXPECT_THAT(contexts_, ElementsAre(CallContext{CallAt("MAIN", "first")}, CallContext{CallAt("MAIN", "second")}));
}

TEST_F(Programs, InTooManyContextsAProgramIsTakenAsCalledFromEverywhere) {
  std::string procedures = "PROCEDURE DIVISION.\nMAIN-PARA.\n";
  for (std::size_t call = 0; call < workbench::flow::kMostContexts + 10; ++call) {
    procedures += "    IF B = 1 CALL 'SUB' USING A END-IF\n";
  }
  Add("MAIN", kTwoItems, procedures + "    DISPLAY $a[[A]]\n    GOBACK.\n");
  Add("SUB", "LINKAGE SECTION.\n01 X PIC 9.\n", "PROCEDURE DIVISION USING X.\nSUB-PARA.\n    MOVE 7 TO X.\n");
  const auto links = Reaching("MAIN", "a");
  EXPECT_EQ(std::ranges::count(links, "SUB 8 X constant move"), workbench::flow::kMostContexts + 1);
  EXPECT_EQ(std::ranges::count(contexts_.begin() + 1, contexts_.end(), CallContext()), 1);
  EXPECT_EQ(contexts_.back(), CallContext());
}

constexpr const char* kPassingOn = R"(PROCEDURE DIVISION USING P Q.
MID-PARA.
    $call^CALL 'SUB' USING P Q
    GOBACK.
)";

TEST_F(Programs, AChainComesOutOfNestedCallsOneByOne) {
  const std::string caller = std::string(kCaller).replace(std::string_view(kCaller).find("SUB"), 3, "MID");
  Add("MAIN", kTwoItems, caller);
  Add("OTHER", kTwoItems, caller);
  Add("MID", "LINKAGE SECTION.\n01 P PIC 9.\n01 Q PIC 9.\n", kPassingOn);
  Add("MIDTOO", "LINKAGE SECTION.\n01 P PIC 9.\n01 Q PIC 9.\n", kPassingOn);
  Add("SUB", kSubData, R"(PROCEDURE DIVISION USING X Y.
SUB-PARA.
    ADD 1 $x[[X]] GIVING $y[[Y]]
    GOBACK.
)");
  Reaching("MAIN", "b");
  const CallContext inside{CallAt("MAIN", "call"), CallAt("MID", "call")};
  EXPECT_THAT(contexts_, ElementsAre(inside));
  EXPECT_THAT(Uses("SUB", "y", inside), ElementsAre("MAIN 11 B"));
  EXPECT_THAT(Reaching("SUB", "x", inside),
              ElementsAre("SUB 5 X parameter", "MID 5 P parameter", "MAIN 9 A constant move"));
  // Where it is not known who has called MID, it is each of them.
  EXPECT_THAT(Uses("SUB", "y", {CallAt("MID", "call")}), ElementsAre("MAIN 11 B", "OTHER 11 B"));
  EXPECT_THAT(Reaching("SUB", "x", {CallAt("MIDTOO", "call")}),
              ElementsAre("SUB 5 X parameter", "MIDTOO 5 P parameter"));
}

TEST_F(Programs, WhatIsKeptFromOneCallToAnotherLeavesTheContext) {
  Add("MAIN", kTwoItems, kCaller);
  Add("OTHER", kTwoItems, kCaller);
  Add("SUB", std::string("WORKING-STORAGE SECTION.\n01 N PIC 9.\n") + kSubData, R"(PROCEDURE DIVISION USING X Y.
SUB-PARA.
    MOVE $n[[N]] TO Y
    MOVE X TO $kept[[N]]
    GOBACK.
)");
  const CallContext inMain{CallAt("MAIN", "call")};
  EXPECT_THAT(Reaching("SUB", "n", inMain), ElementsAre("SUB 5 N initial value", "SUB 12 N move"));
  EXPECT_THAT(contexts_, ElementsAre(inMain, CallContext()));
  EXPECT_THAT(Uses("SUB", "kept", inMain), ElementsAre("SUB 11 N"));
  EXPECT_THAT(contexts_, ElementsAre(CallContext()));
}

TEST_F(Programs, InTheContextOfACallNoOtherCallIsAGap) {
  Add("MAIN", kTwoItems, R"(PROCEDURE DIVISION.
MAIN-PARA.
    $call^CALL 'SUB' USING A
    ACCEPT B
    CALL B USING A
    GOBACK.
)");
  Add("SUB", "LINKAGE SECTION.\n01 X PIC 9.\n", R"(PROCEDURE DIVISION USING X.
SUB-PARA.
    DISPLAY $use[[X]].
)");
  Reaching("SUB", "use", {CallAt("MAIN", "call")});
  EXPECT_THAT(gaps_, Not(Contains("It is not known which program is called; it may be SUB.")));
  Reaching("SUB", "use");
  EXPECT_THAT(gaps_, Contains("It is not known which program is called; it may be SUB."));
}

constexpr const char* kEntryProgram = R"(PROCEDURE DIVISION USING X.
SUB-PARA.
    DISPLAY $main[[X]]
    GOBACK.
    ENTRY 'SECOND' USING Y.
    DISPLAY $second[[Y]]
    MOVE 7 TO $y[[Y]]
    GOBACK.
)";

TEST_F(Programs, ACallOfAnEntryHandsOverWhatTheEntryTakesIn) {
  Add("MAIN", "WORKING-STORAGE SECTION.\n01 A PIC 9.\n01 B PIC 9.\n", R"(PROCEDURE DIVISION.
MAIN-PARA.
    MOVE 1 TO $a[[A]]
    CALL 'SUB' USING A
    MOVE 2 TO B
    CALL 'SECOND' USING B
    DISPLAY $behind[[B]] $alone[[A]]
    GOBACK.
)");
  Add("SUB", kSubData, kEntryProgram);
  EXPECT_THAT(Reaching("SUB", "second"), Contains("MAIN 11 B constant move"));
  EXPECT_THAT(Reaching("SUB", "second"), Not(Contains("MAIN 9 A constant move")));
  EXPECT_THAT(Reaching("SUB", "main"), ElementsAre("SUB 5 X parameter", "MAIN 9 A constant move"));
  // Not by position in the USING of the program.
  EXPECT_THAT(Uses("MAIN", "a"), ElementsAre("MAIN 13 A", "SUB 9 X"));
  EXPECT_THAT(Reaching("MAIN", "behind"), Contains("SUB 13 Y constant move"));
  EXPECT_THAT(Reaching("MAIN", "alone"), ElementsAre("MAIN 9 A constant move"));
  EXPECT_THAT(gaps_, IsEmpty());
  EXPECT_THAT(Uses("SUB", "y"), ElementsAre("MAIN 13 B"));
}

constexpr const char* kAreaData = "LINKAGE SECTION.\n01 DFHCOMMAREA.\n   05 P PIC XX.\n   05 Q PIC X(3).\n";

TEST_F(Programs, LinkLeadsIntoTheProgramByItsCommunicationAreaAndBack) {
  Add("MAIN", "WORKING-STORAGE SECTION.\n01 G.\n   05 A PIC XX.\n   05 B PIC X(3).\n01 P PIC XX.\n",
      R"(PROCEDURE DIVISION.
MAIN-PARA.
    MOVE 'AA' TO $a[[A]]
    MOVE 'BBB' TO B
    MOVE 'PP' TO $other[[P]]
    EXEC CICS LINK PROGRAM('LINKED') COMMAREA(G) END-EXEC
    DISPLAY $behind[[A]] $kept[[B]] P
    EXEC CICS RETURN END-EXEC.
)");
  Add("LINKED", kAreaData, R"(PROCEDURE DIVISION.
LINKED-PARA.
    DISPLAY $p[[P]]
    MOVE 'XX' TO $set[[P]]
    EXEC CICS RETURN END-EXEC.
)");
  EXPECT_THAT(Reaching("LINKED", "p"), ElementsAre("LINKED 5 DFHCOMMAREA parameter", "MAIN 11 A constant move"));
  // Names mean nothing: the P of MAIN is not handed over.
  EXPECT_THAT(Uses("MAIN", "other"), ElementsAre("MAIN 15 P"));
  EXPECT_THAT(Uses("MAIN", "a"), Contains("LINKED 10 P"));
  EXPECT_THAT(Reaching("MAIN", "behind"), Contains("LINKED 11 P constant move"));
  EXPECT_THAT(Reaching("MAIN", "kept"), ElementsAre("MAIN 12 B constant move"));
  EXPECT_THAT(Uses("LINKED", "set"), Contains("MAIN 15 A"));
}

TEST_F(Programs, LinkByAVariableNameLeadsToThePrograms) {
  Add("MAIN", "WORKING-STORAGE SECTION.\n01 A PIC XX.\n01 N PIC X(8) VALUE 'LINKED'.\n", R"(PROCEDURE DIVISION.
MAIN-PARA.
    EXEC CICS LINK PROGRAM(N) COMMAREA(A) NOHANDLE END-EXEC
    DISPLAY $behind[[A]]
    EXEC CICS RETURN END-EXEC.
)");
  Add("LINKED", kAreaData, "PROCEDURE DIVISION.\nLINKED-PARA.\n    MOVE 'XX' TO P.\n    GOBACK.\n");
  Add("OTHER", kAreaData, "PROCEDURE DIVISION.\nOTHER-PARA.\n    MOVE 'YY' TO P.\n    GOBACK.\n");
  EXPECT_THAT(Reaching("MAIN", "behind"), ElementsAre("MAIN 5 A initial value", "LINKED 10 P constant move"));
}

TEST_F(Programs, WhereALinkHasFailedTheAreaIsAsItWas) {
  Add("MAIN", "WORKING-STORAGE SECTION.\n01 A PIC XX.\n", R"(PROCEDURE DIVISION.
MAIN-PARA.
    EXEC CICS HANDLE CONDITION PGMIDERR(GONE-PARA) END-EXEC
    MOVE 'AA' TO A
    EXEC CICS LINK PROGRAM('LINKED') COMMAREA(A) END-EXEC
    EXEC CICS RETURN END-EXEC.
GONE-PARA.
    DISPLAY $gone[[A]]
    EXEC CICS RETURN END-EXEC.
)");
  Add("LINKED", kAreaData, "PROCEDURE DIVISION.\nLINKED-PARA.\n    MOVE 'XX' TO P.\n    GOBACK.\n");
  EXPECT_THAT(Reaching("MAIN", "gone"), Contains("MAIN 9 A constant move"));
}

TEST_F(Programs, XctlHandsItsAreaOverAndDoesNotComeBack) {
  Add("MAIN", "WORKING-STORAGE SECTION.\n01 G.\n   05 A PIC XX.\n   05 B PIC X(3).\n", R"(PROCEDURE DIVISION.
MAIN-PARA.
    MOVE 'AA' TO $a[[A]]
    IF B = 'END'
        EXEC CICS XCTL PROGRAM('NEXTONE') COMMAREA(G) END-EXEC
    END-IF
    DISPLAY $behind[[A]]
    EXEC CICS RETURN END-EXEC.
)");
  Add("NEXTONE", kAreaData, R"(PROCEDURE DIVISION.
NEXT-PARA.
    DISPLAY $p[[P]]
    MOVE 'XX' TO $set[[P]]
    EXEC CICS RETURN END-EXEC.
)");
  EXPECT_THAT(Reaching("NEXTONE", "p"), ElementsAre("NEXTONE 5 DFHCOMMAREA parameter", "MAIN 10 A constant move"));
  EXPECT_THAT(Uses("MAIN", "a"), UnorderedElementsAre("NEXTONE 10 P", "MAIN 14 A"));
  EXPECT_THAT(Reaching("MAIN", "behind"), ElementsAre("MAIN 10 A constant move"));
  EXPECT_THAT(Uses("NEXTONE", "set"), Not(Contains("MAIN 14 A")));
}

TEST_F(Programs, BehindAnXctlThatHasFailedTheOtherProgramHasNotRun) {
  Add("MAIN", "WORKING-STORAGE SECTION.\n01 G.\n   05 A PIC XX.\n   05 B PIC X(3).\n01 R PIC S9(8) COMP.\n",
      R"(PROCEDURE DIVISION.
MAIN-PARA.
    MOVE 'AA' TO $a[[A]]
    EXEC CICS XCTL PROGRAM('NEXTONE') COMMAREA(G)
        RESP(R) END-EXEC
    DISPLAY $behind[[A]]
    EXEC CICS RETURN END-EXEC.
)");
  Add("NEXTONE", kAreaData, R"(PROCEDURE DIVISION.
NEXT-PARA.
    DISPLAY P
    MOVE 'XX' TO $set[[P]]
    EXEC CICS RETURN END-EXEC.
)");
  EXPECT_THAT(Reaching("MAIN", "behind"), ElementsAre("MAIN 11 A constant move"));
  EXPECT_THAT(Uses("MAIN", "a"), UnorderedElementsAre("NEXTONE 10 P", "MAIN 14 A"));
  EXPECT_THAT(Uses("NEXTONE", "set"), Not(Contains("MAIN 14 A")));
}

TEST_F(Programs, WhatIsInvokedOrIsAProcedureOfADatabaseIsAnEndThatSaysSo) {
  Add("MAIN", "WORKING-STORAGE SECTION.\n01 A PIC 9.\n01 B PIC 9.\n01 O OBJECT REFERENCE.\n", R"(PROCEDURE DIVISION.
MAIN-PARA.
    MOVE 1 TO A B
    INVOKE O 'METHOD' USING A
    EXEC SQL CALL SUB (:B) END-EXEC
    DISPLAY $a[[A]] $b[[B]]
    GOBACK.
)");
  // A program of the procedure's name is another one.
  Add("SUB", kSubData, "PROCEDURE DIVISION USING X.\nSUB-PARA.\n    MOVE 7 TO X.\n");
  EXPECT_THAT(Reaching("MAIN", "a"), ElementsAre("MAIN 10 A constant move", "MAIN 11 A call"));
  EXPECT_THAT(gaps_, ElementsAre("It is not known which program is called: what it does with A is not known."));
  EXPECT_THAT(Reaching("MAIN", "b"), ElementsAre("MAIN 10 B constant move", "MAIN 12 B call"));
  EXPECT_THAT(gaps_, ElementsAre("It is not known which program is called: what it does with B is not known."));
}

TEST_F(Programs, WhatACalledProgramReturnsIsAnEndThatSaysSo) {
  Add("MAIN", "WORKING-STORAGE SECTION.\n01 A PIC 9.\n", R"(PROCEDURE DIVISION.
MAIN-PARA.
    CALL 'SUB' RETURNING A
    DISPLAY $a[[A]]
    GOBACK.
)");
  Add("SUB", kSubData, "PROCEDURE DIVISION RETURNING X.\nSUB-PARA.\n    MOVE 7 TO X.\n");
  EXPECT_THAT(Reaching("MAIN", "a"), ElementsAre("MAIN 8 A call"));
  EXPECT_THAT(gaps_, ElementsAre("What the called program gives A is not followed."));
}

}  // namespace
}  // namespace qmrules::test
