#include "desktop/window/preferences.h"

#include "desktop/views/qttext.h"

namespace qmrules::desktop {

namespace {

constexpr const char* kSection = "Workbench";
constexpr qsizetype kRecent = 10;

}  // namespace

QString Preferences::Text(const char* name) const {
  return ToQt(settings_.Get(kSection, name, ""));
}

void Preferences::SetText(const char* name, const QString& value) {
  settings_.Set(kSection, name, FromQt(value));
}

QByteArray Preferences::Bytes(const char* name) const {
  return QByteArray::fromBase64(Text(name).toLatin1());
}

void Preferences::SetBytes(const char* name, const QByteArray& bytes) {
  SetText(name, QString::fromLatin1(bytes.toBase64()));
}

std::optional<shell::Language> Preferences::Language() const {
  return shell::ParseLanguage(FromQt(Text("Language")));
}

void Preferences::SetLanguage(shell::Language language) {
  settings_.Set(kSection, "Language", shell::LanguageCode(language));
}

Scheme Preferences::ColorScheme() const {
  const QString scheme = Text("Scheme");
  if (scheme == "light") return Scheme::Light;
  return scheme == "dark" ? Scheme::Dark : Scheme::System;
}

void Preferences::SetColorScheme(Scheme scheme) {
  SetText("Scheme", scheme == Scheme::Light ? "light" : scheme == Scheme::Dark ? "dark" : "system");
}

int Preferences::FontSize() const {
  const int points = Text("FontSize").toInt();
  return points < kSmallestFont || points > kLargestFont ? 0 : points;
}

void Preferences::SetFontSize(int points) {
  SetText("FontSize", QString::number(points));
}

QStringList Preferences::RecentWorkspaces() const {
  return Text("Recent").split('\n', Qt::SkipEmptyParts);
}

void Preferences::NoteWorkspace(const QString& folder) {
  QStringList recent = RecentWorkspaces();
  recent.removeAll(folder);
  recent.prepend(folder);
  SetText("Recent", recent.mid(0, kRecent).join('\n'));
}

}  // namespace qmrules::desktop
