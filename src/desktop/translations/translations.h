#pragma once

#include <QTranslator>
#include <memory>
#include <vector>

#include "shell/language.h"

namespace qmrules::desktop {

// The language of the host's own texts, those in tr(). The texts of the rule manager come from its string table.
class Translations {
 public:
  Translations() = default;
  ~Translations();
  Translations(const Translations&) = delete;
  Translations& operator=(const Translations&) = delete;

  // Translates the application's texts from now on: the product's own and, where the machine has them, those of Qt's
  // own dialogs. Every widget gets a LanguageChange event. English takes all translations away.
  void Use(shell::Language language);

 private:
  void Install(const QString& name, const QString& folder);

  std::vector<std::unique_ptr<QTranslator>> installed_;
};

}  // namespace qmrules::desktop
