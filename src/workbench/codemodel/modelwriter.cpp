#include <fmt/format.h>

#include <algorithm>
#include <cstring>
#include <limits>
#include <span>
#include <stdexcept>

#include "platform/diskfile.h"
#include "platform/error.h"
#include "workbench/codemodel/bytestream.h"
#include "workbench/codemodel/modelcheck.h"
#include "workbench/codemodel/modelfile.h"
#include "workbench/codemodel/modelformat.h"

namespace qmrules::workbench::codemodel {

namespace {

constexpr std::size_t kMost = std::numeric_limits<std::uint32_t>::max();

std::string_view ProgramOf(const ModelData& model) {
  return model.units.empty() ? std::string_view() : model.texts[model.units[0].name];
}

std::string HeadOf(const ModelData& model) {
  ByteWriter head;
  head.Text(model.language);
  head.Text(ProgramOf(model));
  head.Text(model.options);
  head.Number32(model.rows);
  for (const Severity severity : {Severity::Gap, Severity::Warning, Severity::Note}) {
    head.Number32(static_cast<std::uint32_t>(std::ranges::count(model.diagnostics, severity, &Diagnostic::severity)));
  }
  head.Number32(static_cast<std::uint32_t>(model.files.size()));
  for (const FileEntry& file : model.files) {
    head.Text(file.name);
    head.Number64(file.hash[0]);
    head.Number64(file.hash[1]);
  }
  head.Number32(static_cast<std::uint32_t>(model.dependencies.size()));
  for (const Dependency& dependency : model.dependencies) {
    head.Text(dependency.name);
    head.Text(dependency.library);
    head.Text(dependency.file);
  }
  return head.Bytes();
}

std::string DiagnosticsOf(const ModelData& model) {
  ByteWriter writer;
  writer.Number32(static_cast<std::uint32_t>(model.diagnostics.size()));
  for (const Diagnostic& diagnostic : model.diagnostics) {
    writer.Number32(static_cast<std::uint32_t>(diagnostic.severity));
    writer.Number32(diagnostic.row);
    writer.Number32(diagnostic.column);
    writer.Text(diagnostic.file);
    writer.Text(diagnostic.text);
  }
  return writer.Bytes();
}

// Where each entity's nodes begin among all of them by entity, and the nodes so ordered.
struct NodesByEntity {
  std::vector<std::uint32_t> starts = std::vector<std::uint32_t>(kEntities + 1);
  std::vector<NodeId> nodes;
};

NodesByEntity OrderByEntity(const std::vector<NodeRecord>& nodes) {
  NodesByEntity ordered;
  for (std::size_t node = 1; node < nodes.size(); ++node) {
    ++ordered.starts[static_cast<std::size_t>(nodes[node].entity) + 1];
  }
  for (std::size_t entity = 0; entity < kEntities; ++entity) ordered.starts[entity + 1] += ordered.starts[entity];
  ordered.nodes.resize(nodes.size() - 1);
  std::vector<std::uint32_t> next = ordered.starts;
  for (std::size_t node = 1; node < nodes.size(); ++node) {
    ordered.nodes[next[static_cast<std::size_t>(nodes[node].entity)]++] = static_cast<NodeId>(node);
  }
  return ordered;
}

// Lays the sections one behind the other; their bytes are filled in later.
class SectionPlan {
 public:
  SectionPlan() {
    header_.headerSize = sizeof header_;
    end_ = AlignedEnd(sizeof header_);
  }
  void Add(ModelSection section, std::size_t size) {
    header_.Section(section) = {end_, size};
    end_ = AlignedEnd(end_ + size);
  }
  std::string MakeFile() {
    header_.totalSize = end_;
    std::string file(end_, '\0');
    std::memcpy(file.data(), &header_, sizeof header_);
    return file;
  }
  char* In(std::string& file, ModelSection section) const { return file.data() + header_.Section(section).offset; }
  void Fill(std::string& file, ModelSection section, const void* bytes) const {
    const ModelSectionPlace& place = header_.Section(section);
    if (place.size != 0) std::memcpy(file.data() + place.offset, bytes, place.size);
  }

 private:
  ModelFileHeader header_;
  std::uint64_t end_ = 0;
};

void FillTexts(std::string& file, const SectionPlan& plan, const std::vector<std::string>& texts) {
  char* ends = plan.In(file, ModelSection::TextEnds);
  char* bytes = plan.In(file, ModelSection::Texts);
  std::uint32_t end = 0;
  for (const std::string& text : texts) {
    std::ranges::copy(text, bytes + end);
    end += static_cast<std::uint32_t>(text.size());
    std::memcpy(ends, &end, sizeof end);
    ends += sizeof end;
  }
}

std::size_t SizeOfTexts(const ModelData& model) {
  std::size_t size = 0;
  for (const std::string& text : model.texts) size += text.size();
  if (size > kMost) {
    throw platform::Error(
        fmt::format("The model of {} cannot be written: its texts have 4 GiB or more.", model.files[0].name));
  }
  return size;
}

template <typename T>
std::size_t SizeOf(const std::vector<T>& records) {
  return records.size() * sizeof(T);
}

}  // namespace

std::string SerializeModel(const ModelData& model) {
  if (const auto defect = FindDefect({model.nodes, model.decls, model.fileRecords, model.units, model.texts.size(),
                                      std::min<std::size_t>(model.files.size(), 0x10000)})) {
    throw std::logic_error(fmt::format("A defective model is not written: {}.", *defect));
  }
  const std::string head = HeadOf(model);
  const std::string diagnostics = DiagnosticsOf(model);
  const NodesByEntity ordered = OrderByEntity(model.nodes);
  SectionPlan plan;
  plan.Add(ModelSection::Head, head.size());
  plan.Add(ModelSection::Nodes, SizeOf(model.nodes));
  plan.Add(ModelSection::Decls, SizeOf(model.decls));
  plan.Add(ModelSection::FileRecords, SizeOf(model.fileRecords));
  plan.Add(ModelSection::Units, SizeOf(model.units));
  plan.Add(ModelSection::Entities, SizeOf(ordered.starts));
  plan.Add(ModelSection::NodesOf, SizeOf(ordered.nodes));
  plan.Add(ModelSection::TextEnds, model.texts.size() * sizeof(std::uint32_t));
  plan.Add(ModelSection::Texts, SizeOfTexts(model));
  plan.Add(ModelSection::Diagnostics, diagnostics.size());

  std::string file = plan.MakeFile();
  plan.Fill(file, ModelSection::Head, head.data());
  plan.Fill(file, ModelSection::Nodes, model.nodes.data());
  plan.Fill(file, ModelSection::Decls, model.decls.data());
  plan.Fill(file, ModelSection::FileRecords, model.fileRecords.data());
  plan.Fill(file, ModelSection::Units, model.units.data());
  plan.Fill(file, ModelSection::Entities, ordered.starts.data());
  plan.Fill(file, ModelSection::NodesOf, ordered.nodes.data());
  FillTexts(file, plan, model.texts);
  plan.Fill(file, ModelSection::Diagnostics, diagnostics.data());
  SealModel(std::as_writable_bytes(std::span(file)));
  return file;
}

void WriteModelFile(const std::string& path, const ModelData& model) {
  platform::WriteDiskFile(path, SerializeModel(model), platform::WriteSafety::Rebuildable);
}

}  // namespace qmrules::workbench::codemodel
