#include "workbench/codemodel/samplemodel.h"

#include "workbench/codemodel/handmadetext.h"
#include "workbench/codemodel/modelbuilder.h"

namespace qmrules::test {

using namespace workbench::codemodel;

std::string SampleText() {
  return "PROGRAM-ID. PAY.\n"
         "SELECT PAYFILE\n"
         "FD PAYFILE\n"
         "01 REC 05 AMOUNT 05 TAB\n"
         "PAR-A. * \xC3\xBC\xF0\x9F\x98\x80\n"
         "IF AMOUNT = 1\n"
         "  MOVE 1 TO TAB\n"
         "ELSE\n"
         "  GO TO PAR-A\n"
         "CALL 'TAX'\n"
         "SEARCH TAB AT END STOP WHEN TAB = 1 CONTINUE\n"
         "GOBACK\n";
}

namespace {

// Makes the nodes of the sample one after the other.
class Maker {
 public:
  Maker() {
    text_.AddFile("pay.cbl", SampleText());
    text_.AddAll(
        0, "PROGRAM-ID. PAY. SELECT PAYFILE FD PAYFILE 01 REC 05 AMOUNT 05 TAB PAR-A. IF AMOUNT = 1 MOVE 1 TO TAB");
    text_.AddAll(0, "ELSE GO TO PAR-A CALL 'TAX' SEARCH TAB AT END STOP WHEN TAB = 1 CONTINUE GOBACK");
  }

  SampleModel Make() {
    ModelBuilder model(text_.End(), diagnostics_);
    MakeData(model);
    MakeParagraph(model);
    model.Report(Severity::Gap, 37, "Odd.");
    UnitRecord unit;
    unit.identification = sample_.identification;
    unit.name = model.Text("PAY");
    unit.firstNode = 1;
    unit.lastNode = model.LastNode();
    model.Units().push_back(unit);
    sample_.data = model.Take("COBOL");
    sample_.data.files[0].hash[0] = 11;
    sample_.data.files[0].hash[1] = 22;
    sample_.data.files.push_back({"copy/rates.cpy", {33, 44}});
    sample_.data.dependencies = {{"RATES", "COPY", "copy/rates.cpy"}, {"GONE", "", ""}};
    sample_.data.diagnostics.push_back({Severity::Warning, "copy/rates.cpy", 3, 8, "Strange."});
    sample_.data.options = "format=fixed";
    return std::move(sample_);
  }

 private:
  void Named(ModelBuilder& model, NodeId node, std::string_view name) { model.Node(node).name = model.Text(name); }
  NodeId Leaf(ModelBuilder& model, Entity entity, std::uint32_t first, std::uint32_t last, std::string_view name) {
    const NodeId node = model.Leaf(entity, first, last);
    Named(model, node, name);
    return node;
  }
  NodeId Variable(ModelBuilder& model, std::uint32_t token, NodeId declaration, VarUsage usage, Role role) {
    const NodeId node = model.Leaf(Entity::Var, token, token);
    NodeRecord& record = model.Node(node);
    record.name = model.Node(declaration).name;
    record.declaration = declaration;
    record.usage = usage;
    record.role = role;
    return node;
  }
  NodeId Condition(ModelBuilder& model, std::uint32_t token, std::string_view text) {
    const NodeId node = model.Leaf(Entity::Cond, token, token);
    model.Node(node).detail = model.Text(text);
    return node;
  }
  NodeId Block(ModelBuilder& model, std::uint32_t token, Role role) {
    const NodeId node = model.Leaf(Entity::Block, token, token);
    model.Node(node).role = role;
    return node;
  }

  void MakeData(ModelBuilder& model) {
    sample_.identification = Leaf(model, Entity::Identification, 0, 1, "PAY");
    model.Node(sample_.identification).detail = model.Text("Pays.");
    const NodeId environment = model.Open(Entity::Environment, 2);
    sample_.selectFile = Leaf(model, Entity::Ref, 3, 3, "PAYFILE");
    model.Close(environment, 3);
    sample_.file = model.Open(Entity::File, 4);
    Named(model, sample_.file, "PAYFILE");
    sample_.record = model.Open(Entity::Decl, 6);
    Named(model, sample_.record, "REC");
    sample_.amount = Leaf(model, Entity::Decl, 8, 9, "AMOUNT");
    sample_.table = Leaf(model, Entity::Decl, 10, 11, "TAB");
    model.Close(sample_.record, 11);
    model.Close(sample_.file, 11);
    model.Node(sample_.selectFile).declaration = sample_.file;
    MakeRecords(model);
  }

  void MakeRecords(ModelBuilder& model) {
    FileRecord& file = model.AddFile(sample_.file);
    file.select = sample_.selectFile;
    file.firstRecord = sample_.record;
    file.assign = model.Text("PAYDD");
    file.organization = model.Text("INDEXED");
    file.access = model.Text("DYNAMIC");
    file.status = sample_.amount;
    file.key = sample_.table;
    file.isSort = 1;
    file.flags = kExternal;
    DeclRecord& record = model.AddDecl(sample_.record);
    record.size = 30;
    record.level = 1;
    record.area = sample_.record;
    record.flags = kGlobal;
    DeclRecord& amount = model.AddDecl(sample_.amount);
    amount.level = 5;
    amount.size = 5;
    amount.area = sample_.record;
    amount.picture = model.Text("S9(7)V99");
    amount.value = model.Text("0");
    amount.digits = 9;
    amount.scale = 2;
    amount.flags = kNumeric | kSigned;
    amount.usage = DataUsage::Packed;
    amount.section = static_cast<std::uint8_t>(DataSectionKind::Linkage);
    DeclRecord& table = model.AddDecl(sample_.table);
    table.level = 5;
    table.offset = 5;
    table.size = 2;
    table.area = sample_.record;
    table.occursLeast = 3;
    table.occurs = 12;
    table.flags = kOccurs;
    table.redefines = sample_.amount;
    table.renamesThrough = sample_.amount;
    table.dependingOn = sample_.amount;
    table.usage = DataUsage::Display;
  }

  void MakeParagraph(ModelBuilder& model) {
    sample_.paragraph = model.Open(Entity::Par, 12);
    Named(model, sample_.paragraph, "PAR-A");
    model.Node(sample_.paragraph).detail = model.Text("Decides.");
    sample_.entry = Leaf(model, Entity::Port, 12, 12, "ENTRY");
    model.Node(sample_.entry).flags = kPortUsing | kImplicit;
    MakeIf(model);
    sample_.call = Leaf(model, Entity::Port, 25, 26, "CALL");
    model.Node(sample_.call).detail = model.Text("TAX");
    MakeSearch(model);
    sample_.exit = Leaf(model, Entity::Port, 37, 37, "GOBACK");
    model.Node(sample_.exit).flags = kPortReturn;
    model.Close(sample_.paragraph, 37);
  }

  void MakeIf(ModelBuilder& model) {
    sample_.ifStatement = model.Open(Entity::If, 13);
    Named(model, sample_.ifStatement, "IF");
    model.Node(sample_.ifStatement).detail = model.Text("If");
    model.Node(sample_.ifStatement).verb = 7;
    sample_.condition = model.Open(Entity::Cond, 14);
    model.Node(sample_.condition).detail = model.Text("AMOUNT = 1");
    sample_.amountRead = Variable(model, 14, sample_.amount, VarUsage::Out, Role::Source);
    sample_.literal = Leaf(model, Entity::Const, 16, 16, "1");
    model.Close(sample_.condition, 16);
    sample_.thenBlock = model.Open(Entity::Block, 17);
    model.Node(sample_.thenBlock).role = Role::Then;
    sample_.move = model.Open(Entity::Stat, 17);
    Named(model, sample_.move, "MOVE");
    sample_.moveTarget = Variable(model, 20, sample_.table, VarUsage::In, Role::Target);
    model.Close(sample_.move, 20);
    model.Close(sample_.thenBlock, 20);
    sample_.elseBlock = model.Open(Entity::Block, 21);
    model.Node(sample_.elseBlock).role = Role::Else;
    sample_.go = model.Open(Entity::Goto, 22);
    Named(model, sample_.go, "GO TO");
    model.Node(sample_.go).declaration = sample_.paragraph;
    sample_.goTarget = Leaf(model, Entity::Ref, 24, 24, "PAR-A");
    model.Node(sample_.goTarget).declaration = sample_.paragraph;
    model.Close(sample_.go, 24);
    model.Close(sample_.elseBlock, 24);
    model.Close(sample_.ifStatement, 24);
  }

  void MakeSearch(ModelBuilder& model) {
    sample_.search = model.Open(Entity::If, 27);
    Named(model, sample_.search, "SEARCH");
    model.Node(sample_.search).detail = model.Text("Search");
    sample_.atEnd = Condition(model, 29, "AT END");
    sample_.atEndBlock = Block(model, 31, Role::Then);
    sample_.whenCondition = Condition(model, 33, "TAB = 1");
    sample_.whenBlock = Block(model, 36, Role::Then);
    model.Close(sample_.search, 36);
  }

  HandMadeText text_;
  Diagnostics diagnostics_;
  SampleModel sample_;
};

}  // namespace

SampleModel MakeSampleModel() {
  return Maker().Make();
}

}  // namespace qmrules::test
