#pragma once

#include <string_view>

#include "workbench/codemodel/vocabulary.h"

// The commands of CICS: what their options do with the data in their parentheses. Words are in upper case.
namespace qmrules::workbench::codemodel::cobol {

enum class CicsCommandKind : std::uint8_t {
  Plain,
  Io,       // brings data in or out
  Call,     // leads to another program and, LINK, back
  Return,   // leaves the program
  Handle,   // the options' values are procedure names
  Inquiry,  // data comes in by every option that is not told otherwise
};

struct CicsCommand {
  std::string_view word;
  CicsCommandKind kind = CicsCommandKind::Plain;
  bool twoWords = false;  // the word behind it belongs to the name: SEND MAP, READQ TS
};
// Plain and of one word for a command that is not known.
CicsCommand CicsCommandOf(std::string_view word);

enum class CicsOptionKind : std::uint8_t {
  Value,
  Name,  // of a file, a queue, a container
  Program,
  Procedure,
};

struct CicsOption {
  std::string_view command;  // "" for every command that does not tell otherwise
  std::string_view word;
  VarUsage usage = VarUsage::Out;
  Role role = Role::Other;
  CicsOptionKind kind = CicsOptionKind::Value;
};
CicsOption CicsOptionOf(const CicsCommand& command, std::string_view word);

}  // namespace qmrules::workbench::codemodel::cobol
