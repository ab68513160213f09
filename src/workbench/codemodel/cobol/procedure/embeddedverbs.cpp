#include <algorithm>
#include <string>

#include "workbench/codemodel/cobol/procedure/embeddedcode.h"
#include "workbench/codemodel/cobol/procedure/statementfamilies.h"

namespace qmrules::workbench::codemodel::cobol {

namespace {

struct Language {
  Word word = Word::None;
  Verb verb = Verb::None;
  void (*parse)(StatementParser& parser, NodeId node, std::uint32_t end) = nullptr;
};
constexpr Language kLanguages[] = {{Word::Cics, Verb::ExecCics, ParseCics},
                                   {Word::Sql, Verb::ExecSql, ParseSql},
                                   {Word::Dli, Verb::ExecDli, ParseDli}};

void ParseExec(StatementParser& parser, NodeId node) {
  TokenCursor& cursor = parser.Cursor();
  const std::uint32_t exec = cursor.Previous();
  const EmbeddedEnd end = EndOfEmbedded(cursor.Source(), exec);
  const auto* language = std::ranges::find_if(kLanguages, [&](const Language& one) { return cursor.At(one.word); });
  if (cursor.Index() < end.token && language != std::end(kLanguages)) {
    parser.Model().Node(node).verb = static_cast<std::uint8_t>(language->verb);
    cursor.Next();
    language->parse(parser, node, end.token);
  } else {
    const bool named = cursor.Index() < end.token && cursor.At(TokenKind::Word);
    const std::string_view name = named ? parser.Symbols().Text(cursor.Current().symbol) : std::string_view();
    NameEmbedded(parser, node, name, "");
    const std::string text = named ? std::string(name).append(" is not understood behind EXEC.")
                                   : std::string("The language behind EXEC is missing.");
    parser.Model().Report(Severity::Gap, exec, text);
  }
  if (cursor.Index() < end.token) cursor.MoveTo(end.token);
  if (end.closed) {
    cursor.Accept(Word::EndExec);
  } else {
    parser.Model().Report(Severity::Gap, exec, "END-EXEC is missing.");
  }
}

constexpr VerbSpec kEmbeddedVerbs[] = {
    {Word::Exec, Verb::ExecOther, Entity::Stat, ParseExec},
    {Word::Execute, Verb::ExecOther, Entity::Stat, ParseExec},
};

}  // namespace

std::span<const VerbSpec> EmbeddedVerbs() {
  return kEmbeddedVerbs;
}

}  // namespace qmrules::workbench::codemodel::cobol
