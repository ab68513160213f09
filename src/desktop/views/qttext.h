#pragma once

#include <QString>
#include <string>
#include <string_view>

namespace qmrules::desktop {

// Texts are UTF-8 in the models and UTF-16 in Qt; one character of a model is one QChar.
inline QString ToQt(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

inline std::string FromQt(const QString& text) {
  return text.toStdString();
}

}  // namespace qmrules::desktop
