#include "workbench/codemodel/modelfile.h"

#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstring>
#include <functional>
#include <stdexcept>

#include "platform/diskfile.h"
#include "platform/error.h"
#include "support/errortext.h"
#include "support/temporaryfolder.h"
#include "workbench/codemodel/modelformat.h"
#include "workbench/codemodel/samplemodel.h"
#include "workbench/codemodel/showndiagnostic.h"

namespace qmrules::workbench::codemodel {
namespace {

using test::ErrorText;
using test::MakeSampleModel;
using test::SampleModel;
using test::TemporaryFolder;
using ::testing::ElementsAre;

template <typename T>
void ExpectSameBytes(std::span<const T> image, const std::vector<T>& data, const char* what) {
  ASSERT_EQ(image.size(), data.size()) << what;
  EXPECT_EQ(std::memcmp(image.data(), data.data(), data.size() * sizeof(T)), 0) << what;
}

std::string Show(const FileEntry& file) {
  return fmt::format("{} {} {}", file.name, file.hash[0], file.hash[1]);
}
std::string Show(const Dependency& dependency) {
  return fmt::format("{}|{}|{}", dependency.name, dependency.library, dependency.file);
}

template <typename T>
std::vector<std::string> ShowAll(const std::vector<T>& list) {
  std::vector<std::string> shown;
  for (const T& entry : list) shown.push_back(Show(entry));
  return shown;
}

// The bytes of the sample after a change of its header, with checksums that fit.
std::string Forge(const std::function<void(ModelFileHeader&)>& change) {
  std::string bytes = SerializeModel(MakeSampleModel().data);
  ModelFileHeader header;
  std::memcpy(static_cast<void*>(&header), bytes.data(), sizeof header);
  change(header);
  std::memcpy(bytes.data(), &header, sizeof header);
  if (header.Section(ModelSection::Nodes).offset <= bytes.size()) {
    SealModel(std::as_writable_bytes(std::span(bytes)));
  }
  return bytes;
}

// The same after a change of the number at a place of a section.
template <typename T>
std::string ForgeIn(ModelSection section, std::size_t offset, T number) {
  std::string bytes = SerializeModel(MakeSampleModel().data);
  ModelFileHeader header;
  std::memcpy(static_cast<void*>(&header), bytes.data(), sizeof header);
  std::memcpy(bytes.data() + header.Section(section).offset + offset, &number, sizeof number);
  SealModel(std::as_writable_bytes(std::span(bytes)));
  return bytes;
}

std::string RefusalOf(std::string bytes) {
  return ErrorText([&] { ModelImage::FromBytes(std::move(bytes), "pay.qmm"); });
}

TEST(ModelFile, EverythingComesBack) {
  const ModelData data = MakeSampleModel().data;
  const auto image = ModelImage::FromBytes(SerializeModel(data), "pay.qmm");
  ExpectSameBytes(image->Nodes(), data.nodes, "nodes");
  ExpectSameBytes(image->Decls(), data.decls, "decls");
  ExpectSameBytes(image->FileRecords(), data.fileRecords, "file records");
  ExpectSameBytes(image->Units(), data.units, "units");
  ASSERT_EQ(image->Texts(), data.texts.size());
  for (TextId text = 0; text < image->Texts(); ++text) EXPECT_EQ(image->Text(text), data.texts[text]);
  EXPECT_EQ(image->Language(), "COBOL");
  EXPECT_EQ(image->Rows(), 12U);
  EXPECT_EQ(image->Head().program, "PAY");
  EXPECT_EQ(image->Head().options, "format=fixed");
  EXPECT_THAT(ShowAll(image->Files()), ElementsAre("pay.cbl 11 22", "copy/rates.cpy 33 44"));
  EXPECT_EQ(image->FileName(1), "copy/rates.cpy");
  EXPECT_THAT(ShowAll(image->Dependencies()), ElementsAre("RATES|COPY|copy/rates.cpy", "GONE||"));
  EXPECT_THAT(ShowAll(image->ListDiagnostics()),
              ElementsAre("gap pay.cbl:12:1: Odd.", "warning copy/rates.cpy:3:8: Strange."));
  EXPECT_EQ(image->CountDiagnostics(Severity::Gap), 1U);
  EXPECT_EQ(image->CountDiagnostics(Severity::Warning), 1U);
  EXPECT_EQ(image->CountDiagnostics(Severity::Note), 0U);
}

TEST(ModelFile, NodesAreListedByEntityInTheirOrder) {
  const SampleModel sample = MakeSampleModel();
  const auto image = ModelImage::FromBytes(SerializeModel(sample.data), "pay.qmm");
  EXPECT_THAT(image->NodesOf(Entity::Cond), ElementsAre(sample.condition, sample.atEnd, sample.whenCondition));
  EXPECT_THAT(image->NodesOf(Entity::Port), ElementsAre(sample.entry, sample.call, sample.exit));
  EXPECT_THAT(image->NodesOf(Entity::Func), ElementsAre());
  EXPECT_EQ(image->Decl(sample.amount).digits, 9);
  EXPECT_EQ(image->File(sample.file).status, sample.amount);
}

TEST(ModelFile, EqualModelsHaveEqualBytes) {
  EXPECT_EQ(SerializeModel(MakeSampleModel().data), SerializeModel(MakeSampleModel().data));
}

TEST(ModelFile, AModelWithoutNodesCanBeKept) {
  ModelData data;
  data.nodes.resize(1);
  data.texts.resize(1);
  data.files.push_back({"empty.cbl", {}});
  const auto image = ModelImage::FromBytes(SerializeModel(data), "empty.qmm");
  EXPECT_EQ(image->Nodes().size(), 1U);
  EXPECT_EQ(image->Head().program, "");
  EXPECT_THAT(image->ListDiagnostics(), ElementsAre());
}

TEST(ModelFile, AnOpenModelStaysAsItWasWhenTheProgramIsScannedAgain) {
  const TemporaryFolder folder;
  ModelData model = MakeSampleModel().data;
  WriteModelFile(folder.File("model"), model);
  const auto image = ModelImage::Open(folder.File("model"));
  const std::string before(image->Text(1));
  model.texts[1] = "another text";
  WriteModelFile(folder.File("model"), model);
  EXPECT_EQ(image->Text(1), before);
  EXPECT_EQ(ModelImage::Open(folder.File("model"))->Text(1), "another text");
}

TEST(ModelFile, TheHeadIsReadFromTheFileAlone) {
  const TemporaryFolder folder;
  const std::string path = folder.File("pay.qmm");
  ModelData data = MakeSampleModel().data;
  WriteModelFile(path, data);
  ModelHead head = ReadModelHead(path);
  EXPECT_EQ(head.language, "COBOL");
  EXPECT_EQ(head.program, "PAY");
  EXPECT_EQ(head.rows, 12U);
  EXPECT_EQ(head.gaps, 1U);
  EXPECT_EQ(head.warnings, 1U);
  EXPECT_EQ(head.notes, 0U);
  EXPECT_EQ(head.options, "format=fixed");
  EXPECT_THAT(ShowAll(head.files), ElementsAre("pay.cbl 11 22", "copy/rates.cpy 33 44"));
  EXPECT_THAT(ShowAll(head.dependencies), ElementsAre("RATES|COPY|copy/rates.cpy", "GONE||"));

  // One that is longer than what is read at first.
  for (int number = 0; number < 2000; ++number) data.files.push_back({fmt::format("copy/part{}.cpy", number), {1, 2}});
  WriteModelFile(path, data);
  head = ReadModelHead(path);
  ASSERT_EQ(head.files.size(), 2002U);
  EXPECT_EQ(head.files.back().name, "copy/part1999.cpy");
  EXPECT_EQ(ModelImage::Open(path)->Files().size(), 2002U);
}

TEST(ModelFile, ADamagedHeadIsRefusedByBothAndADamagedBodyWhenTheModelIsOpened) {
  const TemporaryFolder folder;
  const std::string path = folder.File("pay.qmm");
  const std::string refusal = path + " is damaged: its checksum does not fit. Scan the program again.";
  const std::string whole = SerializeModel(MakeSampleModel().data);
  std::string damaged = whole;
  damaged[sizeof(ModelFileHeader) + 5] ^= 1;
  platform::WriteDiskFile(path, damaged);
  EXPECT_EQ(ErrorText([&] { ReadModelHead(path); }), refusal);
  EXPECT_EQ(ErrorText([&] { ModelImage::Open(path); }), refusal);
  damaged = whole;
  damaged.back() ^= 1;
  platform::WriteDiskFile(path, damaged);
  EXPECT_EQ(ReadModelHead(path).program, "PAY");
  EXPECT_EQ(ErrorText([&] { ModelImage::Open(path); }),
            path + " is damaged: its checksum does not fit. Scan the program again with --force.");
}

TEST(ModelFile, AFileThatCannotBeReadIsToldWithTheReason) {
  const TemporaryFolder folder;
  const std::string path = folder.File("none.qmm");
  const std::string refusal =
      "The file \"" + path + "\" cannot be read: there is no such file. Scan the program again.";
  EXPECT_EQ(ErrorText([&] { ModelImage::Open(path); }), refusal);
  EXPECT_EQ(ErrorText([&] { ReadModelHead(path); }), refusal);
}

TEST(ModelFile, AFileThatCannotBeWrittenIsTold) {
  const TemporaryFolder folder;
  const std::string path = folder.File("none/pay.qmm");
  EXPECT_EQ(ErrorText([&] { WriteModelFile(path, MakeSampleModel().data); }),
            "The file \"" + path + "\" cannot be written: there is no such folder.");
}

TEST(ModelFile, ForeignFilesAreNoCodeModels) {
  EXPECT_EQ(RefusalOf(""), "pay.qmm is no code model. Scan the program again.");
  EXPECT_EQ(RefusalOf("IDENTIFICATION DIVISION."), "pay.qmm is no code model. Scan the program again.");
  EXPECT_EQ(RefusalOf(std::string(100'000, '\0')), "pay.qmm is no code model. Scan the program again.");
  EXPECT_EQ(RefusalOf(Forge([](ModelFileHeader& header) { header.byteOrder = 7; })),
            "pay.qmm is no code model. Scan the program again.");
}

TEST(ModelFile, OtherVersionsFormsAndByteOrdersAreRefused) {
  EXPECT_EQ(RefusalOf(Forge([](ModelFileHeader& header) { header.version = 9; })),
            "pay.qmm is a code model of version 9, and version 1 is wanted. Scan the program again.");
  EXPECT_EQ(RefusalOf(Forge([](ModelFileHeader& header) { header.byteOrder = 0x04030201; })),
            "pay.qmm was made on a machine of another byte order. Scan the program again.");
  const std::string otherForm = "pay.qmm is a code model of another form. Scan the program again.";
  EXPECT_EQ(RefusalOf(Forge([](ModelFileHeader& header) { header.nodeSize = 64; })), otherForm);
  EXPECT_EQ(RefusalOf(Forge([](ModelFileHeader& header) { header.entities = 12; })), otherForm);
  EXPECT_EQ(RefusalOf(Forge([](ModelFileHeader& header) { header.headerSize = 8; })), otherForm);
}

TEST(ModelFile, SectionsThatDoNotFitAreRefused) {
  const std::string refusal = "pay.qmm is damaged: its sections do not fit. Scan the program again.";
  EXPECT_EQ(RefusalOf(Forge([](ModelFileHeader& header) { header.Section(ModelSection::Nodes).offset += 8; })),
            refusal);
  EXPECT_EQ(RefusalOf(Forge([](ModelFileHeader& header) { header.Section(ModelSection::Head).size = ~0ULL; })),
            refusal);
  EXPECT_EQ(RefusalOf(Forge([](ModelFileHeader& header) { header.Section(ModelSection::Diagnostics).size += 8; })),
            refusal);
  EXPECT_EQ(RefusalOf(Forge([](ModelFileHeader& header) { header.Section(ModelSection::Nodes).size -= 1; })),
            "pay.qmm is damaged: its sections do not fit. Scan the program again with --force.");
}

TEST(ModelFile, TornAtAnyPlaceItIsRefused) {
  const std::string whole = SerializeModel(MakeSampleModel().data);
  for (std::size_t size = 0; size < whole.size(); ++size) {
    const std::string text = RefusalOf(whole.substr(0, size));
    if (size < 8) {
      ASSERT_EQ(text, "pay.qmm is no code model. Scan the program again.");
    } else if (size < sizeof(ModelFileHeader)) {
      ASSERT_EQ(text, "pay.qmm is damaged: it ends early. Scan the program again.");
    } else {
      ASSERT_EQ(text,
                fmt::format("pay.qmm is damaged: it has {} bytes of {}. Scan the program again.", size, whole.size()));
    }
  }
}

TEST(ModelFile, WithAnyByteChangedItIsRefused) {
  const std::string whole = SerializeModel(MakeSampleModel().data);
  for (std::size_t place = 0; place < whole.size(); ++place) {
    for (const int bit : {1, 128}) {
      std::string changed = whole;
      changed[place] = static_cast<char>(changed[place] ^ bit);
      ASSERT_THAT(RefusalOf(std::move(changed)), ::testing::HasSubstr(". Scan the program again")) << place;
    }
  }
}

TEST(ModelFile, NumbersThatLeadNowhereAreRefused) {
  const SampleModel sample = MakeSampleModel();
  const auto node = [](NodeId number, std::size_t member) { return number * sizeof(NodeRecord) + member; };
  const auto wrongNode = [](NodeId number) {
    return fmt::format("pay.qmm is damaged: node {} is wrong. Scan the program again with --force.", number);
  };
  const std::uint32_t beyond = 1'000'000;
  EXPECT_EQ(RefusalOf(ForgeIn(ModelSection::Nodes, node(0, offsetof(NodeRecord, declaration)), 1U)), wrongNode(0));
  EXPECT_EQ(RefusalOf(ForgeIn(ModelSection::Nodes, node(sample.move, offsetof(NodeRecord, parent)), beyond)),
            wrongNode(sample.move));
  EXPECT_EQ(RefusalOf(ForgeIn(ModelSection::Nodes, node(sample.move, offsetof(NodeRecord, parent)), sample.condition)),
            wrongNode(sample.move));
  EXPECT_EQ(RefusalOf(ForgeIn(ModelSection::Nodes, node(sample.move, offsetof(NodeRecord, last)), sample.elseBlock)),
            wrongNode(sample.move));
  EXPECT_EQ(RefusalOf(ForgeIn(ModelSection::Nodes, node(sample.move, offsetof(NodeRecord, last)), 1U)),
            wrongNode(sample.move));
  EXPECT_EQ(RefusalOf(ForgeIn(ModelSection::Nodes, node(sample.move, offsetof(NodeRecord, name)), beyond)),
            wrongNode(sample.move));
  EXPECT_EQ(RefusalOf(ForgeIn(ModelSection::Nodes, node(sample.go, offsetof(NodeRecord, declaration)), beyond)),
            wrongNode(sample.go));
  EXPECT_EQ(RefusalOf(ForgeIn(ModelSection::Nodes, node(sample.condition, offsetof(NodeRecord, detail)), beyond)),
            wrongNode(sample.condition));
  EXPECT_EQ(RefusalOf(ForgeIn(ModelSection::Nodes, node(sample.amount, offsetof(NodeRecord, detail)), 0U)),
            wrongNode(sample.amount));
  EXPECT_EQ(RefusalOf(ForgeIn(ModelSection::Nodes, node(sample.go, offsetof(NodeRecord, file)), std::uint16_t{2})),
            wrongNode(sample.go));
  EXPECT_EQ(RefusalOf(ForgeIn(ModelSection::Nodes, node(sample.go, offsetof(NodeRecord, entity)), std::uint8_t{24})),
            wrongNode(sample.go));
  EXPECT_EQ(RefusalOf(ForgeIn(ModelSection::Nodes, node(sample.go, offsetof(NodeRecord, role)), std::uint8_t{200})),
            wrongNode(sample.go));
  EXPECT_EQ(RefusalOf(ForgeIn(ModelSection::Nodes, node(sample.go, offsetof(NodeRecord, firstRow)), beyond)),
            wrongNode(sample.go));
  EXPECT_EQ(RefusalOf(ForgeIn(ModelSection::Decls, offsetof(DeclRecord, area), beyond)),
            "pay.qmm is damaged: declaration 0 is wrong. Scan the program again with --force.");
  EXPECT_EQ(RefusalOf(ForgeIn(ModelSection::Decls, offsetof(DeclRecord, usage), std::uint8_t{99})),
            "pay.qmm is damaged: declaration 0 is wrong. Scan the program again with --force.");
  EXPECT_EQ(RefusalOf(ForgeIn(ModelSection::FileRecords, offsetof(FileRecord, key), sample.go)),
            "pay.qmm is damaged: file 0 is wrong. Scan the program again with --force.");
  EXPECT_EQ(RefusalOf(ForgeIn(ModelSection::Units, offsetof(UnitRecord, parent), 1U)),
            "pay.qmm is damaged: unit 0 is wrong. Scan the program again with --force.");
  EXPECT_EQ(RefusalOf(ForgeIn(ModelSection::Entities, 4, beyond)),
            "pay.qmm is damaged: its lists of nodes are wrong. Scan the program again with --force.");
  EXPECT_EQ(RefusalOf(ForgeIn(ModelSection::NodesOf, 0, sample.go)),
            "pay.qmm is damaged: its lists of nodes are wrong. Scan the program again with --force.");
  EXPECT_EQ(RefusalOf(ForgeIn(ModelSection::TextEnds, 4, beyond)),
            "pay.qmm is damaged: its texts do not fit. Scan the program again with --force.");
  EXPECT_EQ(RefusalOf(ForgeIn(ModelSection::Diagnostics, 4, 17U)),
            "pay.qmm is damaged: its diagnostics are wrong. Scan the program again with --force.");
  EXPECT_EQ(RefusalOf(ForgeIn(ModelSection::Head, 0, beyond)),
            "pay.qmm is damaged: its head is wrong. Scan the program again.");
}

TEST(ModelFile, ADefectiveModelIsNotWritten) {
  ModelData data = MakeSampleModel().data;
  data.nodes[3].declaration = 5000;
  EXPECT_THROW(SerializeModel(data), std::logic_error);
  data = MakeSampleModel().data;
  data.files.clear();
  EXPECT_THROW(SerializeModel(data), std::logic_error);
}

}  // namespace
}  // namespace qmrules::workbench::codemodel
