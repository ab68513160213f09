#include "workbench/repository/relationpath.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "platform/error.h"

namespace qmrules::workbench::repository {
namespace {

// The whole text of the error that reading the relation ends with; "" when it ends with none.
std::string ErrorOf(std::string_view relation) {
  try {
    ParseRelation(relation);
  } catch (const platform::Error& error) {
    return error.what();
  }
  return "";
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
  EXPECT_EQ(ErrorOf(""), "relation \"\" column 1: a relation name is expected");
  EXPECT_EQ(ErrorOf("*"), "relation \"*\" column 2: a relation name is expected");
  EXPECT_EQ(ErrorOf("*<"), "relation \"*<\" column 3: a relation name is expected");
  EXPECT_EQ(ErrorOf("~"), "relation \"~\" column 2: a relation name is expected");
}

TEST(RelationPath, MarksInTheWrongPlaceAreRefused) {
  EXPECT_EQ(ErrorOf("<PRODUCE"), "relation \"<PRODUCE\" column 1: a relation name is expected");
  EXPECT_EQ(ErrorOf("**PRODUCE"), "relation \"**PRODUCE\" column 2: a relation name is expected");
  EXPECT_EQ(ErrorOf("*~PRODUCE"), "relation \"*~PRODUCE\" column 2: a relation name is expected");
  EXPECT_EQ(ErrorOf("~~Has"), "relation \"~~Has\" column 2: a relation name is expected");
  EXPECT_EQ(ErrorOf("*>PRODUCE"), "relation \"*>PRODUCE\" column 2: a relation name is expected");
}

TEST(RelationPath, BlanksAreRefused) {
  EXPECT_EQ(ErrorOf(" Has"), "relation \" Has\" column 1: a relation name is expected");
  EXPECT_EQ(ErrorOf("Has "), "relation \"Has \" column 4: the end of the name is expected");
  EXPECT_EQ(ErrorOf("* PRODUCE"), "relation \"* PRODUCE\" column 2: a relation name is expected");
}

TEST(RelationPath, SecondNameIsRefused) {
  EXPECT_EQ(ErrorOf("Has,Refers"), "relation \"Has,Refers\" column 4: the end of the name is expected");
}

TEST(RelationPath, ErrorShowsTheBeginningOfALongName) {
  EXPECT_EQ(ErrorOf(std::string(250, 'r') + "!"),
            "relation \"" + std::string(200, 'r') + "...\" column 251: the end of the name is expected");
}

}  // namespace
}  // namespace qmrules::workbench::repository
