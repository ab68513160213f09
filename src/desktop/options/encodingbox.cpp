#include "desktop/options/encodingbox.h"

#include <QAbstractItemView>
#include <QLineEdit>

namespace qmrules::desktop {

namespace {

struct OfferedEncoding {
  const char* name;
  const char* meaning;  // to be translated
};

constexpr OfferedEncoding kEncodings[] = {
    {"", QT_TRANSLATE_NOOP("qmrules::desktop::EncodingBox", "UTF-8, else ISO-8859-1")},
    {"UTF-8", QT_TRANSLATE_NOOP("qmrules::desktop::EncodingBox", "Unicode")},
    {"ISO-8859-1", QT_TRANSLATE_NOOP("qmrules::desktop::EncodingBox", "Western European")},
    {"CP1252", QT_TRANSLATE_NOOP("qmrules::desktop::EncodingBox", "Western European, Windows")},
    {"SHIFT_JIS", QT_TRANSLATE_NOOP("qmrules::desktop::EncodingBox", "Japanese, Windows")},
    {"EUC-JP", QT_TRANSLATE_NOOP("qmrules::desktop::EncodingBox", "Japanese, Unix")},
    {"EUC-KR", QT_TRANSLATE_NOOP("qmrules::desktop::EncodingBox", "Korean")},
    {"IBM037", QT_TRANSLATE_NOOP("qmrules::desktop::EncodingBox", "EBCDIC, North America")},
    {"IBM273", QT_TRANSLATE_NOOP("qmrules::desktop::EncodingBox", "EBCDIC, German")},
    {"IBM500", QT_TRANSLATE_NOOP("qmrules::desktop::EncodingBox", "EBCDIC, international")},
    {"IBM1047", QT_TRANSLATE_NOOP("qmrules::desktop::EncodingBox", "EBCDIC, Unix services")},
    {"IBM930", QT_TRANSLATE_NOOP("qmrules::desktop::EncodingBox", "EBCDIC, Japanese")},
    {"IBM933", QT_TRANSLATE_NOOP("qmrules::desktop::EncodingBox", "EBCDIC, Korean")},
};

}  // namespace

EncodingBox::EncodingBox(QWidget* parent) : QComboBox(parent) {
  setEditable(true);
  setInsertPolicy(QComboBox::NoInsert);
  setSizeAdjustPolicy(QComboBox::AdjustToContents);
  for (const auto& [name, meaning] : kEncodings) {
    const QString shown = QString::fromLatin1(name);
    addItem(shown.isEmpty() ? tr(meaning) : tr("%1 (%2)").arg(shown, tr(meaning)), shown);
  }
  view()->setAccessibleName(tr("Encodings"));
  connect(this, &QComboBox::currentTextChanged, this, &EncodingBox::EncodingChanged);
}

std::string EncodingBox::Encoding() const {
  const QString shown = currentText().trimmed();
  const int offered = findText(shown, Qt::MatchFixedString);
  return (offered < 0 ? shown : itemData(offered).toString()).toStdString();
}

void EncodingBox::SetEncoding(const std::string& encoding) {
  const QString name = QString::fromStdString(encoding);
  const int offered = findData(name, Qt::UserRole, Qt::MatchFixedString);
  if (offered < 0) {
    setEditText(name);
  } else {
    setCurrentIndex(offered);
  }
  lineEdit()->setCursorPosition(0);
}

}  // namespace qmrules::desktop
