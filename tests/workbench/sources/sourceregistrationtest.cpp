#include "workbench/sources/sourceregistration.h"

#include <gtest/gtest.h>

#include "platform/objectkey.h"
#include "support/errortext.h"
#include "support/teststore.h"

namespace qmrules::workbench {
namespace {

using test::ErrorText;
using Outcome = Registration::Outcome;

class SourceRegistrationTest : public testing::Test {
 protected:
  static ScannedProgram Program(const std::string& name, const std::string& file, std::size_t lines = 10) {
    ScannedProgram program;
    program.programId = name;
    program.file = file;
    program.lines = lines;
    return program;
  }
  Registration Register(const ScannedProgram& program, std::string_view asName = {}) {
    return RegisterSource(store_.Repository(), store_.ProjectKey(), program, asName);
  }
  std::string Get(const std::string& key, const std::string& attribute) { return store_.Get(key, attribute).Text(); }
  int Count(const std::string& entity) { return store_.Repository().CountObjects(entity, {}); }
  // Key of the PROGRAM that the logic finds from the source's object.
  std::string Producer(const std::string& sourceKey) {
    const auto fetch = store_.Repository().NewFetch();
    const auto producer = fetch->AddObject(false, "PROGRAM", "ID,Source");
    const auto relation = fetch->AddRelation("*<PRODUCE", false, "", producer);
    const auto id = std::to_string(platform::SplitKey(sourceKey).id);
    fetch->SetRoot(fetch->AddObject(true, "COBOL", "", "ID=" + id, relation));
    if (fetch->Execute(store_.ProjectKey())) return {};
    return "PROGRAM#" + fetch->Row().Item("ID").Text();
  }

  test::TestStore store_;
};

TEST_F(SourceRegistrationTest, ANewSourceGetsItsObjects) {
  const auto done = Register(Program("PBRATE01", "cobol/pbrate01.cbl", 120));
  EXPECT_EQ(done.outcome, Outcome::Added);
  EXPECT_EQ(done.name, "PBRATE01");
  EXPECT_EQ(Get(done.key, "Name"), "PBRATE01");
  EXPECT_EQ(Get(done.key, "Source"), "cobol/pbrate01.cbl");
  EXPECT_EQ(Get(done.key, "SourceLinesNum"), "120");
  EXPECT_EQ(Get(done.key, "DataView"), "false");
  EXPECT_EQ(Get(done.key, "DataRelations"), "false");
  EXPECT_EQ(Get(done.key, "DataDepends"), "false");
  EXPECT_EQ(Get(done.key, "Quillmark"), "");
  const auto producer = Producer(done.key);
  EXPECT_EQ(Get(producer, "Name"), "PBRATE01");
  EXPECT_EQ(Get(producer, "Source"), "cobol/pbrate01.cbl");
  EXPECT_TRUE(store_.Repository().object(producer)->BelongsToProject(store_.ProjectKey()));
  EXPECT_TRUE(store_.Repository().object(done.key)->BelongsToProject(store_.ProjectKey()));
}

TEST_F(SourceRegistrationTest, TheSameSourceAgainChangesNothing) {
  const auto first = Register(Program("A", "a.cbl"));
  const auto again = Register(Program("A", "a.cbl"));
  EXPECT_EQ(again.outcome, Outcome::Unchanged);
  EXPECT_EQ(again.key, first.key);
  EXPECT_EQ(Count("COBOL"), 1);
  EXPECT_EQ(Count("PROGRAM"), 1);
}

TEST_F(SourceRegistrationTest, AModelIsToldOfAndWithdrawn) {
  auto program = Program("A", "a.cbl");
  program.modelFile = "models/a.qmm";
  const auto first = Register(program);
  EXPECT_EQ(Get(first.key, "Quillmark"), "models/a.qmm");
  for (const char* flag : {"DataView", "DataRelations", "DataDepends"}) EXPECT_EQ(Get(first.key, flag), "true");
  EXPECT_EQ(Register(program).outcome, Outcome::Unchanged);
  program.modelFile = "models/b.qmm";
  EXPECT_EQ(Register(program).outcome, Outcome::Updated);
  EXPECT_EQ(Get(first.key, "Quillmark"), "models/b.qmm");
  // Who only registers leaves the model as it is.
  program.modelFile.reset();
  EXPECT_EQ(Register(program).outcome, Outcome::Unchanged);
  EXPECT_EQ(Get(first.key, "Quillmark"), "models/b.qmm");
  EXPECT_TRUE(WithdrawModel(store_.Repository(), first.key));
  EXPECT_FALSE(WithdrawModel(store_.Repository(), first.key));
  EXPECT_EQ(Get(first.key, "Quillmark"), "");
  for (const char* flag : {"DataView", "DataRelations", "DataDepends"}) EXPECT_EQ(Get(first.key, flag), "false");
}

TEST_F(SourceRegistrationTest, TheLastProgramOfAFileThatHadSeveralKeepsItsOwnObject) {
  auto first = Program("A1", "a.cbl");
  auto second = Program("B1", "a.cbl");
  first.onlyOneOfFile = second.onlyOneOfFile = false;
  Register(first);
  const auto known = Register(second);
  second.onlyOneOfFile = true;
  EXPECT_EQ(Register(second).key, known.key);
  EXPECT_EQ(Register(Program("C1", "a.cbl")).outcome, Outcome::Added);
}

TEST_F(SourceRegistrationTest, TheSameSourceAgainGetsItsNewNumberOfLines) {
  const auto first = Register(Program("A", "a.cbl", 10));
  store_.Put(first.key, "DataView", true);
  const auto again = Register(Program("A", "a.cbl", 11));
  EXPECT_EQ(again.outcome, Outcome::Updated);
  EXPECT_EQ(Get(first.key, "SourceLinesNum"), "11");
  EXPECT_EQ(Get(first.key, "DataView"), "true");
}

TEST_F(SourceRegistrationTest, ANameThatIsTakenIsRefusedWithBothFiles) {
  Register(Program("A", "old/a.cbl"));
  EXPECT_EQ(
      ErrorText([&] { Register(Program("A", "new/a.cbl")); }),
      "The program A of new/a.cbl is known already from old/a.cbl; register it under another name with --as NAME.");
  EXPECT_EQ(Count("COBOL"), 1);
  EXPECT_EQ(Count("PROGRAM"), 1);
}

TEST_F(SourceRegistrationTest, AnotherNameIsGivenInUpperCase) {
  Register(Program("A", "old/a.cbl"));
  const auto done = Register(Program("A", "new/a.cbl"), " anew ");
  EXPECT_EQ(done.outcome, Outcome::Added);
  EXPECT_EQ(done.name, "ANEW");
  EXPECT_EQ(Get(Producer(done.key), "Name"), "ANEW");
}

TEST_F(SourceRegistrationTest, AGivenNameThatIsTakenIsRefused) {
  Register(Program("B", "b.cbl"));
  EXPECT_EQ(ErrorText([&] { Register(Program("A", "a.cbl"), "B"); }),
            "The program B of a.cbl is known already from b.cbl; register it under another name with --as NAME.");
  EXPECT_EQ(ErrorText([&] { Register(Program("A", "a.cbl"), "  "); }),
            "The name behind --as is blank; give the program a name.");
}

TEST_F(SourceRegistrationTest, AFileKeepsTheNameThatItWasGiven) {
  Register(Program("A", "old/a.cbl"));
  const auto first = Register(Program("A", "new/a.cbl", 5), "ANEW");
  const auto again = Register(Program("A", "new/a.cbl", 6));
  EXPECT_EQ(again.outcome, Outcome::Updated);
  EXPECT_EQ(again.key, first.key);
  EXPECT_EQ(again.name, "ANEW");
  EXPECT_EQ(Register(Program("A", "new/a.cbl", 6), "anew").outcome, Outcome::Unchanged);
}

TEST_F(SourceRegistrationTest, AKnownFileIsNotGivenASecondName) {
  Register(Program("A", "a.cbl"));
  EXPECT_EQ(ErrorText([&] { Register(Program("A", "a.cbl"), "B"); }),
            "a.cbl is registered already, as A; leave out --as.");
}

TEST_F(SourceRegistrationTest, SeveralProgramsOfAFileAreRegisteredEach) {
  auto first = Program("A1", "a.cbl");
  auto second = Program("B1", "a.cbl");
  first.onlyOneOfFile = second.onlyOneOfFile = false;
  EXPECT_NE(Register(first).key, Register(second).key);
  EXPECT_EQ(Register(second).outcome, Outcome::Unchanged);
  EXPECT_EQ(Count("COBOL"), 2);
}

TEST_F(SourceRegistrationTest, AKnownSourceJoinsAnotherProject) {
  const auto first = Register(Program("A", "a.cbl"));
  const auto other = RegisterSource(store_.Repository(), store_.OtherProjectKey(), Program("A", "a.cbl"));
  EXPECT_EQ(other.outcome, Outcome::Updated);
  EXPECT_EQ(other.key, first.key);
  const auto source = store_.Repository().object(first.key);
  EXPECT_TRUE(source->BelongsToProject(store_.ProjectKey()));
  EXPECT_TRUE(source->BelongsToProject(store_.OtherProjectKey()));
  EXPECT_TRUE(store_.Repository().object(Producer(first.key))->BelongsToProject(store_.OtherProjectKey()));
}

TEST_F(SourceRegistrationTest, AFileNameWithTheQueryLanguagesSignsIsData) {
  const std::string file = "a (1),~b|c&d=e.cbl";
  const auto first = Register(Program("A", file));
  EXPECT_EQ(Register(Program("A", file)).key, first.key);
}

TEST_F(SourceRegistrationTest, AFailureOnTheWayLeavesNothing) {
  EXPECT_THROW(RegisterSource(store_.Repository(), "PROJECT#4711", Program("A", "a.cbl")), platform::Error);
  EXPECT_EQ(Count("COBOL"), 0);
  EXPECT_EQ(Count("PROGRAM"), 0);
}

}  // namespace
}  // namespace qmrules::workbench
