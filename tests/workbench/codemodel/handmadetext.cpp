#include "workbench/codemodel/handmadetext.h"

#include <memory>
#include <stdexcept>
#include <utility>

namespace qmrules::test {

using workbench::codemodel::ExpandedText;
using workbench::codemodel::Inclusion;
using workbench::codemodel::SourceFile;
using workbench::codemodel::Token;
using workbench::codemodel::TokenKind;

std::uint32_t HandMadeText::AddFile(std::string name, std::string text) {
  text_.files.push_back(std::make_shared<const SourceFile>(std::move(name), std::move(text)));
  text_.commentRows.push_back(std::make_shared<const std::vector<std::uint32_t>>());
  if (text_.inclusions.empty()) {
    text_.inclusions.emplace_back();
    searchFrom_.push_back(0);
  }
  return static_cast<std::uint32_t>(text_.files.size()) - 1;
}

std::uint32_t HandMadeText::Find(std::uint32_t inclusion, std::string_view text) {
  const SourceFile& file = *text_.files[text_.inclusions[inclusion].file];
  const std::size_t found = file.Text().find(text, searchFrom_[inclusion]);
  if (found == std::string_view::npos)
    throw std::logic_error(file.Name() + " does not go on with " + std::string(text));
  searchFrom_[inclusion] = found + text.size();
  return static_cast<std::uint32_t>(found);
}

std::uint32_t HandMadeText::Include(std::uint32_t file, std::uint32_t parent, std::string_view statement) {
  const SourceFile& outer = *text_.files[text_.inclusions[parent].file];
  Inclusion inclusion;
  inclusion.file = file;
  inclusion.parent = parent;
  inclusion.depth = text_.inclusions[parent].depth + 1;
  inclusion.offset = Find(parent, statement);
  inclusion.end = inclusion.offset + static_cast<std::uint32_t>(statement.size());
  inclusion.row = outer.RowOf(inclusion.offset);
  inclusion.endRow = outer.RowOf(inclusion.end - 1);
  text_.inclusions.push_back(inclusion);
  searchFrom_.push_back(0);
  return static_cast<std::uint32_t>(text_.inclusions.size()) - 1;
}

std::uint32_t HandMadeText::Add(std::uint32_t inclusion, std::string_view word, std::uint8_t flags) {
  Token token;
  token.kind = TokenKind::Word;
  token.flags = flags;
  token.inclusion = inclusion;
  token.offset = Find(inclusion, word);
  token.length = static_cast<std::uint32_t>(word.size());
  token.row = text_.files[text_.inclusions[inclusion].file]->RowOf(token.offset);
  if (token.Has(workbench::codemodel::kComposed)) {
    token.text = static_cast<std::uint32_t>(text_.composed.size());
    text_.composed.emplace_back(word);
  }
  text_.tokens.push_back(token);
  return static_cast<std::uint32_t>(text_.tokens.size()) - 1;
}

void HandMadeText::AddAll(std::uint32_t inclusion, std::string_view words) {
  while (!words.empty()) {
    const std::size_t end = std::min(words.find(' '), words.size());
    Add(inclusion, words.substr(0, end));
    words.remove_prefix(std::min(end + 1, words.size()));
  }
}

const ExpandedText& HandMadeText::End() {
  Token end;
  end.offset = static_cast<std::uint32_t>(text_.files[0]->Text().size());
  end.row = text_.files[0]->RowOf(end.offset);
  text_.tokens.push_back(end);
  return text_;
}

}  // namespace qmrules::test
