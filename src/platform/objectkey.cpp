#include "platform/objectkey.h"

#include <fmt/format.h>

#include <charconv>
#include <optional>

#include "platform/error.h"
#include "shell/trim.h"
#include "shell/utf16.h"

namespace qmrules::platform {

namespace {

std::optional<std::int32_t> ParseID(std::string_view digits) {
  std::int32_t id = 0;
  const char* const end = digits.data() + digits.size();
  const auto [stop, error] = std::from_chars(digits.data(), end, id);
  if (digits.empty() || digits.front() == '-' || error != std::errc() || stop != end) return std::nullopt;
  return id;
}

}  // namespace

std::string MakeKey(std::string_view entity, std::int32_t id) {
  return fmt::format("{}#{}", shell::TrimBlanks(entity), id);
}

ObjectKey SplitKey(std::string_view key) {
  const std::size_t mark = key.find('#');
  const std::string_view entity = shell::TrimBlanks(key.substr(0, mark));
  const auto id = mark == std::string_view::npos ? std::nullopt : ParseID(key.substr(mark + 1));
  if (entity.empty() || !id) {
    throw Error(fmt::format("\"{}\" is not an object key. A key is an entity name, \"#\" and a number, as RULE#17.",
                            shell::CutWithEllipsis(key, 200)));
  }
  return {std::string(entity), *id};
}

}  // namespace qmrules::platform
