#include "workbench/codemodel/modelformat.h"

#include <xxhash.h>

#include <cstring>

namespace qmrules::workbench::codemodel {

namespace {

std::size_t BodyStart(std::span<const std::byte> file) {
  ModelFileHeader header;
  std::memcpy(&header, file.data(), sizeof header);
  return header.Section(ModelSection::Nodes).offset;
}

std::uint64_t Sum(std::span<const std::byte> bytes) {
  return XXH3_64bits(bytes.data(), bytes.size());
}

}  // namespace

std::uint64_t BodySum(std::span<const std::byte> file) {
  return Sum(file.subspan(BodyStart(file)));
}

std::uint64_t HeadSum(std::span<const std::byte> file) {
  return Sum(file.subspan(kSummedFrom, BodyStart(file) - kSummedFrom));
}

void SealModel(std::span<std::byte> file) {
  const std::uint64_t body = BodySum(file);
  std::memcpy(file.data() + offsetof(ModelFileHeader, bodySum), &body, sizeof body);
  const std::uint64_t head = HeadSum(file);
  std::memcpy(file.data() + offsetof(ModelFileHeader, headSum), &head, sizeof head);
}

}  // namespace qmrules::workbench::codemodel
