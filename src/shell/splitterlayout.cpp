#include "shell/splitterlayout.h"

#include <string>
#include <string_view>

namespace qmrules::shell {

using platform::widgets::Splitter;

namespace {

constexpr std::string_view kLayoutHeader = "wObjs,Descr,Attrs,Aux";
constexpr std::string_view kSettingsSection = "Settings";
constexpr std::string_view kSplitterSetting = "Splitter";
constexpr int kThird = 333;

}  // namespace

void RequirePanes(Splitter& splitter) {
  splitter.SetRequiredPanes({"Objects", "Descriptions", "FirstArea", "SecondArea"});
}

void LayOutPanes(Splitter& splitter, const platform::UserSettings& settings) {
  const std::string saved = settings.Get(kSettingsSection, kSplitterSetting, "");
  if (!saved.starts_with(kLayoutHeader) || !splitter.SetLayoutText(saved.substr(kLayoutHeader.size()))) {
    using enum platform::widgets::SplitDirection;
    splitter.Reset("Control");
    splitter.Split("Control", {"Objects", "Properties", SideBySide, kThird});
    splitter.Split("Properties", {"Descriptions", "Others", Stacked, kThird});
    splitter.Split("Others", {"FirstArea", "SecondArea", Stacked, kThird});
  }
  splitter.SetOn(true);
}

void SaveSplitterLayout(const Splitter& splitter, platform::UserSettings& settings) {
  settings.Set(kSettingsSection, kSplitterSetting, std::string(kLayoutHeader) + splitter.LayoutText());
}

}  // namespace qmrules::shell
