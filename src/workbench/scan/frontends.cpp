#include "workbench/scan/frontends.h"

#include <fmt/format.h>

#include <utility>

#include "platform/encoding.h"
#include "platform/error.h"
#include "shell/casefold.h"
#include "workbench/codemodel/cobol/cobolfrontend.h"
#include "workbench/codemodel/cobol/reading/textclassification.h"

namespace qmrules::workbench {

namespace {

using codemodel::cobol::LexerOptions;

// In the encodings of East Asia a wide character takes two bytes, and two columns of a line in fixed form.
bool HasWideCharacters(std::string_view encoding) {
  if (encoding.empty() || shell::ToUpper(encoding).starts_with("UTF")) return false;
  for (const std::string_view character : {"\u3042", "\uAC00", "\u4E00"}) {
    try {
      if (platform::EncodeText(character, encoding).size() >= 2) return true;
    } catch (const platform::Error&) {
      // The encoding lacks this character; it may have the next one.
      continue;
    }
  }
  return false;
}

LexerOptions LexerOptionsOf(const SourceOptions& options, std::string_view encoding) {
  LexerOptions lexer;
  lexer.wideCharactersTakeTwoColumns = HasWideCharacters(encoding);
  if (options.format == "auto") return lexer;
  lexer.format = codemodel::cobol::SourceFormatNamed(options.format);
  if (lexer.format) return lexer;
  throw platform::Error(
      fmt::format("There is no form of source lines \"{}\"; choose auto, fixed, wide or free.", options.format));
}

}  // namespace

FrontEndFactory CobolFrontEnds(const SourceOptions& options, std::string_view encoding) {
  return [lexer = LexerOptionsOf(options, encoding)](codemodel::SourceProvider& sources) {
    return std::make_unique<codemodel::cobol::CobolFrontEnd>(sources, lexer);
  };
}

std::string CobolOptionsText(const SourceOptions& options, std::string_view encoding) {
  return fmt::format("{} encoding {}", codemodel::cobol::CobolFrontEnd::OptionsText(LexerOptionsOf(options, encoding)),
                     encoding.empty() ? "default" : encoding);
}

codemodel::TextClassifier CobolTextClassifier(const SourceOptions& options, std::string_view encoding) {
  return [lexer = LexerOptionsOf(options, encoding)](std::shared_ptr<const codemodel::SourceFile> file) {
    return codemodel::cobol::ClassifyText(std::move(file), lexer);
  };
}

}  // namespace qmrules::workbench
