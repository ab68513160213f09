#include "platform/sourceviewercomponent.h"

#include <gtest/gtest.h>

#include "platform/memorysourceviewer.h"
#include "support/errortext.h"

namespace qmrules::platform {
namespace {

using test::ErrorText;

class SourceViewerComponentTest : public testing::Test {
 protected:
  SourceViewerComponentTest() { viewer.SetFiles({{"PBRATE.cbl", "COBOL"}, {"copy:a.cpy", "COBOL"}}); }

  MemorySourceViewer viewer;
  SourceViewerComponent component{viewer};
};

TEST_F(SourceViewerComponentTest, NumbersAreTexts) {
  component.PropertyLet("Row", 10);
  component.PropertyLet("SelectedRowsCount", "-3");
  EXPECT_EQ(component.PropertyGet("Row"), "10");
  EXPECT_EQ(component.PropertyGet("SelectedRowsCount"), "-3");
}

TEST_F(SourceViewerComponentTest, WithoutAFileThereIsNoAnswer) {
  viewer.SetFiles({});
  EXPECT_EQ(component.PropertyGet("Row"), std::nullopt);
  EXPECT_EQ(component.PropertyGet("SelectedRowsCount"), std::nullopt);
  EXPECT_EQ(component.PropertyGet("FileName"), std::nullopt);
  EXPECT_EQ(component.PropertyGet("Files"), "");
}

TEST_F(SourceViewerComponentTest, FilesAreListedAndOpenedByName) {
  EXPECT_EQ(component.PropertyGet("Files"), "PBRATE.cbl\ncopy:a.cpy\n");
  component.PropertyLet("FileName", "copy:a.cpy");
  EXPECT_EQ(component.PropertyGet("FileName"), "copy:a.cpy");
}

TEST_F(SourceViewerComponentTest, AnUnknownPropertyIsPassedOver) {
  EXPECT_EQ(component.PropertyGet("Colour"), std::nullopt);
  EXPECT_NO_THROW(component.PropertyLet("Colour", "red"));
}

TEST_F(SourceViewerComponentTest, ASegmentIsMarkedByProgramAndRows) {
  component.MethodCall("CheckSegment", "COBOL#12:100:120");
  component.MethodCall("CheckSegment", "COBOL#12:130:130");
  EXPECT_EQ(viewer.Marks(), (std::vector<SegmentMark>{{"COBOL#12", 100, 120}, {"COBOL#12", 130, 130}}));
  component.MethodCall("CheckSegment", "");
  EXPECT_TRUE(viewer.Marks().empty());
}

TEST_F(SourceViewerComponentTest, MalformedSegmentsAreRefused) {
  for (const char* argument : {"COBOL#12", "COBOL#12:1", ":1:2", "COBOL#12:a:2", "COBOL#12:1:", "COBOL#12:-1:2"}) {
    EXPECT_EQ(ErrorText([&] { component.MethodCall("CheckSegment", argument); }),
              "\"" + std::string(argument) + "\" is not a segment such as \"COBOL#12:100:120\".");
  }
  EXPECT_TRUE(viewer.Marks().empty());
}

TEST_F(SourceViewerComponentTest, GoesToARowOrToARowAndColumn) {
  component.MethodCall("GoTo", "PBRATE.cbl:17");
  EXPECT_EQ(viewer.Row(), 17);
  component.MethodCall("GoTo", "copy:a.cpy:21:8");
  EXPECT_EQ(viewer.CurFile()->FileName, "copy:a.cpy");
  EXPECT_EQ(viewer.Row(), 21);
  EXPECT_EQ(ErrorText([&] { component.MethodCall("GoTo", "PBRATE.cbl"); }),
            "\"PBRATE.cbl\" is not a position such as \"PAYROLL.CBL:100:12\".");
}

TEST_F(SourceViewerComponentTest, ValuesThatAreNoRowsAreRefused) {
  EXPECT_EQ(ErrorText([&] { component.PropertyLet("Row", "ten"); }), "\"ten\" is not a whole number.");
  EXPECT_EQ(ErrorText([&] { component.PropertyLet("Row", std::int64_t{5000000000}); }),
            "5000000000 is out of range for Row.");
}

TEST_F(SourceViewerComponentTest, AnUnknownMethodIsRefused) {
  EXPECT_EQ(ErrorText([&] { component.MethodCall("Print", ""); }), "The source viewer has no method \"Print\".");
}

}  // namespace
}  // namespace qmrules::platform
