// Any bytes as a model file: what is opened can be walked over without leaving it; everything else is refused with a
// text. The checksums are made to fit, so that the bytes behind them are met.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <span>
#include <string>
#include <string_view>

#include "platform/error.h"
#include "platform/sourcemodel.h"
#include "workbench/codemodel/codemodel.h"
#include "workbench/codemodel/modelformat.h"

namespace {

using namespace qmrules::workbench::codemodel;  // NOLINT(google-build-using-namespace): the program is of this alone
using qmrules::platform::ModelCursor;
using qmrules::platform::ModelObject;
using qmrules::platform::SourceModel;

void MakeSumsFit(std::string& bytes) {
  if (bytes.size() < sizeof(ModelFileHeader)) return;
  ModelFileHeader header;
  std::memcpy(static_cast<void*>(&header), bytes.data(), sizeof header);
  const std::uint64_t body = header.Section(ModelSection::Nodes).offset;
  if (body >= sizeof header && body <= bytes.size()) SealModel(std::as_writable_bytes(std::span(bytes)));
}

std::size_t CountAll(const std::unique_ptr<ModelCursor>& cursor) {
  std::size_t count = 0;
  for (; !cursor->Eof(); cursor->MoveNext()) count += cursor->Item().Key().empty() ? 0 : 1;
  return count;
}

void Visit(const SourceModel& model, const ModelObject& object) {
  if (&model.object(object.Key()) != &object) std::abort();
  for (const std::string& attribute : object.EntityDef().Attributes()) {
    if (object.Attr(attribute).Text().size() > (std::size_t{1} << 30)) std::abort();
  }
  for (const auto* relation : object.EntityDef().Relations()) CountAll(object.Related(relation->Name()));
  for (const auto cursor = object.Children(); !cursor->Eof(); cursor->MoveNext()) {
    if (cursor->Item().Parent() != &object) std::abort();
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::string bytes(reinterpret_cast<const char*>(data), size);
  MakeSumsFit(bytes);
  try {
    const auto image = ModelImage::FromBytes(std::move(bytes), "model");
    ModelSurroundings surroundings;
    surroundings.readSource = [](std::string_view) { return std::string("MOVE A TO B.\n\xC3\xA9\n"); };
    const auto model = OpenCodeModel(image, surroundings);
    std::size_t known = 0;
    for (std::size_t entity = 0; entity < kEntities; ++entity) {
      known += image->NodesOf(static_cast<Entity>(entity)).size();
    }
    if (known + 1 != image->Nodes().size()) std::abort();
    for (std::size_t number = 1; number < image->Nodes().size(); ++number) {
      Visit(*model, model->object(static_cast<std::int64_t>(number)));
    }
    if (image->ListDiagnostics().size() != image->CountDiagnostics(Severity::Gap) +
                                               image->CountDiagnostics(Severity::Warning) +
                                               image->CountDiagnostics(Severity::Note)) {
      std::abort();
    }
  } catch (const qmrules::platform::Error& error) {
    if (std::string_view(error.what()).empty()) std::abort();
  }
  return 0;
}
