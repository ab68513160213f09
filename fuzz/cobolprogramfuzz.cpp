// Any bytes as a program with its copybooks: read, parsed, written as a model file and opened again.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <map>
#include <string>
#include <string_view>

#include "workbench/codemodel/cobol/cobolfrontend.h"
#include "workbench/codemodel/modelfile.h"

namespace {

using namespace qmrules::workbench::codemodel;  // NOLINT(google-build-using-namespace): the program is of this alone

constexpr char kSeparator = '\x1E';

// The input up to the first separator is the program; the pieces behind it are the copybooks C1, C2 and so on.
class PieceProvider final : public SourceProvider {
 public:
  explicit PieceProvider(std::string_view input) {
    for (int number = 0;; ++number) {
      const auto end = input.find(kSeparator);
      files_[number == 0 ? "program" : "C" + std::to_string(number)] = input.substr(0, end);
      if (end == std::string_view::npos) break;
      input.remove_prefix(end + 1);
    }
  }
  Source Read(std::string_view file) override {
    const auto found = files_.find(std::string(file));
    if (found == files_.end()) std::abort();
    return {std::make_shared<SourceFile>(found->first, std::string(found->second)), {}};
  }
  std::optional<std::string> FindCopybook(std::string_view name, std::string_view, std::string_view) override {
    return files_.contains(std::string(name)) ? std::optional(std::string(name)) : std::nullopt;
  }

 private:
  std::map<std::string, std::string_view> files_;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  PieceProvider provider({reinterpret_cast<const char*>(data), size});
  cobol::CobolFrontEnd frontEnd(provider, {});
  for (const auto& program : frontEnd.Translate("program", [] { return false; })) {
    const auto image = ModelImage::FromBytes(SerializeModel(program.model), "model");
    if (image->Nodes().size() != program.model.nodes.size()) std::abort();
  }
  return 0;
}
