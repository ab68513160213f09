#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <span>
#include <type_traits>

#include "workbench/codemodel/records.h"

// The form of model files, shared by what writes and what reads them. docs/workspace-files.md tells it in words.
namespace qmrules::workbench::codemodel {

static_assert(std::endian::native == std::endian::little, "Model files are written as the records lie in memory.");

inline constexpr std::array<char, 8> kModelMagic = {'Q', 'M', 'R', 'M', 'O', 'D', 'E', 'L'};
inline constexpr std::uint32_t kByteOrderMark = 0x01020304;
// To be raised with every change of the form, of a record, and of an enumeration whose numbers stand in records.
inline constexpr std::uint32_t kModelVersion = 1;

// The sections in their order. Each begins at a multiple of 8; the first one at the header's end.
enum class ModelSection : std::uint8_t {
  Head,         // what scanning has to know: see ModelHead
  Nodes,        // NodeRecord
  Decls,        // DeclRecord
  FileRecords,  // FileRecord
  Units,        // UnitRecord
  Entities,     // for each entity, and once more: where its nodes begin in the next section, u32
  NodesOf,      // NodeId, by entity and in each one ascending
  TextEnds,     // for each text, where it ends in the next section, u32
  Texts,        // bytes
  Diagnostics,  // see WriteDiagnostics
};
inline constexpr std::size_t kModelSections = 10;

struct ModelSectionPlace {
  std::uint64_t offset = 0;
  std::uint64_t size = 0;
};

struct ModelFileHeader {
  std::array<char, 8> magic = kModelMagic;
  std::uint32_t byteOrder = kByteOrderMark;
  std::uint32_t version = kModelVersion;
  std::uint64_t headSum = 0;  // XXH3-64 of what lies between this number and the section Nodes
  std::uint64_t bodySum = 0;  // XXH3-64 of all from there on
  std::uint64_t totalSize = 0;
  std::uint32_t headerSize = 0;
  std::uint16_t nodeSize = sizeof(NodeRecord);
  std::uint16_t declSize = sizeof(DeclRecord);
  std::uint16_t fileRecordSize = sizeof(FileRecord);
  std::uint16_t unitSize = sizeof(UnitRecord);
  std::uint32_t entities = kEntities;
  std::array<ModelSectionPlace, kModelSections> sections;

  const ModelSectionPlace& Section(ModelSection section) const { return sections[static_cast<std::size_t>(section)]; }
  ModelSectionPlace& Section(ModelSection section) { return sections[static_cast<std::size_t>(section)]; }
};
static_assert(std::has_unique_object_representations_v<ModelFileHeader>);
inline constexpr std::size_t kSummedFrom = offsetof(ModelFileHeader, bodySum);

inline std::uint64_t AlignedEnd(std::uint64_t size) {
  return (size + 7) / 8 * 8;
}

// The checksums of a file whose header lies in its bytes and tells of a section Nodes that begins within them. The
// head's covers the body's.
std::uint64_t BodySum(std::span<const std::byte> file);
std::uint64_t HeadSum(std::span<const std::byte> file);
// Enters both into the bytes of a file.
void SealModel(std::span<std::byte> file);

}  // namespace qmrules::workbench::codemodel
