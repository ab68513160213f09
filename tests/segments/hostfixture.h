#pragma once

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "catalogue/gateway.h"
#include "platform/memoryfilesystem.h"
#include "platform/memorysourceviewer.h"
#include "platform/memoryworkspace.h"
#include "platform/pointer.h"
#include "platform/progress.h"
#include "platform/scripteddialogs.h"
#include "platform/sourceviewercomponent.h"
#include "support/teststore.h"

namespace qmrules::segments {

// A source viewer that keeps what it was told, in its order.
class RecordingViewer final : public platform::Component {
 public:
  explicit RecordingViewer(platform::SourceViewer& viewer) : component_(viewer) {}

  std::optional<std::string> PropertyGet(std::string_view property) override {
    return component_.PropertyGet(property);
  }
  void PropertyLet(std::string_view property, const platform::Value& value) override {
    calls.push_back(std::string(property) + " = " + value.Text());
    component_.PropertyLet(property, value);
  }
  platform::Value MethodCall(std::string_view method, std::string_view argument) override {
    calls.push_back(std::string(method) + " " + std::string(argument));
    return component_.MethodCall(method, argument);
  }

  std::vector<std::string> calls;

 private:
  platform::SourceViewerComponent component_;
};

// A host with one COBOL program, FEE, on view in its source viewer: the file cobol/FEE.cbl of 20 lines "line 1" ....
class HostTest : public testing::Test {
 protected:
  HostTest() {
    globals.internalName = "QMRules";
    globals.externalName = "Business Rules";
    files.CreateFolder("/src");
    files.CreateFolder("/src/cobol");
    std::string text;
    for (int row = 1; row <= 20; ++row) text += "line " + std::to_string(row) + "\n";
    WriteSource(text);
    workspace.SetViewer(viewer);
    workspace.AddComponent("QMSource", component);
    workspace.SetObjectID(program);
    viewer.SetFiles({{"cobol/FEE.cbl", "COBOL"}, {"cobol/FEECOPY.cpy", "COBOL"}});
    component.calls.clear();
  }

  void WriteSource(const std::string& text) { files.WriteFile("/src/cobol/FEE.cbl", text); }

  // The front end with its source folder in memory.
  class Host final : public platform::FrontEnd {
   public:
    explicit Host(test::TestStore& store) : store_(store) {}
    platform::Repository& Repository() override { return store_.Repository(); }
    std::unique_ptr<platform::Object> ProjectObject() override { return store_.FE().ProjectObject(); }
    platform::Options& ProjectOptions() override { return store_.FE().ProjectOptions(); }
    platform::Options& GlobalOptions() override { return store_.FE().GlobalOptions(); }
    std::string UserName() const override { return "analyst"; }
    std::string GetFerrowoodName(int) const override { return "/src"; }
    std::string HelpFile() const override { return {}; }

   private:
    test::TestStore& store_;
  };

  test::TestStore store;
  platform::Repository& repository = store.Repository();
  Host frontEnd{store};
  platform::TesselGlobals globals;
  platform::MemoryFileSystem files{store.Clock()};
  platform::SilentProgress progress;
  platform::ScriptedDialogs dialogs;
  platform::MemoryPointer pointer;
  const shell::StringTable& texts = shell::StringTableFor(shell::Language::English);
  platform::MemorySourceViewer viewer;
  RecordingViewer component{viewer};
  platform::MemoryWorkspace workspace{frontEnd, progress};
  std::string program = catalogue::MakeKey("COBOL", store.Add("COBOL", "FEE"));
};

}  // namespace qmrules::segments
