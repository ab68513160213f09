// Any text is read as a fetch list, which then says again what it said, or is refused with an Error.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "platform/error.h"
#include "workbench/repository/fetchlist.h"

namespace {

using qmrules::workbench::repository::FetchItem;
using qmrules::workbench::repository::ParseFetchList;
using qmrules::workbench::repository::Sort;

std::string TextOf(const FetchItem& item) {
  std::string text;
  if (item.sort != Sort::None) text += item.sort == Sort::Ascending ? '>' : '<';
  text += item.name;
  if (item.alias != item.name) text += ":" + item.alias;
  return text;
}

void Check(std::string_view list) {
  std::string written;
  for (const FetchItem& item : ParseFetchList(list)) {
    // An alias that repeats the name leaves no trace in the item; everything else must stand in the list as written.
    if (!written.empty()) written += ',';
    written += TextOf(item);
  }
  const auto again = ParseFetchList(written);
  std::string rewritten;
  for (const FetchItem& item : again) {
    if (!rewritten.empty()) rewritten += ',';
    rewritten += TextOf(item);
  }
  if (rewritten != written || written.size() > list.size()) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  try {
    Check(std::string_view(reinterpret_cast<const char*>(data), size));
  } catch (const qmrules::platform::Error& error) {
    if (!std::string_view(error.what()).starts_with("fetch list \"")) std::abort();
  }
  return 0;
}
