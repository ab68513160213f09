#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/diskfile.h"
#include "workbench/codemodel/records.h"

namespace qmrules::workbench::codemodel {

struct ModelFileHeader;
struct ModelSectionPlace;

// A model as it lies in a model file: a header with a magic number, the byte order, the version of the form, checksums,
// the sizes of the records and the places of the sections; the sections. docs/workspace-files.md tells the form.
//
// The bytes of a model.
std::string SerializeModel(const ModelData& model);
// Writes the model to the file, whole or not at all; after a power failure it may be torn, which opening it tells.
// Throws platform::Error, naming the file. Both throw std::logic_error for a model that could not be opened again.
void WriteModelFile(const std::string& path, const ModelData& model);

// What scanning has to know of a model file without opening the model.
struct ModelHead {
  std::string language;
  std::string program;  // its name
  std::vector<FileEntry> files;
  std::vector<Dependency> dependencies;
  std::uint32_t rows = 0;
  std::uint32_t gaps = 0, warnings = 0, notes = 0;
  std::string options;  // that the model was made with, as the front end writes them
};
// Reads the head only. Throws as ModelImage::Open, but does not look at what stands behind the head, except whether all
// of it is there.
ModelHead ReadModelHead(const std::string& path);

// A model, used where its bytes lie. All numbers in it that lead to another place are checked on opening, so that no
// access can leave it, and every walk ends.
class ModelImage {
 public:
  // Maps the file. Throws platform::Error, naming the file and saying that the program should be scanned again, for one
  // that cannot be read, is torn, is of another version or is no model.
  static std::shared_ptr<const ModelImage> Open(const std::string& path);
  // Takes the bytes of SerializeModel. Throws the same, with `name` for the file.
  static std::shared_ptr<const ModelImage> FromBytes(std::string bytes, std::string_view name);
  std::span<const NodeRecord> Nodes() const { return nodes_; }  // [0] is no node
  std::span<const DeclRecord> Decls() const { return decls_; }
  std::span<const FileRecord> FileRecords() const { return fileRecords_; }
  std::span<const UnitRecord> Units() const { return units_; }
  std::string_view Text(TextId text) const {
    const std::uint32_t start = text == 0 ? 0 : textEnds_[text - 1];
    return texts_.substr(start, textEnds_[text] - start);
  }
  std::uint32_t Texts() const { return static_cast<std::uint32_t>(textEnds_.size()); }
  const ModelHead& Head() const { return head_; }
  std::string_view Language() const { return head_.language; }
  std::uint32_t Rows() const { return head_.rows; }
  // Concrete objects of one entity, ascending.
  std::span<const NodeId> NodesOf(Entity entity) const { return byEntity_[static_cast<std::size_t>(entity)]; }
  const std::vector<FileEntry>& Files() const { return head_.files; }
  std::string_view FileName(std::uint16_t file) const { return head_.files[file].name; }
  const std::vector<Dependency>& Dependencies() const { return head_.dependencies; }
  // Made from the bytes at each call.
  std::vector<Diagnostic> ListDiagnostics() const;
  std::size_t CountDiagnostics(Severity severity) const;

  // Of a node that is a DECL, or a FILE.
  const DeclRecord& Decl(NodeId node) const { return decls_[nodes_[node].detail]; }
  const FileRecord& File(NodeId node) const { return fileRecords_[nodes_[node].detail]; }

 private:
  explicit ModelImage(std::string bytes) : owned_(std::move(bytes)), bytes_(owned_) {}
  explicit ModelImage(std::unique_ptr<platform::MappedDiskFile> file)
      : mapped_(std::move(file)), bytes_(mapped_->Bytes()) {}
  static std::shared_ptr<const ModelImage> Checked(std::shared_ptr<ModelImage> image, std::string_view name);
  // Each finds its part and checks it. What is wrong, or nothing.
  std::optional<std::string> ReadStart(ModelFileHeader& header);
  std::optional<std::string> ReadSections(const ModelFileHeader& header);
  bool TakeNodesByEntity(std::span<const std::uint32_t> starts, std::span<const NodeId> nodesOf);
  bool HasRightTexts() const;
  template <typename T>
  bool Find(const ModelSectionPlace& place, std::span<const T>& records) const;

  std::unique_ptr<platform::MappedDiskFile> mapped_;  // one of the two holds the bytes
  std::string owned_;
  std::string_view bytes_;
  ModelHead head_;
  std::span<const NodeRecord> nodes_;
  std::span<const DeclRecord> decls_;
  std::span<const FileRecord> fileRecords_;
  std::span<const UnitRecord> units_;
  std::span<const NodeId> byEntity_[kEntities];
  std::span<const std::uint32_t> textEnds_;
  std::string_view texts_;
  std::span<const std::byte> diagnostics_;
};

}  // namespace qmrules::workbench::codemodel
