// Any text is read as a search condition document or refused with an Error.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "platform/error.h"
#include "platform/xml.h"
#include "workbench/repository/condition.h"

namespace {

// Nothing that is told to the reader may be without a text.
void RequireText(const qmrules::platform::Error& error) {
  if (std::string_view(error.what()).empty()) std::abort();
}

bool Load(qmrules::platform::XmlDocument& document, std::string_view text) {
  try {
    document.loadXML(text);
    return true;
  } catch (const qmrules::platform::Error& error) {
    RequireText(error);
    return false;
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  qmrules::platform::XmlDocument document;
  if (!Load(document, std::string_view(reinterpret_cast<const char*>(data), size))) return 0;
  try {
    const auto object = qmrules::workbench::repository::ParseCondition(document.documentElement());
    // What was accepted is complete.
    if (object.entity.empty()) std::abort();
  } catch (const qmrules::platform::Error& error) {
    RequireText(error);
  }
  return 0;
}
