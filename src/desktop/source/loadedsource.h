#pragma once

#include <QFont>
#include <QString>
#include <QTextDocument>
#include <memory>
#include <string>
#include <string_view>

#include "workbench/codemodel/sourcefile.h"

namespace qmrules::desktop {

// Characters of a row that are shown.
inline constexpr int kLongestRow = 4000;

// How a document is laid out that is made before it is shown.
struct DocumentStyle {
  QFont font;
  double tabStop = 0;  // pixels
};

// Documents are made on one thread and live on another.
struct DeleteLater {
  void operator()(QObject* object) const { object->deleteLater(); }
};

// A source, ready to be shown.
struct LoadedSource {
  std::shared_ptr<const workbench::codemodel::SourceFile> file;
  // The rows of the file, parted by line feeds. What would part or hide text on screen (separators of lines and
  // paragraphs, places of pictures) is a replacement character; the rest of a row past kLongestRow is "…".
  QString text;
  // The text as blocks, one for each row; one empty block for a file without rows. Belongs to the thread of the screen.
  std::unique_ptr<QTextDocument, DeleteLater> document;
};

// May be called on any thread. Throws platform::Error, with the reason, for bytes that are no text in the encoding.
LoadedSource LoadSource(const std::string& name, std::string_view bytes, std::string_view encoding,
                        const DocumentStyle& style);

}  // namespace qmrules::desktop
