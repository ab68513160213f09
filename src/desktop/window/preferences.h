#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <optional>

#include "platform/settings.h"
#include "shell/language.h"

namespace qmrules::desktop {

enum class Scheme { System, Light, Dark };

// What the user's settings remember of the window, in the section "Workbench". A value that cannot be understood counts
// as unset. Every call throws platform::Error as platform::UserSettings does.
class Preferences {
 public:
  // `settings` outlives this.
  explicit Preferences(platform::UserSettings& settings) : settings_(settings) {}

  // Nothing for the language of the system.
  std::optional<shell::Language> Language() const;
  void SetLanguage(shell::Language language);

  Scheme ColorScheme() const;
  void SetColorScheme(Scheme scheme);

  // In points, 6 to 32; 0 for the system's own size.
  int FontSize() const;
  void SetFontSize(int points);

  // Size and place of the window, and of what lies in it, as the window itself writes them.
  QByteArray Geometry() const { return Bytes("Geometry"); }
  void SetGeometry(const QByteArray& bytes) { SetBytes("Geometry", bytes); }
  QByteArray Layout() const { return Bytes("Layout"); }
  void SetLayout(const QByteArray& bytes) { SetBytes("Layout", bytes); }

  // Folders of workspaces, the last one opened first.
  QStringList RecentWorkspaces() const;
  // Puts the folder first; the list keeps ten.
  void NoteWorkspace(const QString& folder);
  // The one that is open, or was when the last run ended; "" for none.
  QString LastWorkspace() const { return Text("LastWorkspace"); }
  void SetLastWorkspace(const QString& folder) { SetText("LastWorkspace", folder); }

 private:
  QString Text(const char* name) const;
  void SetText(const char* name, const QString& value);
  QByteArray Bytes(const char* name) const;
  void SetBytes(const char* name, const QByteArray& bytes);

  platform::UserSettings& settings_;
};

inline constexpr int kSmallestFont = 6;
inline constexpr int kLargestFont = 32;

}  // namespace qmrules::desktop
