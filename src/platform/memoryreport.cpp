#include "platform/memoryreport.h"

#include <fmt/format.h>

#include <algorithm>
#include <optional>
#include <utility>

#include "platform/error.h"
#include "platform/xml.h"

namespace qmrules::platform {

namespace {

ReportColumn ColumnOf(const XmlElement& element) {
  ReportColumn column{
      element.tagName(), element.AttributeOr("CAPTION", ""), element.AttributeOr("RAW", "") == "no", {}};
  for (XmlElement child = element.firstChild(); child; child = child.nextSibling()) {
    column.columns.push_back(ColumnOf(child));
  }
  return column;
}

class MemoryRecords;

// One field of the record that a MemoryRecords fills.
class MemoryField final : public ReportField {
 public:
  MemoryField(const ReportColumn& column, ReportRecord& record);
  ~MemoryField() override;
  void SetText(std::string_view text) override;
  ReportRecords& Records() override;

 private:
  const ReportColumn& column_;
  ReportRecord& record_;
  std::unique_ptr<MemoryRecords> group_;
};

// A list of records of these columns. Both are owned by others.
class MemoryRecords final : public ReportRecords {
 public:
  MemoryRecords(const std::vector<ReportColumn>& columns, std::vector<ReportRecord>& records)
      : columns_(columns), records_(records) {}

  void AddNew() override {
    fields_.clear();
    record_ = std::make_unique<ReportRecord>();
  }

  ReportField& Field(std::string_view name) override {
    if (record_ == nullptr) throw Error(fmt::format("The report field \"{}\" is set outside of a record.", name));
    const auto held = fields_.find(name);
    if (held != fields_.end()) return *held->second;
    const auto column =
        std::find_if(columns_.begin(), columns_.end(), [&](const ReportColumn& known) { return known.name == name; });
    if (column == columns_.end()) throw Error(fmt::format("The report has no field \"{}\".", name));
    return *fields_.emplace(name, std::make_unique<MemoryField>(*column, *record_)).first->second;
  }

  void Update() override {
    if (record_ == nullptr) throw Error("A report record is finished before it was begun.");
    fields_.clear();
    records_.push_back(std::move(*record_));
    record_.reset();
  }

 private:
  const std::vector<ReportColumn>& columns_;
  std::vector<ReportRecord>& records_;
  std::unique_ptr<ReportRecord> record_;  // begun and not updated yet
  std::map<std::string, std::unique_ptr<MemoryField>, std::less<>> fields_;
};

MemoryField::MemoryField(const ReportColumn& column, ReportRecord& record) : column_(column), record_(record) {}

MemoryField::~MemoryField() = default;

void MemoryField::SetText(std::string_view text) {
  if (!column_.columns.empty())
    throw Error(fmt::format("The report field \"{}\" holds records, no text.", column_.name));
  record_.texts.insert_or_assign(column_.name, std::string(text));
}

ReportRecords& MemoryField::Records() {
  if (column_.columns.empty())
    throw Error(fmt::format("The report field \"{}\" holds a text, no records.", column_.name));
  if (group_ == nullptr) group_ = std::make_unique<MemoryRecords>(column_.columns, record_.groups[column_.name]);
  return *group_;
}

class MemoryReport final : public Report {
 public:
  explicit MemoryReport(std::shared_ptr<ReportContent> content)
      : content_(std::move(content)), records_(content_->columns, content_->records) {}

  void AddNew() override {
    CheckOpen();
    records_.AddNew();
  }
  ReportField& Field(std::string_view name) override { return records_.Field(name); }
  void Update() override {
    CheckOpen();
    records_.Update();
  }
  void Show() override { content_->shown = true; }

 private:
  void CheckOpen() const {
    if (content_->shown)
      throw Error(fmt::format("The report \"{}\" is shown already and takes no more.", content_->title));
  }

  std::shared_ptr<ReportContent> content_;
  MemoryRecords records_;
};

}  // namespace

std::vector<ReportColumn> ParseRecordFormat(std::string_view recordFormat) {
  XmlDocument document;
  document.loadXML(recordFormat, "report record format");
  const XmlElement root = document.documentElement();
  if (root.tagName() != "LCRecordFormat") {
    throw Error(fmt::format("A report record format begins with LCRecordFormat, not with {}.", root.tagName()));
  }
  return ColumnOf(root).columns;
}

std::unique_ptr<Report> NewMemoryReport(std::shared_ptr<ReportContent> content) {
  return std::make_unique<MemoryReport>(std::move(content));
}

std::unique_ptr<Report> MemoryReportFactory::NewReport(std::string_view recordFormat, std::string_view title) {
  auto content = std::make_shared<ReportContent>();
  content->title = title;
  content->columns = ParseRecordFormat(recordFormat);
  reports_.push_back(content);
  return NewMemoryReport(content);
}

}  // namespace qmrules::platform
