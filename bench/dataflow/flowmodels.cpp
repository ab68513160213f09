#include "dataflow/flowmodels.h"

#include "workbench/codemodel/cobol/cobolfrontend.h"
#include "workbench/codemodel/crossreference.h"

namespace qmrules::bench {

namespace codemodel = workbench::codemodel;

FlowModels ModelsOf(const ProgramSet& set) {
  FlowModels models{set.name, set.Lines(), {}};
  SetProvider provider(set);
  codemodel::cobol::CobolFrontEnd frontEnd(provider, {});
  for (const auto& text : set.programs) {
    for (const auto& program : frontEnd.Translate(text.name, [] { return false; })) {
      models.images.push_back(codemodel::ModelImage::FromBytes(codemodel::SerializeModel(program.model), text.name));
    }
  }
  return models;
}

std::vector<codemodel::NodeId> UsesOf(const codemodel::ModelImage& image, std::size_t most) {
  std::vector<codemodel::NodeId> uses;
  const codemodel::UnitRecord& unit = image.Units()[0];
  if (unit.division == 0) return uses;
  for (codemodel::NodeId node = unit.division; node <= image.Nodes()[unit.division].last; ++node) {
    const codemodel::NodeRecord& record = image.Nodes()[node];
    const bool isRead = record.usage == codemodel::VarUsage::Out || record.usage == codemodel::VarUsage::InOut;
    if (record.entity != codemodel::Entity::Var || !isRead || record.declaration == 0) continue;
    if (codemodel::StatementAround(image, node) != 0) uses.push_back(node);
  }
  if (uses.size() <= most) return uses;
  std::vector<codemodel::NodeId> spread;
  spread.reserve(most);
  for (std::size_t place = 0; place < most; ++place) spread.push_back(uses[place * uses.size() / most]);
  return spread;
}

}  // namespace qmrules::bench
