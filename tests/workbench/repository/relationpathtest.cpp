#include "workbench/repository/relationpath.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "support/errortext.h"

namespace qmrules::workbench::repository {
namespace {

// The whole text of the error that reading the relation ends with; "(no error)" when it ends with none.
std::string PathError(std::string_view relation) {
  return test::ErrorText([&] { ParseRelation(relation); });
}

TEST(RelationPath, BareNameIsOneLink) {
  EXPECT_EQ(ParseRelation("Triggers"), (RelationStep{false, Closure::None, "Triggers"}));
}

TEST(RelationPath, StarFollowsForwards) {
  EXPECT_EQ(ParseRelation("*PRODUCE"), (RelationStep{false, Closure::Forward, "PRODUCE"}));
}

TEST(RelationPath, StarLessFollowsBackwards) {
  EXPECT_EQ(ParseRelation("*<PRODUCE"), (RelationStep{false, Closure::Backward, "PRODUCE"}));
}

TEST(RelationPath, TildeNegatesEveryForm) {
  EXPECT_EQ(ParseRelation("~Has"), (RelationStep{true, Closure::None, "Has"}));
  EXPECT_EQ(ParseRelation("~*PRODUCE"), (RelationStep{true, Closure::Forward, "PRODUCE"}));
  EXPECT_EQ(ParseRelation("~*<PRODUCE"), (RelationStep{true, Closure::Backward, "PRODUCE"}));
}

TEST(RelationPath, MissingNameIsRefused) {
  EXPECT_EQ(PathError(""), "relation \"\" column 1: a relation name is expected");
  EXPECT_EQ(PathError("*"), "relation \"*\" column 2: a relation name is expected");
  EXPECT_EQ(PathError("*<"), "relation \"*<\" column 3: a relation name is expected");
  EXPECT_EQ(PathError("~"), "relation \"~\" column 2: a relation name is expected");
}

TEST(RelationPath, MarksInTheWrongPlaceAreRefused) {
  EXPECT_EQ(PathError("<PRODUCE"), "relation \"<PRODUCE\" column 1: a relation name is expected");
  EXPECT_EQ(PathError("**PRODUCE"), "relation \"**PRODUCE\" column 2: a relation name is expected");
  EXPECT_EQ(PathError("*~PRODUCE"), "relation \"*~PRODUCE\" column 2: a relation name is expected");
  EXPECT_EQ(PathError("~~Has"), "relation \"~~Has\" column 2: a relation name is expected");
  EXPECT_EQ(PathError("*>PRODUCE"), "relation \"*>PRODUCE\" column 2: a relation name is expected");
}

TEST(RelationPath, BlanksAreRefused) {
  EXPECT_EQ(PathError(" Has"), "relation \" Has\" column 1: a relation name is expected");
  EXPECT_EQ(PathError("Has "), "relation \"Has \" column 4: the end of the name is expected");
  EXPECT_EQ(PathError("* PRODUCE"), "relation \"* PRODUCE\" column 2: a relation name is expected");
}

TEST(RelationPath, SecondNameIsRefused) {
  EXPECT_EQ(PathError("Has,Refers"), "relation \"Has,Refers\" column 4: the end of the name is expected");
}

TEST(RelationPath, ErrorShowsTheBeginningOfALongName) {
  EXPECT_EQ(PathError(std::string(250, 'r') + "!"),
            "relation \"" + std::string(200, 'r') + "...\" column 251: the end of the name is expected");
}

}  // namespace
}  // namespace qmrules::workbench::repository
