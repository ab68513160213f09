#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace qmrules::platform {

// The variable that a trace begins at. As the argument of the method "AutoDetect" of the component "QMRippleExplorer":
// program, carriage return, variable.
struct TraceTarget {
  std::string program;   // name of the program
  std::string variable;  // entity name, ": ", name, " at ", row, or the variable's text alone

  std::string Text() const { return program + '\r' + variable; }
  // Nothing for a text without a carriage return.
  static std::optional<TraceTarget> Parse(std::string_view text) {
    const std::size_t end = text.find('\r');
    if (end == std::string_view::npos) return std::nullopt;
    return TraceTarget{std::string(text.substr(0, end)), std::string(text.substr(end + 1))};
  }
};

// The dataflow trace tool.
class TraceTool {
 public:
  virtual ~TraceTool() = default;
  // Traces the variable backward through the project's programs and leaves the steps in the table Report of the
  // project's dataflow database, in place of what it held. Returns when the table is written. Throws Error when the
  // program or the variable is not there; the table then is empty.
  virtual void AutoDetect(const TraceTarget& target) = 0;
};

// The library that follows one variable through one program, step by step.
class TracingLibrary {
 public:
  virtual ~TracingLibrary() = default;

  struct Program {
    std::string key;            // the program's object key
    std::string sourceName;     // its source file, relative to the source folder
    std::string projectFolder;  // the source folder, with a separator at its end
    std::string modelText;      // SourceModel::DefinitionText
  };
  // Makes the program the loaded one; one that is loaded already is kept as it is. False, with a text for the reader in
  // `result`, when it cannot be.
  virtual bool LoadProgram(const Program& program, std::string& result) = 0;
  // Drops the loaded program; the name is empty.
  virtual void UnloadProgram(std::string_view name) = 0;

  // Follows a node of the loaded program: an occurrence's key and "|0:-1:0:1". Direction "F" goes where the data goes,
  // "B" where it came from; the relation is "used". Gives the length in bytes of the result that waits, 0 for none (the
  // node leads nowhere, or is unknown: `result` then tells why).
  virtual std::int32_t ExpandNode(std::string_view node, std::string_view direction, std::string_view relation,
                                  std::string& result) = 0;
  // Takes the result of the last ExpandNode: nodes separated by ";", each of fields separated by ",", of which the
  // first one is an occurrence's key. Nothing when none waits.
  virtual std::optional<std::string> GetExpandNodeResult() = 0;
};

}  // namespace qmrules::platform
