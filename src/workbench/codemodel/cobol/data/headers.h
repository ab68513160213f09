#pragma once

#include "workbench/codemodel/cobol/data/headcontext.h"

// Where a program's parts begin: the places at which reading goes on whatever went wrong before them.
namespace qmrules::workbench::codemodel::cobol {

enum class Header : std::uint8_t {
  None,
  Identification,
  Environment,
  Data,
  Procedure,  // or a division whose name is garbled behind the others
  Program,    // PROGRAM-ID and its like: what is behind it is another program's head
  EndProgram,
  Configuration,  // sections and paragraphs of the environment division
  SourceComputer,
  ObjectComputer,
  SpecialNames,
  Repository,
  InputOutput,
  FileControl,
  IOControl,
  FileSection,  // sections of the data division
  WorkingStorage,
  LocalStorage,
  Linkage,
  Screen,
  ReportSection,
  Communication,
  UnknownSection,  // a word with SECTION, or SECTION alone
  End,             // of the text
};

// The header that begins at the cursor, also one that has lost one of its words.
Header HeaderAt(const HeadContext& context);
// Passes over the header's words and its full stop.
void PassHeader(HeadContext& context);

inline bool IsEnvironmentPart(Header header) {
  return header >= Header::Configuration && header <= Header::IOControl;
}
inline bool IsDataSection(Header header) {
  return header >= Header::FileSection && header <= Header::UnknownSection;
}
// True for what ends the head.
inline bool EndsHead(Header header) {
  return header == Header::Procedure || header == Header::Program || header == Header::EndProgram ||
         header == Header::Identification || header == Header::End;
}

// Passes over text that nobody takes, up to a full stop (inclusive), a header, or a data description entry in a new
// row; at least one token, but no header.
void SkipSentence(HeadContext& context);
// True at EXEC and EXECUTE; the statement, with the full stop behind it, is passed over.
bool PassEmbedded(HeadContext& context);

}  // namespace qmrules::workbench::codemodel::cobol
