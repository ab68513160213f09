// Any bytes as a program: its flow, and chains through it in both directions, which have to agree.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <optional>
#include <string>
#include <string_view>

#include "workbench/codemodel/cobol/cobolfrontend.h"
#include "workbench/codemodel/crossreference.h"
#include "workbench/codemodel/modelfile.h"
#include "workbench/flow/programnetwork.h"

namespace {

using namespace qmrules::workbench::codemodel;  // NOLINT(google-build-using-namespace): the program is of these alone
using namespace qmrules::workbench::flow;       // NOLINT(google-build-using-namespace)

constexpr std::size_t kMostQuestions = 40;

class OneProgram final : public SourceProvider {
 public:
  explicit OneProgram(std::string_view text) : text_(text) {}
  Source Read(std::string_view) override { return {std::make_shared<SourceFile>("program", std::string(text_)), {}}; }
  std::optional<std::string> FindCopybook(std::string_view, std::string_view, std::string_view) override {
    return std::nullopt;
  }

 private:
  std::string_view text_;
};

// Every definition that reaches the use reaches it from its own side too.
void Ask(NetworkProgram& program, NodeId use) {
  for (const ChainLink& link : program.flow->DefinitionsReaching(use).links) {
    ByteSet atEnd;
    const Chain forward = program.flow->UsesReached(link.definition, ByteSet::All(), &atEnd);
    const bool agrees = std::ranges::any_of(forward.links, [&](const ChainLink& other) {
      return other.use == link.use && other.usedAt == link.usedAt && link.bytes.Within(other.bytes) == link.bytes;
    });
    if (!agrees) std::abort();
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  OneProgram provider({reinterpret_cast<const char*>(data), size});
  cobol::CobolFrontEnd frontEnd(provider, {});
  for (const auto& translated : frontEnd.Translate("program", [] { return false; })) {
    const auto image = ModelImage::FromBytes(SerializeModel(translated.model), "model");
    ProgramNetwork network([&](std::string_view) { return image; });
    for (std::uint32_t unit = 0; unit < image->Units().size(); ++unit) {
      NetworkProgram& program = network.Add(image, unit);
      std::size_t questions = 0;
      for (const NodeId node : image->NodesOf(Entity::Var)) {
        if (++questions > kMostQuestions) break;
        Ask(program, node);
        network.DefinitionsReaching(program, node);
        network.UsesReached(program, node);
        program.flow->FeedsOf(node);
        if (const NodeId statement = StatementAround(*image, node); statement != 0) {
          program.flow->ConditionsOf(statement);
        }
      }
    }
  }
  return 0;
}
