// Entries and exits of a program: which way the parameters go.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/cobolmodel.h"

namespace qmrules::test {
namespace {

using testing::IsEmpty;

CobolModel Called(std::string_view header, std::string_view procedures) {
  return CobolModel(std::string(R"(
       IDENTIFICATION DIVISION.
       PROGRAM-ID. PROBE.
       DATA DIVISION.
       WORKING-STORAGE SECTION.
       01  W PIC 9.
       LINKAGE SECTION.
       01  P-READ PIC 9.
       01  P-WRITTEN.
           05  P-PART PIC 9.
       01  P-BOTH PIC 9.
       01  P-UNUSED PIC 9.
       01  P-BACK PIC 9.
)") + "       PROCEDURE DIVISION " +
                    std::string(header) + "\n" + std::string(procedures));
}

TEST(ProgramPorts, ParametersGoTheWayThatTheProgramUsesThem) {
  const auto model = Called("USING P-READ P-WRITTEN P-BOTH\n           P-UNUSED RETURNING P-BACK.", R"(       MAIN-PARA.
           MOVE P-READ TO P-PART
           ADD 1 TO P-BOTH
           IF W = 1
               GOBACK
           END-IF
           EXIT PROGRAM.
)");
  EXPECT_THAT(model.Diagnostics(), IsEmpty());
  const std::string back = R"( GOBACK
        VAR P-READ Argument implicit
        VAR P-WRITTEN OUT Argument implicit
        VAR P-BOTH OUT Argument implicit
        VAR P-UNUSED Argument implicit
        VAR P-BACK OUT Returning implicit
)";
  EXPECT_THAT(model.Tree(), testing::StartsWith(R"(PORT ENTRY
  VAR P-READ IN Argument
  VAR P-WRITTEN OUT Argument
  VAR P-BOTH INOUT Argument
  VAR P-UNUSED Argument
  VAR P-BACK OUT Returning
PAR MAIN-PARA
)"));
  EXPECT_THAT(model.Tree(), testing::HasSubstr(back));
  EXPECT_THAT(model.Tree(), testing::HasSubstr("  PORT EXIT PROGRAM\n    VAR P-READ Argument implicit\n"
                                               "    VAR P-WRITTEN OUT Argument implicit\n"));
}

TEST(ProgramPorts, AParameterByValueDoesNotGoOut) {
  const auto model = Called("USING BY VALUE P-BOTH BY REFERENCE P-WRITTEN.", R"(       MAIN-PARA.
           ADD 1 TO P-BOTH
           MOVE 1 TO P-WRITTEN
           GOBACK.
)");
  EXPECT_THAT(model.Diagnostics(), IsEmpty());
  EXPECT_EQ(model.Tree(), R"(PORT ENTRY
  VAR P-BOTH IN Argument
  VAR P-WRITTEN OUT Argument
PAR MAIN-PARA
  STAT ADD
    CONST 1 Source
    VAR P-BOTH INOUT Both
  STAT MOVE
    CONST 1 Source
    VAR P-WRITTEN IN Target
  PORT GOBACK
    VAR P-BOTH Argument implicit
    VAR P-WRITTEN OUT Argument implicit
)");
}

TEST(ProgramPorts, TheEndOfTheTextIsAnExit) {
  const auto model = Called("USING P-WRITTEN.", "       MAIN-PARA.\n           MOVE 1 TO P-PART.\n");
  EXPECT_THAT(model.Tree(), testing::EndsWith("PORT GOBACK implicit\n  VAR P-WRITTEN OUT Argument implicit\n"));
}

TEST(ProgramPorts, EntriesAndExitsTellTheirType) {
  const auto model = Called("USING P-READ.", "       MAIN-PARA.\n           GOBACK.\n");
  std::vector<std::string> types;
  for (const auto& node : model.Data().nodes) {
    if (node.entity != workbench::codemodel::Entity::Port) continue;
    if ((node.flags & workbench::codemodel::kPortUsing) != 0) types.emplace_back("USING");
    if ((node.flags & workbench::codemodel::kPortReturn) != 0) types.emplace_back("RETURN");
  }
  EXPECT_THAT(types, testing::ElementsAre("USING", "RETURN"));
}

TEST(ProgramPorts, AProgramThatReturnsAnOperandReadsIt) {
  const auto model = Called(".", "       MAIN-PARA.\n           GOBACK RETURNING $w[[W]].\n");
  EXPECT_EQ(model.At("w"), "VAR W OUT Returning 5");
}

TEST(ProgramPorts, AHeaderThatIsGarbledCostsTheHeaderOnly) {
  const auto model = Called("USNG P-READ.", "       MAIN-PARA.\n           GOBACK.\n");
  EXPECT_THAT(model.Diagnostics(), testing::ElementsAre("gap 13:27 USNG does not fit into the division's header."));
  EXPECT_THAT(model.Statements(), testing::ElementsAre("15 GOBACK"));
}

}  // namespace
}  // namespace qmrules::test
