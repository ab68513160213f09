#include "desktop/translations/translations.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QString>

namespace qmrules::desktop {

namespace {

QString CodeOf(shell::Language language) {
  switch (language) {
    case shell::Language::Japanese:
      return "ja";
    case shell::Language::Korean:
      return "ko";
    case shell::Language::English:
      break;
  }
  return {};
}

}  // namespace

Translations::~Translations() {
  Use(shell::Language::English);
}

void Translations::Use(shell::Language language) {
  for (const auto& translator : installed_) QCoreApplication::removeTranslator(translator.get());
  installed_.clear();
  const QString code = CodeOf(language);
  if (code.isEmpty()) return;
  // What is installed last is asked first.
  Install("qtbase_" + code, QLibraryInfo::path(QLibraryInfo::TranslationsPath));
  Install("qmrules_" + code, ":/qmrules/translations");
}

void Translations::Install(const QString& name, const QString& folder) {
  auto translator = std::make_unique<QTranslator>();
  if (!translator->load(name, folder)) return;
  QCoreApplication::installTranslator(translator.get());
  installed_.push_back(std::move(translator));
}

}  // namespace qmrules::desktop
