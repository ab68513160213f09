#include <QDir>
#include <QLocale>
#include <QTimer>
#include <QWindow>
#include <exception>
#include <iostream>
#include <string>
#include <vector>

#include "desktop/icons/iconset.h"
#include "desktop/window/application.h"
#include "desktop/window/commandline.h"
#include "desktop/window/mainwindow.h"
#include "platform/clock.h"
#include "platform/error.h"
#include "platform/settings.h"
#include "workbench/workspace/settingsplaces.h"
#include "workbench/workspace/username.h"

namespace qmrules::desktop {

namespace {

constexpr int kBetweenLooks = 10;  // milliseconds

std::vector<std::string> ArgumentsOf(int argc, char** argv) {
  return {argv + (argc > 0 ? 1 : 0), argv + argc};
}

// The one of the command line, else the one that was chosen in the window, else the locale's.
shell::Language LanguageToBegin(const CommandLine& line, platform::UserSettings& settings) {
  if (line.language) return *line.language;
  try {
    if (const auto chosen = Preferences(settings).Language()) return *chosen;
  } catch (const platform::Error& failure) {
    // The window tells of settings that cannot be read.
    std::cerr << "qmrules-workbench: " << failure.what() << '\n';
  }
  return shell::LanguageOf(QLocale::system().name().toStdString());
}

int Answer(const CommandLine::Answer& answer) {
  (answer.code == 0 ? std::cout : std::cerr) << answer.text;
  return answer.code;
}

// Without one the toolkit would end the program in the middle.
bool HasScreen() {
  for (const char* const variable : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}) {
    if (!qEnvironmentVariableIsEmpty(variable)) return true;
  }
  return false;
}

int Run(int argc, char** argv) {
  // Asked before the application is made, which needs a screen.
  if (const auto line = ParseCommandLine(ArgumentsOf(argc, argv));
      line.answer && (line.answer->code == 0 || !HasScreen())) {
    return Answer(*line.answer);
  }
  if (!HasScreen()) {
    throw platform::Error(
        "There is no screen: neither DISPLAY nor WAYLAND_DISPLAY is set. Start the program in a desktop session, or "
        "work "
        "with the command \"qmrules\".");
  }
  Application application(argc, argv);
  // Without the toolkit's own options now.
  const auto line = ParseCommandLine(ArgumentsOf(argc, argv));
  if (line.answer) return Answer(*line.answer);
  Application::setApplicationName("QMRules");
  const std::string settingsPath = workbench::UserSettingsPath(qEnvironmentVariable("XDG_CONFIG_HOME").toStdString(),
                                                               QDir::homePath().toStdString());
  platform::JsonUserSettings settings(settingsPath);
  const platform::SystemClock clock;
  Appearance appearance;
  Translations translations;
  const auto language = LanguageToBegin(line, settings);
  translations.Use(language);
  MainWindow window({.services = {.clock = clock,
                                  .userName = workbench::SystemUserName(),
                                  .settingsPath = settingsPath,
                                  .registryPath = std::string(workbench::kRegistryPath),
                                  .connect = {}},
                     .settings = settings,
                     .appearance = appearance,
                     .translations = translations,
                     .language = language});
  application.SetFailureTeller([&window](const QString& text) { window.TellFailure(text); });
  Application::setWindowIcon(IconSet(window.palette()).Icon("App"));
  window.show();
  QTimer begin;
  QObject::connect(&begin, &QTimer::timeout, [&] {
    // Opening a large workspace takes a moment, in which the user sees the window already.
    if (!window.windowHandle()->isExposed()) return;
    begin.stop();
    window.Begin(QString::fromStdString(line.folder));
  });
  begin.start(kBetweenLooks);
  return Application::exec();
}

}  // namespace

}  // namespace qmrules::desktop

int main(int argc, char** argv) {
  try {
    return qmrules::desktop::Run(argc, argv);
  } catch (const std::exception& failure) {
    std::cerr << "qmrules-workbench: " << failure.what() << '\n';
    return 1;
  }
}
