#pragma once

#include <QString>
#include <span>
#include <string_view>

#include "desktop/options/optionvalue.h"

// Every option of the host's documents, with the words in which the user reads of it.
//
// To add one: its node in the document that new projects or workspaces start with, and its line in optiontable.cpp,
// with its translations.
namespace qmrules::desktop {

// Which document an option stands in.
enum class OptionScope {
  Project,    // that of the current project
  Workspace,  // that of all projects
  Folder,     // what the workspace's own file tells of its folder
};

enum class OptionKind {
  Text,      // a line
  LongText,  // lines
  Choice,    // one of the listed values
  Boolean,   // "true" or "false"
  Texts,     // texts that may be added and removed, in an order
  Presence,  // on while the node is there
  Encoding,  // the name of a text encoding, "" for the default
};

struct OptionPageSpec {
  const char* caption;
  const char* icon;  // its key in the IconSet
};

struct OptionChoice {
  std::string_view value;
  const char* caption;
};

// The texts are those of the source, for OptionText.
struct OptionSpec {
  const OptionPageSpec* page;
  OptionScope scope;
  OptionKind kind;
  std::string_view name;       // as the documentation calls it
  std::string_view path;       // of its node
  std::string_view attribute;  // that holds the value; of a list, of each of its elements; "" for a presence
  const char* caption;
  const char* meaning;
  std::span<const OptionChoice> choices = {};
  // What is wrong with a value, in words for the user; empty when it can be stored.
  QString (*check)(const OptionValue&) = nullptr;
};

// In the order in which they are shown; options of one page stand together.
std::span<const OptionSpec> OptionTable();

// A text of the table in the language of the user.
QString OptionText(const char* text);

}  // namespace qmrules::desktop
