#include "desktop/options/optionchecks.h"

#include <QCoreApplication>
#include <QDir>
#include <set>
#include <stdexcept>

#include "platform/encoding.h"
#include "shell/text.h"

namespace qmrules::desktop {

namespace {

QString Say(const char* text) {
  return QCoreApplication::translate("Options", text);
}

QString Say(const char* text, const std::string& about) {
  return Say(text).arg(QString::fromStdString(about));
}

bool IsBlank(const std::string& text) {
  return text.find_first_not_of(" \t") == std::string::npos;
}

// The first text that occurs a second time, or nullptr.
const std::string* FirstRepeated(const std::vector<ListedText>& texts) {
  std::set<std::string> seen;
  for (const ListedText& entry : texts) {
    if (!seen.insert(shell::FoldCase(entry.text)).second) return &entry.text;
  }
  return nullptr;
}

QString CheckEach(const std::vector<ListedText>& texts, QString (*check)(const std::string&)) {
  for (const ListedText& entry : texts) {
    if (IsBlank(entry.text)) return Say(QT_TRANSLATE_NOOP("Options", "A line of the list is empty."));
    if (QString problem = check(entry.text); !problem.isEmpty()) return problem;
  }
  const std::string* const repeated = FirstRepeated(texts);
  return repeated == nullptr ? QString()
                             : Say(QT_TRANSLATE_NOOP("Options", "“%1” stands in the list twice."), *repeated);
}

QString CheckTemplate(const std::string& text) {
  try {
    const shell::LikePattern pattern(text);
  } catch (const std::invalid_argument&) {
    return Say(QT_TRANSLATE_NOOP("Options",
                                 "“%1” is no template: each “[” needs its “]”, and a range goes upwards, as in [A-F]."),
               text);
  }
  return CheckStoredText(text);
}

QString CheckFolder(const std::string& text) {
  const QString folder = QString::fromStdString(text).replace('\\', '/');
  const bool hasDrive = folder.size() > 1 && folder[1] == ':';
  if (QDir::isAbsolutePath(folder) || hasDrive) {
    return Say(
        QT_TRANSLATE_NOOP("Options", "“%1” is named from the root of the disk; name it relative to the workspace."),
        text);
  }
  const QString clean = QDir::cleanPath(folder);
  if (clean == ".." || clean.startsWith("../")) {
    return Say(QT_TRANSLATE_NOOP("Options", "“%1” lies outside the workspace; copy it into the workspace."), text);
  }
  return CheckStoredText(text);
}

}  // namespace

QString CheckStoredText(const OptionValue& value) {
  const auto& text = std::get<std::string>(value);
  if (shell::SafeText(text) == text) return {};
  return Say(QT_TRANSLATE_NOOP("Options", "The text holds a control character; type it anew."));
}

QString CheckObjectName(const OptionValue& value) {
  const auto& text = std::get<std::string>(value);
  if (IsBlank(text)) return Say(QT_TRANSLATE_NOOP("Options", "Enter a name."));
  if (text.front() == ' ' || text.back() == ' ') {
    return Say(QT_TRANSLATE_NOOP("Options", "The name has blanks around it; take them away."));
  }
  return CheckStoredText(value);
}

QString CheckTemplates(const OptionValue& value) {
  return CheckEach(std::get<std::vector<ListedText>>(value), CheckTemplate);
}

QString CheckEncoding(const OptionValue& value) {
  const auto& name = std::get<std::string>(value);
  if (name.empty() || platform::IsKnownEncoding(name)) return {};
  return Say(QT_TRANSLATE_NOOP("Options", "“%1” is no known encoding; choose one of the list."), name);
}

QString CheckFolders(const OptionValue& value) {
  return CheckEach(std::get<std::vector<ListedText>>(value), CheckFolder);
}

}  // namespace qmrules::desktop
