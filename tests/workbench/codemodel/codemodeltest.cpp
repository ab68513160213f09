#include "workbench/codemodel/codemodel.h"

#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/error.h"
#include "platform/xml.h"
#include "support/errortext.h"
#include "support/temporaryfolder.h"
#include "workbench/codemodel/samplemodel.h"
#include "workbench/codemodel/vocabulary.h"

namespace qmrules::workbench::codemodel {
namespace {

using platform::ModelCursor;
using platform::ModelObject;
using test::ErrorText;
using test::SampleModel;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class CodeModelTest : public ::testing::Test {
 protected:
  CodeModelTest() : sample_(test::MakeSampleModel()) {
    ModelSurroundings surroundings;
    surroundings.readSource = [this](std::string_view file) {
      ++reads_;
      if (file != "pay.cbl") throw platform::Error(fmt::format("There is no {}.", file));
      return test::SampleText();
    };
    model_ = OpenCodeModel(ModelImage::FromBytes(SerializeModel(sample_.data), "pay.qmm"), surroundings);
  }

  const ModelObject& Object(NodeId node) const { return model_->object(std::int64_t{node}); }
  // As text; "(absent)" for an absent one.
  std::string Attr(NodeId node, std::string_view name) const {
    const platform::Value value = Object(node).Attr(name);
    return value.IsAbsent() ? "(absent)" : value.Text();
  }
  static std::vector<std::int64_t> IDs(const std::unique_ptr<ModelCursor>& cursor) {
    std::vector<std::int64_t> ids;
    for (; !cursor->Eof(); cursor->MoveNext()) ids.push_back(cursor->Item().ID());
    return ids;
  }

  SampleModel sample_;
  int reads_ = 0;
  std::unique_ptr<platform::SourceModel> model_;
};

TEST_F(CodeModelTest, ObjectsHaveKeysOfTheirEntityAndNumber) {
  const ModelObject& object = Object(sample_.amountRead);
  EXPECT_EQ(object.ID(), sample_.amountRead);
  EXPECT_EQ(object.Key(), fmt::format("VAR#{}", sample_.amountRead));
  EXPECT_EQ(object.EntityDef().Name(), "VAR");
  EXPECT_EQ(&model_->object(object.Key()), &object);
  EXPECT_EQ(&model_->object(fmt::format("vAr#{}", sample_.amountRead)), &object);
}

TEST_F(CodeModelTest, NumbersAboveTheNodesStandForTheNodeBelowThem) {
  const std::int64_t virtualID = (std::int64_t{3} << kVirtualShift) + sample_.condition;
  EXPECT_EQ(&model_->object(virtualID), &Object(sample_.condition));
  EXPECT_EQ(&model_->object(fmt::format("COND#{}", virtualID)), &Object(sample_.condition));
}

TEST_F(CodeModelTest, WhatIsNoObjectIsNamedInTheError) {
  EXPECT_EQ(ErrorText([&] { model_->object(std::int64_t{1000}); }), "The model of PAY has no object 1000.");
  EXPECT_EQ(ErrorText([&] { model_->object(std::int64_t{0}); }), "The model of PAY has no object 0.");
  EXPECT_EQ(ErrorText([&] { model_->object(std::int64_t{-1}); }), "The model of PAY has no object -1.");
  EXPECT_EQ(ErrorText([&] { model_->object(std::int64_t{1} << kVirtualShift); }),
            "The model of PAY has no object 4294967296.");
  EXPECT_EQ(ErrorText([&] { model_->object("VAR#1000"); }), "The model of PAY has no object VAR#1000.");
  const std::string otherEntity = fmt::format("DECL#{}", sample_.amountRead);
  EXPECT_EQ(ErrorText([&] { model_->object(otherEntity); }), "The model of PAY has no object " + otherEntity + ".");
  for (const char* key : {"VAR", "VAR#", "VAR#x", "VAR#1x", "VAR#99999999999999999999", "VAR#-4", ""}) {
    EXPECT_EQ(ErrorText([&] { model_->object(key); }),
              fmt::format("\"{}\" is not an object key. A key is an entity name, \"#\" and a number, as VAR#17.", key));
  }
}

TEST_F(CodeModelTest, TheTreeIsWalkedByParentsChildrenAndSiblings) {
  ASSERT_NE(model_->FirstNode(), nullptr);
  EXPECT_EQ(model_->FirstNode()->ID(), sample_.identification);
  std::vector<std::string> top;
  for (const ModelObject* node = model_->FirstNode(); node != nullptr; node = node->NextSibling()) {
    EXPECT_EQ(node->Parent(), nullptr);
    top.emplace_back(node->EntityDef().Name());
  }
  EXPECT_THAT(top, ElementsAre("IDENTIFICATION", "ENVIRONMENT", "FILE", "PAR"));
  EXPECT_THAT(IDs(Object(sample_.ifStatement).Children()),
              ElementsAre(sample_.condition, sample_.thenBlock, sample_.elseBlock));
  EXPECT_THAT(IDs(Object(sample_.literal).Children()), IsEmpty());
  EXPECT_EQ(Object(sample_.amountRead).Parent(), &Object(sample_.condition));
  EXPECT_EQ(Object(sample_.condition).NextSibling(), &Object(sample_.thenBlock));
  EXPECT_EQ(Object(sample_.elseBlock).NextSibling(), nullptr);
  EXPECT_EQ(Object(sample_.literal).NextSibling(), nullptr);
}

TEST_F(CodeModelTest, ObjectsOfAnEntityComeWithItsSpecialKindsInTheOrderOfTheSource) {
  EXPECT_THAT(
      IDs(model_->Objects("stat")),
      ElementsAre(sample_.entry, sample_.ifStatement, sample_.thenBlock, sample_.move, sample_.elseBlock, sample_.go,
                  sample_.call, sample_.search, sample_.atEndBlock, sample_.whenBlock, sample_.exit));
  EXPECT_THAT(IDs(model_->Objects("IF")), ElementsAre(sample_.ifStatement, sample_.search));
  EXPECT_THAT(IDs(model_->Objects("DECL")), ElementsAre(sample_.file, sample_.record, sample_.amount, sample_.table));
  EXPECT_THAT(IDs(model_->Objects("LABEL")), ElementsAre(sample_.paragraph));
  EXPECT_THAT(IDs(model_->Objects("FUNC")), IsEmpty());
  EXPECT_EQ(ErrorText([&] { model_->Objects("STATEMENT"); }), "A code model has no entity \"STATEMENT\".");
}

TEST_F(CodeModelTest, ObjectsWithinAnObjectLeaveItOut) {
  EXPECT_THAT(IDs(Object(sample_.ifStatement).Objects("STAT")),
              ElementsAre(sample_.thenBlock, sample_.move, sample_.elseBlock, sample_.go));
  EXPECT_THAT(IDs(Object(sample_.ifStatement).Objects("var")), ElementsAre(sample_.amountRead, sample_.moveTarget));
  EXPECT_THAT(IDs(Object(sample_.condition).Objects("COND")), IsEmpty());
  EXPECT_THAT(IDs(Object(sample_.literal).Objects("VAR")), IsEmpty());
  EXPECT_EQ(ErrorText([&] { Object(sample_.condition).Objects("X"); }), "A code model has no entity \"X\".");
}

TEST_F(CodeModelTest, AWalkEndsWithAnError) {
  const auto cursor = model_->Objects("FUNC");
  EXPECT_TRUE(cursor->Eof());
  EXPECT_EQ(ErrorText([&] { cursor->Item(); }), "A walk over a model has no object past its last one.");
  EXPECT_EQ(ErrorText([&] { cursor->MoveNext(); }), "A walk over a model cannot move past its last object.");
}

TEST_F(CodeModelTest, ATextIsThePieceOfTheSource) {
  EXPECT_EQ(Object(sample_.move).Text(), "MOVE 1 TO TAB");
  EXPECT_EQ(Object(sample_.condition).Text(), "AMOUNT = 1");
  EXPECT_EQ(Object(sample_.ifStatement).Text(), "IF AMOUNT = 1\n  MOVE 1 TO TAB\nELSE\n  GO TO PAR-A");
  EXPECT_EQ(Attr(sample_.move, "text"), "MOVE 1 TO TAB");
  EXPECT_EQ(reads_, 1);
}

TEST_F(CodeModelTest, TheTextOfAConditionAsAnAttributeIsTheNormalisedOne) {
  EXPECT_EQ(Attr(sample_.whenCondition, "Text"), "TAB = 1");
  EXPECT_EQ(Object(sample_.whenCondition).Text(), "TAB");
  EXPECT_EQ(Attr(sample_.atEnd, "TEXT"), "AT END");
}

TEST_F(CodeModelTest, ASourceThatCannotBeReadIsToldWhenATextIsAskedFor) {
  ModelData data = sample_.data;
  data.nodes[sample_.move].file = 1;
  ModelSurroundings surroundings;
  const auto image = ModelImage::FromBytes(SerializeModel(data), "pay.qmm");
  const auto blind = OpenCodeModel(image, surroundings);
  EXPECT_EQ(ErrorText([&] { blind->object(std::int64_t{sample_.move}).Text(); }),
            "The text of copy/rates.cpy is not at hand.");
  surroundings.readSource = [](std::string_view file) -> std::string {
    throw platform::Error(fmt::format("There is no {}.", file));
  };
  EXPECT_EQ(ErrorText([&] { OpenCodeModel(image, surroundings)->object(std::int64_t{sample_.move}).Text(); }),
            "There is no copy/rates.cpy.");
  // The source may have become shorter since the scan.
  surroundings.readSource = [](std::string_view) { return std::string("PROG"); };
  const auto stale = OpenCodeModel(image, surroundings);
  EXPECT_EQ(stale->object(std::int64_t{sample_.go}).Text(), "");
  EXPECT_EQ(stale->object(std::int64_t{sample_.identification}).Text(), "PROG");
}

TEST_F(CodeModelTest, LocationsTellFileRowsCharactersAndThePlaceInTheFlow) {
  const platform::ModelLocation location = Object(sample_.ifStatement).Location();
  EXPECT_EQ(location.FileName, "pay.cbl");
  EXPECT_EQ(location.FileID, 0);
  EXPECT_EQ(location.FirstRow, 6);
  EXPECT_EQ(location.LastRow, 9);
  // Of the two strange characters above it, with two and four bytes, the second one counts twice.
  EXPECT_EQ(location.Position, 80);
  EXPECT_EQ(location.EndPosition, 128);
  EXPECT_EQ(location.Order, 13);
}

TEST_F(CodeModelTest, AttributesOfStatements) {
  EXPECT_EQ(Attr(sample_.move, "Name"), "MOVE");
  EXPECT_EQ(Attr(sample_.move, "Verb"), "MOVE");
  EXPECT_EQ(Attr(sample_.move, "VarUsage"), "(absent)");
  EXPECT_EQ(Attr(sample_.move, "PORTTYPE"), "(absent)");
  EXPECT_EQ(Attr(sample_.ifStatement, "Kind"), "If");
  EXPECT_EQ(Attr(sample_.ifStatement, "Conditions"), "AMOUNT = 1");
  EXPECT_EQ(Attr(sample_.search, "Kind"), "Search");
  EXPECT_EQ(Attr(sample_.search, "Conditions"), "AT END, TAB = 1");
  EXPECT_EQ(Attr(sample_.go, "Declaration"), "PAR-A");
  EXPECT_EQ(Attr(sample_.entry, "PORTTYPE"), "USING");
  EXPECT_EQ(Attr(sample_.exit, "PortType"), "RETURN");
  EXPECT_EQ(Attr(sample_.exit, "Name"), "(absent)");
  EXPECT_EQ(Attr(sample_.call, "PORTTYPE"), "CALL");
  EXPECT_EQ(Attr(sample_.call, "Name"), "TAX");
  EXPECT_EQ(Attr(sample_.call, "Verb"), "CALL");
  EXPECT_EQ(Attr(sample_.thenBlock, "Role"), "Then");
}

TEST_F(CodeModelTest, AttributesOfOperandsAndPlaces) {
  EXPECT_EQ(Attr(sample_.amountRead, "Name"), "AMOUNT");
  EXPECT_EQ(Attr(sample_.amountRead, "VarUsage"), "OUT");
  EXPECT_EQ(Attr(sample_.amountRead, "Role"), "Source");
  EXPECT_EQ(Attr(sample_.amountRead, "Declaration"), fmt::format("DECL#{}", sample_.amount));
  EXPECT_EQ(Attr(sample_.moveTarget, "varusage"), "IN");
  EXPECT_EQ(Attr(sample_.literal, "Value"), "1");
  EXPECT_EQ(Attr(sample_.literal, "VarUsage"), "(absent)");
  EXPECT_EQ(Attr(sample_.literal, "Role"), "(absent)");
  EXPECT_EQ(Attr(sample_.goTarget, "Declaration"), fmt::format("PAR#{}", sample_.paragraph));
  EXPECT_EQ(Attr(sample_.paragraph, "Name"), "PAR-A");
  EXPECT_EQ(Attr(sample_.paragraph, "Description"), "Decides.");
  EXPECT_EQ(Attr(sample_.identification, "Description"), "Pays.");
  EXPECT_EQ(ErrorText([&] { Object(sample_.move).Attr("Colour"); }),
            fmt::format("STAT#{}: the entity STAT has no attribute \"Colour\".", sample_.move));
}

TEST_F(CodeModelTest, AttributesOfDeclarations) {
  EXPECT_EQ(Attr(sample_.amount, "Name"), "AMOUNT");
  EXPECT_EQ(Attr(sample_.amount, "Level"), "5");
  EXPECT_EQ(Attr(sample_.amount, "Picture"), "S9(7)V99");
  EXPECT_EQ(Attr(sample_.amount, "Usage"), "COMP-3");
  EXPECT_EQ(Attr(sample_.amount, "Size"), "5");
  EXPECT_EQ(Attr(sample_.amount, "Offset"), "0");
  EXPECT_EQ(Attr(sample_.amount, "Digits"), "9");
  EXPECT_EQ(Attr(sample_.amount, "Scale"), "2");
  EXPECT_EQ(Attr(sample_.amount, "Value"), "0");
  EXPECT_EQ(Attr(sample_.amount, "Section"), "LINKAGE");
  EXPECT_EQ(Attr(sample_.amount, "Occurs"), "(absent)");
  EXPECT_EQ(Attr(sample_.amount, "Redefines"), "(absent)");
  EXPECT_EQ(Attr(sample_.amount, "External"), "false");
  EXPECT_EQ(Attr(sample_.record, "Global"), "true");
  EXPECT_EQ(Attr(sample_.record, "Digits"), "(absent)");
  EXPECT_EQ(Attr(sample_.record, "Usage"), "GROUP");
  EXPECT_EQ(Attr(sample_.record, "Section"), "FILE");
  EXPECT_EQ(Attr(sample_.table, "Occurs"), "12");
  EXPECT_EQ(Attr(sample_.table, "OccursLeast"), "3");
  EXPECT_EQ(Attr(sample_.table, "DependingOn"), "AMOUNT");
  EXPECT_EQ(Attr(sample_.table, "Redefines"), "AMOUNT");
  EXPECT_EQ(Attr(sample_.table, "Offset"), "5");
  EXPECT_EQ(Attr(sample_.file, "Organization"), "INDEXED");
  EXPECT_EQ(Attr(sample_.file, "Access"), "DYNAMIC");
  EXPECT_EQ(Attr(sample_.file, "Assign"), "PAYDD");
  EXPECT_EQ(Attr(sample_.file, "External"), "true");
  EXPECT_EQ(Attr(sample_.file, "Global"), "false");
  EXPECT_EQ(Attr(sample_.file, "Level"), "(absent)");
  EXPECT_EQ(Attr(sample_.file, "Size"), "(absent)");
}

TEST_F(CodeModelTest, EveryAttributeThatAnEntityDefinesCanBeRead) {
  for (NodeId node = 1; node < sample_.data.nodes.size(); ++node) {
    for (const std::string& attribute : Object(node).EntityDef().Attributes()) {
      EXPECT_NO_THROW(Object(node).Attr(attribute)) << Object(node).Key() << " " << attribute;
      EXPECT_TRUE(Object(node).EntityDef().HasAttribute(attribute));
    }
  }
}

TEST_F(CodeModelTest, RelationsLeadFromOccurrencesToDeclarationsAndBack) {
  EXPECT_THAT(IDs(Object(sample_.amountRead).Related("declaration")), ElementsAre(sample_.amount));
  EXPECT_THAT(IDs(Object(sample_.goTarget).Related("Declaration")), ElementsAre(sample_.paragraph));
  EXPECT_THAT(IDs(Object(sample_.go).Related("Declaration")), ElementsAre(sample_.paragraph));
  EXPECT_THAT(IDs(Object(sample_.selectFile).Related("Declaration")), IsEmpty());
  EXPECT_THAT(IDs(Object(sample_.selectFile).Related("Data")), ElementsAre(sample_.file));
  EXPECT_THAT(IDs(Object(sample_.amount).Related("Occurrences")), ElementsAre(sample_.amountRead));
  EXPECT_THAT(IDs(Object(sample_.record).Related("Occurrences")), IsEmpty());
  EXPECT_THAT(IDs(Object(sample_.paragraph).Related("Occurrences")), ElementsAre(sample_.goTarget));
  EXPECT_THAT(IDs(Object(sample_.file).Related("Occurrences")), ElementsAre(sample_.selectFile));
}

TEST_F(CodeModelTest, RelationsLeadFromConditionsToTheirBranches) {
  EXPECT_THAT(IDs(Object(sample_.ifStatement).Related("Conditions")), ElementsAre(sample_.condition));
  EXPECT_THAT(IDs(Object(sample_.condition).Related("THEN branch")), ElementsAre(sample_.thenBlock));
  EXPECT_THAT(IDs(Object(sample_.condition).Related("ELSE branch")), ElementsAre(sample_.elseBlock));
  EXPECT_THAT(IDs(Object(sample_.whenCondition).Related("THEN branch")), ElementsAre(sample_.whenBlock));
  EXPECT_THAT(IDs(Object(sample_.whenCondition).Related("ELSE branch")), IsEmpty());
  EXPECT_THAT(IDs(Object(sample_.atEnd).Related("THEN branch")), ElementsAre(sample_.atEndBlock));
  EXPECT_THAT(IDs(Object(sample_.atEnd).Related("ELSE branch")), IsEmpty());
}

TEST_F(CodeModelTest, RelationsBetweenDeclarations) {
  EXPECT_THAT(IDs(Object(sample_.file).Related("Records")), ElementsAre(sample_.record));
  EXPECT_THAT(IDs(Object(sample_.file).Related("Status")), ElementsAre(sample_.amount));
  EXPECT_THAT(IDs(Object(sample_.file).Related("Key")), ElementsAre(sample_.table));
  EXPECT_THAT(IDs(Object(sample_.table).Related("Redefines")), ElementsAre(sample_.amount));
  EXPECT_THAT(IDs(Object(sample_.table).Related("DependingOn")), ElementsAre(sample_.amount));
  EXPECT_THAT(IDs(Object(sample_.amount).Related("Redefines")), IsEmpty());
  EXPECT_THAT(IDs(Object(sample_.amount).Related("FILE")), IsEmpty());
  EXPECT_THAT(IDs(Object(sample_.move).Related("Records")), IsEmpty());
}

TEST_F(CodeModelTest, EntitiesAreDescribedAsTheVocabularyHasThem) {
  const platform::ModelEntity* statement = model_->EntityDef("Stat");
  ASSERT_NE(statement, nullptr);
  ASSERT_NE(statement->Relation("iostat"), nullptr);
  EXPECT_EQ(statement->Relation("iostat")->Kind(), 1);
  EXPECT_EQ(&statement->Relation("iostat")->Target(), model_->EntityDef("IOSTAT"));
  EXPECT_EQ(statement->Relation("VAR"), nullptr);
  EXPECT_EQ(statement->Relations().size(), 6U);
  EXPECT_EQ(&model_->EntityDef("VAR")->Relation("Declaration")->Target(), model_->EntityDef("DECL"));
  EXPECT_EQ(model_->EntityDef("STATEMENT"), nullptr);
  EXPECT_EQ(&Object(sample_.move).EntityDef(), statement);
}

TEST_F(CodeModelTest, TheDefinitionIsAnXmlTextOfTheVocabulary) {
  EXPECT_EQ(model_->ModelName(), "COBOL");
  platform::XmlDocument document;
  document.loadXML(model_->DefinitionText());
  EXPECT_EQ(document.documentElement().nodeName(), "model");
  EXPECT_EQ(document.documentElement().AttributeOr("name", ""), "COBOL");
  EXPECT_EQ(document.selectNodes("/model/entity").size(), kEntities);
  EXPECT_TRUE(document.selectSingleNode("/model/entity[@name='STAT']/relation[@name='IF'][@kind='1'][@target='IF']"));
  EXPECT_TRUE(document.selectSingleNode("/model/entity[@name='VAR']/relation[@name='Declaration'][@target='DECL']"));
  EXPECT_TRUE(document.selectSingleNode("/model/entity[@name='PORT']/attribute[@name='PORTTYPE']"));
}

TEST_F(CodeModelTest, NothingIsKnownOfListsAndOfADatabaseThatIsNotThere) {
  EXPECT_THAT(model_->Matches("Rules", "Tax", "Billing"), IsEmpty());
  EXPECT_EQ(ErrorText([&] { model_->Database(); }), "The project has no dataflow database.");
}

TEST_F(CodeModelTest, AnEmptyModelHasNoFirstNode) {
  ModelData data;
  data.nodes.resize(1);
  data.texts.resize(1);
  data.files.push_back({"empty.cbl", {}});
  const auto model = OpenCodeModel(ModelImage::FromBytes(SerializeModel(data), "empty.qmm"), {});
  EXPECT_EQ(model->FirstNode(), nullptr);
  EXPECT_TRUE(model->Objects("STAT")->Eof());
  EXPECT_EQ(ErrorText([&] { model->object(std::int64_t{1}); }), "The model of empty.cbl has no object 1.");
}

TEST_F(CodeModelTest, TheFactoryOpensFiles) {
  const test::TemporaryFolder folder;
  const std::string path = folder.File("pay.qmm");
  WriteModelFile(path, sample_.data);
  CodeModelFactory factory({});
  EXPECT_EQ(factory.OpenModel(path)->FirstNode()->Key(), fmt::format("IDENTIFICATION#{}", sample_.identification));
  const std::string source = folder.Write("pay.cbl", "IDENTIFICATION DIVISION.");
  EXPECT_EQ(ErrorText([&] { factory.OpenModel(source); }), source + " is no code model. Scan the program again.");
}

}  // namespace
}  // namespace qmrules::workbench::codemodel
