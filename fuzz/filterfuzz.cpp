// Any text is read as a filter, which comes back equal from its own text, or is refused with an Error; and any text,
// prepared by FilterValue, comes back whole as a value.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>
#include <variant>

#include "platform/error.h"
#include "platform/fetch.h"
#include "workbench/repository/filter.h"

namespace {

using qmrules::platform::Error;
using qmrules::platform::FilterValue;
using qmrules::workbench::repository::Comparison;
using qmrules::workbench::repository::FilterExpression;
using qmrules::workbench::repository::ParseFilter;
using qmrules::workbench::repository::ToText;

// Nothing for a blank filter and for a malformed one.
std::unique_ptr<FilterExpression> TryParse(std::string_view filter) {
  try {
    return ParseFilter(filter);
  } catch (const Error& error) {
    if (!std::string_view(error.what()).starts_with("filter \"")) std::abort();
    return nullptr;
  }
}

void CheckRoundTrip(std::string_view filter) {
  const auto expression = TryParse(filter);
  if (expression && !(*ParseFilter(ToText(*expression)) == *expression)) std::abort();
}

void CheckValue(std::string_view data) {
  const auto expression = ParseFilter("Name=" + FilterValue(data));
  if (std::get<Comparison>(expression->node).value != data) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  CheckRoundTrip(text);
  CheckValue(text);
  return 0;
}
