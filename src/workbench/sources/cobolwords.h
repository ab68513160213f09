#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/linereader.h"

namespace qmrules::workbench {

enum class SourceFormat { Fixed, Free };

// The form of a COBOL text. The first directive in it (">>SOURCE FORMAT IS FREE", "$SET SOURCEFORMAT"FIXED"") decides.
// Without one it is free when more than one line in fifty cannot be of fixed form: column 7 holds no indicator.
SourceFormat DetectFormat(std::string_view text);

struct CobolWord {
  enum class Kind { Word, Literal, Period };
  Kind kind = Kind::Word;
  std::string text;     // a literal's without its quotes
  std::size_t row = 0;  // from 1
  bool firstOnLine = false;
};

// The words, literals and periods of a COBOL text, in their order; every other character parts words. Comments,
// directives and, in fixed form, debugging lines, sequence numbers and what stands behind column 72 are passed over.
// Words and literals go on over continuation lines; a literal that its line leaves open ends there otherwise.
//
//   000100 PROGRAM-                                                 OLD00010
//   000110-    ID. 'PB''01'.           gives PROGRAM-ID, ".", the literal PB'01, "."
//
// The text is UTF-8 and must outlive the reader. Columns count characters.
class CobolWords {
 public:
  CobolWords(std::string_view text, SourceFormat format) : lines_(text), format_(format) {}

  std::optional<CobolWord> Next();

 private:
  bool NextLine();
  bool ContinuesOnNextLine();
  void ReadWord(CobolWord& word);
  void ReadLiteral(CobolWord& word, char quote);

  platform::LineReader lines_;
  SourceFormat format_;
  std::string_view code_;  // the current line's part that is not yet read
  bool lineBegins_ = false;
  // The code of a line that was read ahead, to see whether it continues the one before.
  std::optional<std::string_view> ahead_;
};

}  // namespace qmrules::workbench
