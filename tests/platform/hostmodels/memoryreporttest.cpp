#include "platform/memoryreport.h"

#include <gtest/gtest.h>

#include "support/errortext.h"

namespace qmrules::platform {
namespace {

constexpr std::string_view format =
    "<LCRecordFormat><RuleName CAPTION=\"Rule\"  RAW=\"no\"/><Valid CAPTION=\"Validity\"/>"
    "<DataElements CAPTION=\"I/O Data Element\"><Name CAPTION=\"Name\"/><Kind CAPTION=\"Kind\"/></DataElements>"
    "</LCRecordFormat>";

using test::ErrorText;

class MemoryReportTest : public testing::Test {
 protected:
  MemoryReportFactory factory;
  std::unique_ptr<Report> report = factory.NewReport(format, "Business Rule Report");
  const ReportContent& content = *factory.Reports().front();
};

TEST_F(MemoryReportTest, TheRecordFormatTellsFieldsAndGroups) {
  EXPECT_EQ(content.title, "Business Rule Report");
  ASSERT_EQ(content.columns.size(), 3U);
  EXPECT_EQ(content.columns[0].name, "RuleName");
  EXPECT_EQ(content.columns[0].caption, "Rule");
  EXPECT_TRUE(content.columns[0].isMarkup);
  EXPECT_FALSE(content.columns[1].isMarkup);
  ASSERT_EQ(content.columns[2].columns.size(), 2U);
  EXPECT_EQ(content.columns[2].columns[1].name, "Kind");
}

TEST_F(MemoryReportTest, RecordsAreKeptInTheirOrder) {
  for (const char* name : {"<b>A</b>", "<b>B</b>"}) {
    report->AddNew();
    report->Field("RuleName").SetText(name);
    report->Update();
  }
  ASSERT_EQ(content.records.size(), 2U);
  EXPECT_EQ(content.records[0].texts.at("RuleName"), "<b>A</b>");
  EXPECT_EQ(content.records[1].texts.at("RuleName"), "<b>B</b>");
  EXPECT_FALSE(content.records[0].texts.contains("Valid"));
}

TEST_F(MemoryReportTest, GroupsHoldRecordsOfTheirOwn) {
  report->AddNew();
  ReportRecords& elements = report->Field("DataElements").Records();
  for (const char* name : {"PREMIUM", "RATE"}) {
    elements.AddNew();
    elements.Field("Name").SetText(name);
    elements.Update();
  }
  report->Field("Valid").SetText("Valid");
  report->Update();
  report->AddNew();
  report->Update();
  ASSERT_EQ(content.records.size(), 2U);
  const auto& group = content.records[0].groups.at("DataElements");
  ASSERT_EQ(group.size(), 2U);
  EXPECT_EQ(group[1].texts.at("Name"), "RATE");
  EXPECT_EQ(content.records[0].texts.at("Valid"), "Valid");
  EXPECT_TRUE(content.records[1].groups.empty());
}

TEST_F(MemoryReportTest, AFieldSetAgainHoldsTheLastText) {
  report->AddNew();
  ReportField& field = report->Field("Valid");
  field.SetText("Valid");
  report->Field("Valid").SetText("Invalid");
  EXPECT_EQ(&report->Field("Valid"), &field);
  report->Update();
  EXPECT_EQ(content.records[0].texts.at("Valid"), "Invalid");
}

TEST_F(MemoryReportTest, ARecordThatIsNotUpdatedIsDropped) {
  report->AddNew();
  report->Field("Valid").SetText("lost");
  report->AddNew();
  report->Update();
  report->AddNew();
  ASSERT_EQ(content.records.size(), 1U);
  EXPECT_TRUE(content.records[0].texts.empty());
}

TEST_F(MemoryReportTest, MisuseIsRefusedWithAText) {
  EXPECT_EQ(ErrorText([&] { report->Update(); }), "A report record is finished before it was begun.");
  EXPECT_EQ(ErrorText([&] { report->Field("Valid"); }), "The report field \"Valid\" is set outside of a record.");
  report->AddNew();
  EXPECT_EQ(ErrorText([&] { report->Field("Gone"); }), "The report has no field \"Gone\".");
  EXPECT_EQ(ErrorText([&] { report->Field("DataElements").SetText("x"); }),
            "The report field \"DataElements\" holds records, no text.");
  EXPECT_EQ(ErrorText([&] { report->Field("Valid").Records(); }),
            "The report field \"Valid\" holds a text, no records.");
}

TEST_F(MemoryReportTest, AShownReportTakesNoMore) {
  report->Show();
  EXPECT_TRUE(content.shown);
  EXPECT_EQ(ErrorText([&] { report->AddNew(); }),
            "The report \"Business Rule Report\" is shown already and takes no more.");
}

TEST_F(MemoryReportTest, TheContentOutlivesTheReport) {
  report->AddNew();
  report->Update();
  report.reset();
  EXPECT_EQ(content.records.size(), 1U);
}

TEST(MemoryReportFactory, AnotherRootIsRefused) {
  MemoryReportFactory factory;
  EXPECT_EQ(ErrorText([&] { factory.NewReport("<Format/>", "Report"); }),
            "A report record format begins with LCRecordFormat, not with Format.");
  EXPECT_THROW(factory.NewReport("<LCRecordFormat>", "Report"), Error);
  EXPECT_TRUE(factory.Reports().empty());
}

}  // namespace
}  // namespace qmrules::platform
