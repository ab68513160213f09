#include "workbench/codemodel/modelfile.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstring>
#include <limits>

#include "platform/diskfile.h"
#include "platform/error.h"
#include "workbench/codemodel/bytestream.h"
#include "workbench/codemodel/modelcheck.h"
#include "workbench/codemodel/modelformat.h"

namespace qmrules::workbench::codemodel {

namespace {

// What the errors say of a file, behind its name.
constexpr std::string_view kNoModel = "is no code model";
constexpr std::string_view kDamaged = "is damaged";

platform::Error Refusal(std::string_view name, std::string_view reason) {
  return platform::Error(fmt::format("{} {}. Scan the program again.", name, reason));
}

// For what a scan, which looks at the heads of models only, does not see.
platform::Error HiddenRefusal(std::string_view name, std::string_view reason) {
  return platform::Error(fmt::format("{} {}. Scan the program again with --force.", name, reason));
}

std::string Damage(std::string_view what) {
  return fmt::format("{}: {}", kDamaged, what);
}

// Takes the header from the first bytes of a file of this size and checks all that it says. What is wrong, or nothing.
std::optional<std::string> ReadHeader(std::span<const std::byte> start, std::size_t fileSize, ModelFileHeader& header) {
  const std::size_t known = std::min(start.size(), sizeof header);
  std::memcpy(static_cast<void*>(&header), start.data(), known);
  if (known < sizeof header.magic || header.magic != kModelMagic) return std::string(kNoModel);
  if (known < sizeof header) return Damage("it ends early");
  if (header.byteOrder == __builtin_bswap32(kByteOrderMark)) return "was made on a machine of another byte order";
  if (header.byteOrder != kByteOrderMark) return std::string(kNoModel);
  if (header.version != kModelVersion) {
    return fmt::format("is a code model of version {}, and version {} is wanted", header.version, kModelVersion);
  }
  if (header.totalSize != fileSize) {
    return Damage(fmt::format("it has {} bytes of {}", fileSize, header.totalSize));
  }
  const ModelFileHeader own;
  if (header.headerSize != sizeof header || header.nodeSize != own.nodeSize || header.declSize != own.declSize ||
      header.fileRecordSize != own.fileRecordSize || header.unitSize != own.unitSize ||
      header.entities != own.entities) {
    return "is a code model of another form";
  }
  std::uint64_t end = AlignedEnd(sizeof header);
  for (const ModelSectionPlace& section : header.sections) {
    if (section.offset != end || end > fileSize || section.size > fileSize - end)
      return Damage("its sections do not fit");
    end = AlignedEnd(end + section.size);
  }
  if (end != fileSize) return Damage("its sections do not fit");
  return std::nullopt;
}

// False when the bytes are no head.
bool ReadHead(std::span<const std::byte> bytes, ModelHead& head) {
  ByteReader reader(bytes);
  head.language = reader.Text();
  head.program = reader.Text();
  head.options = reader.Text();
  head.rows = reader.Number32();
  head.gaps = reader.Number32();
  head.warnings = reader.Number32();
  head.notes = reader.Number32();
  constexpr std::size_t leastFile = 4 + 16;
  head.files.resize(reader.Count(leastFile));
  for (FileEntry& file : head.files) {
    file.name = reader.Text();
    for (std::uint64_t& hash : file.hash) hash = reader.Number64();
  }
  constexpr std::size_t leastDependency = std::size_t{3} * 4;
  head.dependencies.resize(reader.Count(leastDependency));
  for (Dependency& dependency : head.dependencies) {
    dependency.name = reader.Text();
    dependency.library = reader.Text();
    dependency.file = reader.Text();
  }
  return !reader.Failed() && reader.AtEnd();
}

// Walks over the diagnostics and hands each to `take`. False when the bytes are none.
template <typename Take>
bool ReadDiagnostics(std::span<const std::byte> bytes, const Take& take) {
  ByteReader reader(bytes);
  constexpr std::size_t least = std::size_t{5} * 4;
  const std::uint32_t count = reader.Count(least);
  for (std::uint32_t index = 0; index < count && !reader.Failed(); ++index) {
    const std::uint32_t severity = reader.Number32();
    const std::uint32_t row = reader.Number32();
    const std::uint32_t column = reader.Number32();
    const std::string_view file = reader.Text();
    const std::string_view text = reader.Text();
    if (severity > static_cast<std::uint32_t>(Severity::Note)) return false;
    take(static_cast<Severity>(severity), file, row, column, text);
  }
  return !reader.Failed() && reader.AtEnd();
}

// The error of a file that cannot be read, with what to do.
template <typename Call>
auto Reading(const Call& call) {
  try {
    return call();
  } catch (const platform::Error& error) {
    throw platform::Error(fmt::format("{} Scan the program again.", error.what()));
  }
}

}  // namespace

ModelHead ReadModelHead(const std::string& path) {
  // Nearly every head is smaller than this, and then one reading is enough.
  constexpr std::size_t firstReading = std::size_t{4} * 1024;
  platform::DiskFileStart start = Reading([&] { return platform::ReadDiskFileStart(path, firstReading); });
  ModelFileHeader header;
  if (const auto wrong = ReadHeader(std::as_bytes(std::span(start.bytes)), start.size, header)) {
    throw Refusal(path, *wrong);
  }
  const std::size_t headEnd = header.Section(ModelSection::Nodes).offset;
  if (headEnd > start.bytes.size()) start = Reading([&] { return platform::ReadDiskFileStart(path, headEnd); });
  const auto bytes = std::as_bytes(std::span(start.bytes));
  // Between two readings the file can have become another one.
  ModelFileHeader again;
  if (const auto wrong = ReadHeader(bytes, start.size, again)) throw Refusal(path, *wrong);
  if (again.Section(ModelSection::Nodes).offset > bytes.size() || again.headSum != HeadSum(bytes)) {
    throw Refusal(path, Damage("its checksum does not fit"));
  }
  const ModelSectionPlace& place = again.Section(ModelSection::Head);
  ModelHead head;
  if (!ReadHead(bytes.subspan(place.offset, place.size), head)) throw Refusal(path, Damage("its head is wrong"));
  return head;
}

std::shared_ptr<const ModelImage> ModelImage::Open(const std::string& path) {
  auto file = Reading([&] { return std::make_unique<platform::MappedDiskFile>(path); });
  return Checked(std::shared_ptr<ModelImage>(new ModelImage(std::move(file))), path);
}

std::shared_ptr<const ModelImage> ModelImage::FromBytes(std::string bytes, std::string_view name) {
  return Checked(std::shared_ptr<ModelImage>(new ModelImage(std::move(bytes))), name);
}

std::shared_ptr<const ModelImage> ModelImage::Checked(std::shared_ptr<ModelImage> image, std::string_view name) {
  ModelFileHeader header;
  if (const auto wrong = image->ReadStart(header)) throw Refusal(name, *wrong);
  if (const auto wrong = image->ReadSections(header)) throw HiddenRefusal(name, *wrong);
  return image;
}

std::optional<std::string> ModelImage::ReadStart(ModelFileHeader& header) {
  const auto bytes = std::as_bytes(std::span(bytes_));
  if (auto wrong = ReadHeader(bytes, bytes.size(), header)) return wrong;
  if (header.headSum != HeadSum(bytes)) return Damage("its checksum does not fit");
  const ModelSectionPlace& head = header.Section(ModelSection::Head);
  if (!ReadHead(bytes.subspan(head.offset, head.size), head_)) return Damage("its head is wrong");
  return std::nullopt;
}

template <typename T>
bool ModelImage::Find(const ModelSectionPlace& place, std::span<const T>& records) const {
  if (place.size % sizeof(T) != 0) return false;
  records = {reinterpret_cast<const T*>(bytes_.data() + place.offset), place.size / sizeof(T)};
  return true;
}

std::optional<std::string> ModelImage::ReadSections(const ModelFileHeader& header) {
  if (header.bodySum != BodySum(std::as_bytes(std::span(bytes_)))) return Damage("its checksum does not fit");
  std::span<const std::uint32_t> starts;
  std::span<const NodeId> nodesOf;
  if (!Find(header.Section(ModelSection::Nodes), nodes_) || !Find(header.Section(ModelSection::Decls), decls_) ||
      !Find(header.Section(ModelSection::FileRecords), fileRecords_) ||
      !Find(header.Section(ModelSection::Units), units_) || !Find(header.Section(ModelSection::Entities), starts) ||
      !Find(header.Section(ModelSection::NodesOf), nodesOf) ||
      !Find(header.Section(ModelSection::TextEnds), textEnds_) ||
      !Find(header.Section(ModelSection::Diagnostics), diagnostics_)) {
    return Damage("its sections do not fit");
  }
  const ModelSectionPlace& texts = header.Section(ModelSection::Texts);
  texts_ = bytes_.substr(texts.offset, texts.size);
  if (const auto defect = FindDefect({nodes_, decls_, fileRecords_, units_, textEnds_.size(), head_.files.size()})) {
    return Damage(*defect);
  }
  if (!HasRightTexts()) return Damage("its texts do not fit");
  if (!TakeNodesByEntity(starts, nodesOf)) return Damage("its lists of nodes are wrong");
  std::size_t counts[3] = {};
  const auto count = [&counts](Severity severity, auto&&...) { ++counts[static_cast<std::size_t>(severity)]; };
  if (!ReadDiagnostics(diagnostics_, count) || counts[0] != head_.gaps || counts[1] != head_.warnings ||
      counts[2] != head_.notes) {
    return Damage("its diagnostics are wrong");
  }
  return std::nullopt;
}

bool ModelImage::HasRightTexts() const {
  std::uint32_t end = 0;
  for (const std::uint32_t next : textEnds_) {
    if (next < end) return false;
    end = next;
  }
  return textEnds_[0] == 0 && end == texts_.size();
}

// Each list ascends and holds nodes of its entity only, and all nodes but the first stand in one.
bool ModelImage::TakeNodesByEntity(std::span<const std::uint32_t> starts, std::span<const NodeId> nodesOf) {
  if (starts.size() != kEntities + 1 || starts[0] != 0 || starts[kEntities] != nodesOf.size() ||
      nodesOf.size() != nodes_.size() - 1 || !std::ranges::is_sorted(starts)) {
    return false;
  }
  for (std::size_t entity = 0; entity < kEntities; ++entity) {
    byEntity_[entity] = nodesOf.subspan(starts[entity], starts[entity + 1] - starts[entity]);
    NodeId before = 0;
    for (const NodeId node : byEntity_[entity]) {
      if (node <= before || node >= nodes_.size() || nodes_[node].entity != static_cast<Entity>(entity)) return false;
      before = node;
    }
  }
  return true;
}

std::vector<Diagnostic> ModelImage::ListDiagnostics() const {
  std::vector<Diagnostic> diagnostics;
  ReadDiagnostics(diagnostics_, [&](Severity severity, std::string_view file, std::uint32_t row, std::uint32_t column,
                                    std::string_view text) {
    diagnostics.push_back({severity, std::string(file), row, column, std::string(text)});
  });
  return diagnostics;
}

std::size_t ModelImage::CountDiagnostics(Severity severity) const {
  switch (severity) {
    case Severity::Gap:
      return head_.gaps;
    case Severity::Warning:
      return head_.warnings;
    case Severity::Note:
      break;
  }
  return head_.notes;
}

}  // namespace qmrules::workbench::codemodel
