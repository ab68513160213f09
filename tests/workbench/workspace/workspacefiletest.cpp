#include "workbench/workspace/workspacefile.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "support/errortext.h"
#include "support/temporaryfolder.h"

namespace qmrules::workbench {
namespace {

using test::ErrorText;

class WorkspaceFileTest : public testing::Test {
 protected:
  std::string Failure(const std::string& content) const {
    const auto path = folder_.Write("workspace.json", content);
    const auto text = ErrorText([&] { ReadWorkspaceFile(path); });
    EXPECT_EQ(text.substr(0, path.size()), path);
    return text.substr(path.size());
  }

  test::TemporaryFolder folder_;
};

TEST_F(WorkspaceFileTest, WhatIsWrittenIsRead) {
  const auto path = folder_.File("workspace.json");
  WriteWorkspaceFile(path, {"Policy \"billing\" \u00e9", "IBM1047"});
  const auto file = ReadWorkspaceFile(path);
  EXPECT_EQ(file.project, "Policy \"billing\" \u00e9");
  EXPECT_EQ(file.sourceEncoding, "IBM1047");
}

TEST_F(WorkspaceFileTest, TheTextIsStable) {
  const auto path = folder_.File("workspace.json");
  WriteWorkspaceFile(path, {"Demo", ""});
  EXPECT_EQ(test::ReadBytes(path), "{\n  \"version\": 1,\n  \"project\": \"Demo\",\n  \"sourceEncoding\": \"\"\n}\n");
}

TEST_F(WorkspaceFileTest, BrokenFilesAreToldWithTheirDefect) {
  const std::string mend = ". Mend the file, or put back a copy of it.";
  const std::vector<std::pair<std::string, std::string>> defects{
      {"", ":1:1: this is no JSON text" + mend},
      {"{\n  \"version\": 1,\n  \"project\" \"Demo\"}", ":3:18: this is no JSON text" + mend},
      {"{\"version\": 1", ":1:14: this is no JSON text" + mend},
      {"[1]", ": it holds no object" + mend},
      {"{}", ": the member \"version\" is missing" + mend},
      {R"({"version": "1"})", ": the member \"version\" is not a number from 1 on" + mend},
      {R"({"version": 0})", ": the member \"version\" is not a number from 1 on" + mend},
      {R"({"version": 1e999})", ": it holds a number that is too large" + mend},
      {R"({"version": 1})", ": the member \"project\" is missing" + mend},
      {R"({"version": 1, "project": 5, "sourceEncoding": ""})", ": the member \"project\" is not a text" + mend},
      {R"({"version": 1, "project": "Demo"})", ": the member \"sourceEncoding\" is missing" + mend},
      {R"({"version": 1, "project": "Demo", "sourceEncoding": "", "sourceEncodng": ""})",
       ": the member \"sourceEncodng\" is not known" + mend},
      {R"({"version": 1, "project": "Demo", "sourceEncoding": "KLINGON"})",
       ": the encoding \"KLINGON\" is not known" + mend},
      {R"({"version": 1, "project": " ", "sourceEncoding": ""})", ": \" \" is no admissible name of a project" + mend},
  };
  for (const auto& [content, text] : defects) EXPECT_EQ(Failure(content), text) << content;
}

TEST_F(WorkspaceFileTest, ANewerVersionIsRefusedWhateverElseItHolds) {
  const std::string newer = " of its layout, and this program knows versions up to 1. Use a newer program.";
  EXPECT_EQ(Failure(R"({"version": 2, "shape": []})"), ": the workspace has version 2" + newer);
  EXPECT_EQ(Failure(R"({"version": 18446744073709551615})"),
            ": the workspace has version 18446744073709551615" + newer);
}

TEST_F(WorkspaceFileTest, AMissingFileIsTold) {
  const auto path = folder_.File("workspace.json");
  EXPECT_EQ(ErrorText([&] { ReadWorkspaceFile(path); }),
            "The file \"" + path + "\" cannot be read: there is no such file.");
}

}  // namespace
}  // namespace qmrules::workbench
