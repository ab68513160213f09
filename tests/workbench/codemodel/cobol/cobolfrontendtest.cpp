// Whole programs through the front end: several in a file, one in another, and what the models know of their files.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "platform/error.h"
#include "support/errortext.h"
#include "support/memorysources.h"
#include "workbench/codemodel/cobol/cobolfrontend.h"

namespace qmrules::test {
namespace {

namespace codemodel = workbench::codemodel;
namespace cobol = codemodel::cobol;
using codemodel::Entity;
using codemodel::FrontEnd;
using codemodel::NodeId;
using codemodel::UnitRecord;
using testing::ElementsAre;
using testing::IsEmpty;

std::vector<FrontEnd::Program> Translate(MemorySources& sources, std::string_view file = "a.cbl") {
  cobol::CobolFrontEnd frontEnd(sources, {.format = cobol::SourceFormat::Fixed});
  return frontEnd.Translate(file, [] { return false; });
}

std::vector<FrontEnd::Program> Translate(std::string text) {
  MemorySources sources{{"a.cbl", std::move(text)}};
  return Translate(sources);
}

std::string Program(std::string_view name, std::string_view inside = "") {
  return "       IDENTIFICATION DIVISION.\n       PROGRAM-ID. " + std::string(name) +
         ".\n       PROCEDURE DIVISION.\n       MAIN-PARA.\n           GOBACK.\n" + std::string(inside);
}

std::string End(std::string_view name) {
  return "       END PROGRAM " + std::string(name) + ".\n";
}

std::vector<std::string> Names(const std::vector<FrontEnd::Program>& programs) {
  std::vector<std::string> names;
  for (const auto& program : programs) names.push_back(program.name);
  return names;
}

// "NAME in PARENT" of each unit but the outermost.
std::vector<std::string> Nesting(const codemodel::ModelData& model) {
  std::vector<std::string> nesting;
  for (const UnitRecord& unit : model.units) {
    if (unit.node == 0) continue;
    nesting.push_back(model.texts[unit.name] + " in " + model.texts[model.units[unit.parent].name]);
  }
  return nesting;
}

TEST(CobolFrontEnd, AFileWithoutAProgramHasNone) {
  EXPECT_THAT(Translate("       01  A PIC X.\n"), IsEmpty());
  EXPECT_THAT(Translate(""), IsEmpty());
}

TEST(CobolFrontEnd, ProgramsOneAfterTheOtherHaveModelsOfTheirOwn) {
  const auto programs = Translate(Program("One") + End("One") + Program("TWO") + End("TWO"));
  EXPECT_THAT(Names(programs), ElementsAre("ONE", "TWO"));
  for (const auto& program : programs) {
    EXPECT_EQ(program.model.units.size(), 1U);
    EXPECT_NE(program.model.units[0].division, 0U);
    EXPECT_THAT(program.model.diagnostics, IsEmpty());
    EXPECT_EQ(program.model.rows, 12U);
    EXPECT_EQ(program.model.language, "COBOL");
  }
  EXPECT_EQ(programs[1].model.nodes[1].firstRow, 7U);
}

TEST(CobolFrontEnd, ProgramsWithoutTheirEndsFollowEachOther) {
  EXPECT_THAT(Names(Translate(Program("ONE") + Program("TWO") + Program("THREE"))), ElementsAre("ONE", "TWO", "THREE"));
}

TEST(CobolFrontEnd, AProgramBeforeTheEndOfAnotherIsNestedInIt) {
  const auto programs = Translate(Program("OUTER") + Program("FIRST", Program("INMOST") + End("INMOST")) +
                                  End("FIRST") + Program("SECOND") + End("SECOND") + End("OUTER"));
  ASSERT_THAT(Names(programs), ElementsAre("OUTER"));
  const auto& model = programs[0].model;
  EXPECT_THAT(Nesting(model), ElementsAre("FIRST in OUTER", "INMOST in FIRST", "SECOND in OUTER"));
  for (const UnitRecord& unit : model.units) {
    EXPECT_EQ(model.nodes[unit.identification].entity, Entity::Identification);
    EXPECT_EQ(model.nodes[unit.division].entity, Entity::Division);
    EXPECT_EQ(model.nodes[unit.division].parent, unit.node);
    EXPECT_GE(unit.lastNode, model.nodes[unit.division].last);
  }
  EXPECT_THAT(model.diagnostics, IsEmpty());
}

TEST(CobolFrontEnd, ANestedProgramKnowsTheGlobalDataAroundIt) {
  const auto programs = Translate(R"(       IDENTIFICATION DIVISION.
       PROGRAM-ID. OUTER.
       DATA DIVISION.
       WORKING-STORAGE SECTION.
       01  SHARED PIC X IS GLOBAL.
       01  OWN PIC X.
       PROCEDURE DIVISION.
           GOBACK.
       IDENTIFICATION DIVISION.
       PROGRAM-ID. INNER.
       PROCEDURE DIVISION.
           MOVE SHARED TO OWN.
       END PROGRAM INNER.
       END PROGRAM OUTER.
)");
  ASSERT_EQ(programs.size(), 1U);
  ASSERT_EQ(programs[0].model.diagnostics.size(), 1U);
  EXPECT_EQ(programs[0].model.diagnostics[0].text, "OWN is not declared.");
  EXPECT_EQ(programs[0].model.diagnostics[0].row, 12U);
}

TEST(CobolFrontEnd, AModelKnowsItsFilesAndWhatItAskedFor) {
  MemorySources sources{{"a.cbl",
                         "       IDENTIFICATION DIVISION.\n       PROGRAM-ID. ONE.\n"
                         "       DATA DIVISION.\n       WORKING-STORAGE SECTION.\n           COPY BOOK.\n"
                         "           COPY MISSING.\n       PROCEDURE DIVISION.\n           MOVE A TO A.\n"},
                        {"BOOK.cpy", "       01  A PIC X.\n"}};
  const auto programs = Translate(sources);
  ASSERT_EQ(programs.size(), 1U);
  const auto& model = programs[0].model;
  ASSERT_EQ(model.files.size(), 2U);
  EXPECT_EQ(model.files[0].name, "a.cbl");
  EXPECT_EQ(model.files[1].name, "BOOK.cpy");
  for (const auto& file : model.files) EXPECT_NE(file.hash[0] | file.hash[1], 0U) << file.name;
  ASSERT_EQ(model.dependencies.size(), 2U);
  ASSERT_EQ(model.diagnostics.size(), 1U);
  EXPECT_EQ(model.diagnostics[0].row, 6U);
}

TEST(CobolFrontEnd, TheOptionsTellHowAProgramWasRead) {
  EXPECT_EQ(cobol::CobolFrontEnd::OptionsText({}), "cobol 4 format auto");
  EXPECT_EQ(cobol::CobolFrontEnd::OptionsText({.format = cobol::SourceFormat::Free, .debuggingLines = true}),
            "cobol 4 format free debugging");
  EXPECT_EQ(Translate(Program("ONE"))[0].model.options, "cobol 4 format fixed");
}

TEST(CobolFrontEnd, CanBeCancelled) {
  MemorySources sources{{"a.cbl", Program("ONE")}};
  cobol::CobolFrontEnd frontEnd(sources, {});
  EXPECT_EQ(ErrorText([&] { frontEnd.Translate("a.cbl", [] { return true; }); }), "The scan was cancelled.");
}

TEST(CobolFrontEnd, AProcedureDivisionWhoseHeaderIsGarbledIsKnownByItsStatements) {
  const auto programs = Translate(R"(       IDENTIFICATION DIVISION.
       PROGRAM-ID. ONE.
       DATA DIVISION.
       WORKING-STORAGE SECTION.
       01  A PIC X.
       PROCEEDURE DIVISION.
       MAIN-PART SECTION.
       MAIN-PARA.
           MOVE A TO A.
       LAST-PARA.
           GOBACK.
)");
  ASSERT_EQ(programs.size(), 1U);
  const auto& model = programs[0].model;
  std::vector<std::string> labels;
  for (const auto& node : model.nodes) {
    if (node.entity == Entity::Par || node.entity == Entity::Section) labels.push_back(model.texts[node.name]);
  }
  EXPECT_THAT(labels, ElementsAre("MAIN-PART", "MAIN-PARA", "LAST-PARA"));
  EXPECT_NE(model.units[0].division, 0U);
  ASSERT_FALSE(model.diagnostics.empty());
  EXPECT_EQ(model.diagnostics.back().text, "PROCEDURE DIVISION is missing here.");
}

TEST(CobolFrontEnd, AProcedureDivisionIsKnownByItsFirstWord) {
  for (const std::string_view rest : {" QQQ.", ".", " DIVISIONQ\n", " USING A."}) {
    const auto programs = Translate(
        "       ID DIVISION.\n       PROGRAM-ID. ONE.\n       DATA DIVISION.\n"
        "       LINKAGE SECTION.\n       01  A PIC X.\n       PROCEDURE" +
        std::string(rest) + "\n       MAIN-PARA.\n           EXEC CICS RETURN END-EXEC.\n");
    ASSERT_EQ(programs.size(), 1U) << rest;
    const auto& nodes = programs[0].model.nodes;
    const auto is = [&](Entity entity) {
      return [entity](const auto& node) { return node.entity == entity && (node.flags & codemodel::kImplicit) == 0; };
    };
    EXPECT_EQ(std::ranges::count_if(nodes, is(Entity::Par)), 1) << rest;
    EXPECT_EQ(std::ranges::count_if(nodes, is(Entity::Port)), 2) << rest;
  }
}

TEST(CobolFrontEnd, InFreeFormAnOperandThatBeginsARowIsNoHeader) {
  MemorySources sources{{"a.cbl", R"(identification division.
program-id. one.
data division.
working-storage section.
01 a pic x.
procedure division.
main-para.
  go to
last-para.
middle-para.
  perform main-para thru
last-para.
  move a to a
last-para.
  goback.
)"}};
  cobol::CobolFrontEnd frontEnd(sources, {.format = cobol::SourceFormat::Free});
  const auto programs = frontEnd.Translate("a.cbl", [] { return false; });
  ASSERT_EQ(programs.size(), 1U);
  const auto& model = programs[0].model;
  std::vector<std::uint32_t> labels;
  for (const auto& node : model.nodes) {
    if (node.entity == Entity::Par) labels.push_back(node.firstRow);
  }
  EXPECT_THAT(labels, ElementsAre(7, 10, 14));
  ASSERT_EQ(model.diagnostics.size(), 1U);
  EXPECT_EQ(model.diagnostics[0].text, "A full stop is missing before this.");
  EXPECT_EQ(model.diagnostics[0].row, 14U);
}

TEST(CobolFrontEnd, ParametersAtManyExitsDoNotBlowTheModelUp) {
  std::string text = "       ID DIVISION.\n       PROGRAM-ID. ONE.\n       DATA DIVISION.\n       LINKAGE SECTION.\n";
  std::string names;
  for (int i = 0; i < 2000; ++i) {
    text += "       01  P" + std::to_string(i) + " PIC 9.\n";
    names += "           P" + std::to_string(i) + "\n";
  }
  text += "       PROCEDURE DIVISION USING\n" + names + "           .\n       MAIN-PARA.\n";
  for (int i = 0; i < 2000; ++i) text += "           GOBACK\n";
  const auto programs = Translate(text);
  ASSERT_EQ(programs.size(), 1U);
  EXPECT_LT(programs[0].model.nodes.size(), 100'000U);
}

TEST(CobolFrontEnd, ProgramsAreSpelledInLiteralsToo) {
  const auto programs = Translate(Program("'one'") + End("'one'") + Program("TWO"));
  EXPECT_THAT(Names(programs), ElementsAre("ONE", "TWO"));
}

}  // namespace
}  // namespace qmrules::test
