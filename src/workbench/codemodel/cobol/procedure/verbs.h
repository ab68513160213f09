#pragma once

#include <cstdint>
#include <string_view>

#include "workbench/codemodel/cobol/reading/words.h"
#include "workbench/codemodel/vocabulary.h"

namespace qmrules::workbench::codemodel::cobol {

// The statements of the language, as NodeRecord::verb has them. Numbers stand in model files: add new ones at the end.
enum class Verb : std::uint8_t {
  None,
  Accept,
  Add,
  Allocate,
  Alter,
  Call,
  Cancel,
  Close,
  Commit,
  Compute,
  Continue,
  Delete,
  Disable,
  Display,
  Divide,
  Enable,
  Entry,
  Evaluate,
  Examine,
  ExecCics,
  ExecDli,
  ExecSql,
  ExecOther,
  Exhibit,
  Exit,
  ExitParagraph,
  ExitPerform,
  ExitPerformCycle,
  ExitProgram,
  ExitSection,
  Free,
  Generate,
  Goback,
  Goto,
  If,
  Initialize,
  Initiate,
  Inspect,
  Invoke,
  JsonGenerate,
  JsonParse,
  Merge,
  Move,
  Multiply,
  NextSentence,
  Open,
  Perform,
  Purge,
  Raise,
  Read,
  Ready,
  Receive,
  Release,
  Reset,
  Resume,
  Return,
  Rewrite,
  Rollback,
  Search,
  Send,
  Set,
  Sort,
  Start,
  Stop,
  StopRun,
  String,
  Subtract,
  Suppress,
  Terminate,
  Transform,
  Unlock,
  Unstring,
  Use,
  Validate,
  Write,
  XmlGenerate,
  XmlParse,
  Phrase,   // the IF of AT END, ON SIZE ERROR and the like
  Unknown,  // a statement that is none of these: a gap
};

std::string_view NameOf(Verb verb);  // "MOVE", "GO TO", "EXEC CICS"

}  // namespace qmrules::workbench::codemodel::cobol
