#include "desktop/translations/translations.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QWidget>

namespace qmrules::desktop {
namespace {

using shell::Language;

std::string Options() {
  return QCoreApplication::translate("qmrules::desktop::OptionsWindow", "Options").toStdString();
}

class LanguageWatch final : public QWidget {
 public:
  int changes = 0;

 protected:
  void changeEvent(QEvent* event) override {
    if (event->type() == QEvent::LanguageChange) ++changes;
    QWidget::changeEvent(event);
  }
};

TEST(Translations, SpeakEveryLanguage) {
  Translations translations;
  EXPECT_EQ(Options(), "Options");
  translations.Use(Language::Japanese);
  EXPECT_EQ(Options(), "オプション");
  translations.Use(Language::Korean);
  EXPECT_EQ(Options(), "옵션");
  translations.Use(Language::English);
  EXPECT_EQ(Options(), "Options");
}

TEST(Translations, AreTakenAwayAtTheEnd) {
  {
    Translations translations;
    translations.Use(Language::Korean);
  }
  EXPECT_EQ(Options(), "Options");
}

TEST(Translations, TellTheWidgets) {
  LanguageWatch widget;
  widget.show();
  Translations translations;
  translations.Use(Language::Japanese);
  QApplication::processEvents();
  EXPECT_GT(widget.changes, 0);
}

TEST(Translations, ReachTheTextsOfTables) {
  Translations translations;
  translations.Use(Language::Japanese);
  EXPECT_EQ(QCoreApplication::translate("Options", "Rule Validation").toStdString(), "ルールの検証");
}

}  // namespace
}  // namespace qmrules::desktop
