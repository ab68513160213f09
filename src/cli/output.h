#pragma once

#include <nlohmann/json.hpp>
#include <string>
#include <string_view>

#include "cli/command.h"
#include "cli/texttable.h"
#include "platform/value.h"

namespace qmrules::cli {

using Json = nlohmann::ordered_json;

inline constexpr const char* kJsonHelp = "Print JSON";

// Writes the document with an indent of two and a line feed behind it. Bytes that are no text come out as U+FFFD.
void PrintJson(Context& context, const Json& document);
// The same text, for a part of a longer document; without the line feed.
std::string JsonText(const Json& document);

// A value as JSON: null for an absent one, a moment as its text.
Json ToJson(const platform::Value& value);

// Writes the key of an object that was made, on a line of its own or as {"key": "RULE#12"}.
void PrintKey(Context& context, const std::string& key, bool asJson);

// Writes the table, its titles in bold on a terminal that may be written so.
void PrintTable(Context& context, const TextTable& table, const std::string& indent = "");

// A title in bold on a terminal that may be written so.
void PrintTitle(Context& context, std::string_view title);

// The text of a label without the mark of its access key ("&Name:", "Name(&N):") and without the colon.
std::string PlainLabel(const shell::StringTable& texts, int number);

}  // namespace qmrules::cli
