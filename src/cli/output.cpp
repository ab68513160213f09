#include "cli/output.h"

#include <variant>

#include "platform/timestamp.h"

namespace qmrules::cli {

namespace {

bool MayBeBold(const Context& context) {
  return context.environment.outIsTerminal && context.environment.Variable("NO_COLOR").empty();
}

struct JsonOfValue {
  Json operator()(std::monostate) const { return nullptr; }
  Json operator()(bool value) const { return value; }
  Json operator()(std::int64_t value) const { return value; }
  Json operator()(double value) const { return value; }
  Json operator()(const std::string& value) const { return value; }
  Json operator()(platform::Timestamp value) const { return platform::FormatTimestamp(value); }
};

}  // namespace

std::string JsonText(const Json& document) {
  return document.dump(2, ' ', false, Json::error_handler_t::replace);
}

void PrintJson(Context& context, const Json& document) {
  context.environment.out << JsonText(document) << '\n';
}

void PrintKey(Context& context, const std::string& key, bool asJson) {
  if (asJson) {
    PrintJson(context, {{"key", key}});
  } else {
    context.environment.out << key << '\n';
  }
}

Json ToJson(const platform::Value& value) {
  return std::visit(JsonOfValue{}, value.Get());
}

void PrintTable(Context& context, const TextTable& table, const std::string& indent) {
  table.Print(context.environment.out, MayBeBold(context), indent);
}

void PrintTitle(Context& context, std::string_view title) {
  context.environment.out << (MayBeBold(context) ? "\x1b[1m" : "") << title << (MayBeBold(context) ? "\x1b[0m" : "")
                          << '\n';
}

std::string PlainLabel(const shell::StringTable& texts, int number) {
  std::string label = texts.Text(number);
  if (label.ends_with(':')) label.pop_back();
  const std::size_t mark = label.find('&');
  if (mark == std::string::npos) return label;
  const bool isBracketed = mark > 0 && label[mark - 1] == '(' && label.substr(mark + 2, 1) == ")";
  return isBracketed ? label.erase(mark - 1, 4) : label.erase(mark, 1);
}

}  // namespace qmrules::cli
