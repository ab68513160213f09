#include "browser/elementplace.h"

#include <fmt/format.h>

#include <charconv>
#include <cstdint>

#include "platform/sourcemodel.h"

namespace qmrules::browser {

using platform::ModelObject;
using platform::SourceModel;

namespace {

constexpr int kNotAvailable = 543;

// Older references give the ID alone.
const ModelObject& ObjectOf(const SourceModel& model, std::string_view reference) {
  std::int64_t id = 0;
  const char* const end = reference.data() + reference.size();
  const auto [stop, error] = std::from_chars(reference.data(), end, id);
  return error == std::errc() && stop == end ? model.object(id) : model.object(reference);
}

}  // namespace

std::string ElementTag(std::string_view qmid, std::string_view sourceType, std::string_view sourceID) {
  return fmt::format("{}#{}#{}", qmid, sourceType, sourceID);
}

ElementReference ParseElementReference(std::string_view tag) {
  const std::size_t last = tag.rfind('#');
  if (last == std::string_view::npos || last == 0) return {std::string(tag.substr(0, last)), ""};
  const std::size_t before = tag.rfind('#', last - 1);
  if (before == std::string_view::npos) return {std::string(tag), ""};
  ElementReference reference{std::string(tag.substr(0, before)), ""};
  if (last > before + 1 && last + 1 < tag.size()) reference.program = tag.substr(before + 1);
  return reference;
}

void GoToElement(const BrowserServices& services, std::string_view tag) {
  const ElementReference place = ParseElementReference(tag);
  if (place.modelObject.empty()) return;
  auto& workspace = services.QMWS;
  if (!place.program.empty() && place.program != workspace.ObjectID()) workspace.SetObjectID(place.program);
  const bool isThere = place.program.empty() || place.program == workspace.ObjectID();
  const SourceModel* const model = isThere ? workspace.SourceModel() : nullptr;
  if (model == nullptr) {
    services.dialogs.MessageBox(services.texts.Text(kNotAvailable), services.globals.externalName,
                                platform::MessageStyle::Exclamation);
    return;
  }
  const auto location = ObjectOf(*model, place.modelObject).Location();
  workspace.MethodCall("QMSource", "GoTo", fmt::format("{}:{}", location.FileName, location.FirstRow));
}

}  // namespace qmrules::browser
