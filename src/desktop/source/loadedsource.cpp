#include "desktop/source/loadedsource.h"

#include <QCoreApplication>
#include <QPlainTextDocumentLayout>

#include "platform/encoding.h"
#include "platform/error.h"

namespace qmrules::desktop {

namespace {

using workbench::codemodel::SourceFile;

// Characters that a text document takes for its own structure.
bool IsStructure(QChar character) {
  switch (character.unicode()) {
    case QChar::LineSeparator:
    case QChar::ParagraphSeparator:
    case QChar::ObjectReplacementCharacter:
    case 0xFDD0:
    case 0xFDD1:
      return true;
    default:
      return false;
  }
}

void AppendRow(QString& text, std::string_view row) {
  const qsizetype begin = text.size();
  // No character takes more than four bytes.
  constexpr std::size_t mostBytes = std::size_t{kLongestRow} * 4;
  const std::string_view shown = row.substr(0, mostBytes);
  text += QString::fromUtf8(shown.data(), static_cast<qsizetype>(shown.size()));
  if (text.size() - begin <= kLongestRow && shown.size() == row.size()) return;
  text.truncate(begin + kLongestRow);
  if (text.back().isHighSurrogate()) text.chop(1);
  text += QChar(0x2026);
}

QString TextOf(const SourceFile& file) {
  QString text;
  text.reserve(static_cast<qsizetype>(file.Text().size()));
  for (std::uint32_t row = 1; row <= file.Rows(); ++row) {
    if (row > 1) text += u'\n';
    AppendRow(text, file.Row(row));
  }
  for (QChar& character : text) {
    if (IsStructure(character)) character = QChar::ReplacementCharacter;
  }
  return text;
}

// Making the blocks takes most of the time that loading takes.
std::unique_ptr<QTextDocument, DeleteLater> DocumentOf(const QString& text, const DocumentStyle& style) {
  std::unique_ptr<QTextDocument, DeleteLater> document(new QTextDocument);
  document->setUndoRedoEnabled(false);
  document->setDocumentLayout(new QPlainTextDocumentLayout(document.get()));
  document->setDefaultFont(style.font);
  QTextOption option = document->defaultTextOption();
  option.setTabStopDistance(style.tabStop);
  option.setWrapMode(QTextOption::NoWrap);
  document->setDefaultTextOption(option);
  document->setPlainText(text);
  document->moveToThread(QCoreApplication::instance()->thread());
  return document;
}

}  // namespace

LoadedSource LoadSource(const std::string& name, std::string_view bytes, std::string_view encoding,
                        const DocumentStyle& style) {
  if (platform::IsAsciiCompatible(encoding) && platform::LooksBinary(bytes)) {
    throw platform::Error(name + " is no text file.");
  }
  LoadedSource source;
  source.file = std::make_shared<const SourceFile>(name, platform::DecodeText(bytes, encoding, name));
  source.text = TextOf(*source.file);
  source.document = DocumentOf(source.text, style);
  return source;
}

}  // namespace qmrules::desktop
