#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "platform/report.h"

namespace qmrules::platform {

// A field of a record format, or a group of them.
struct ReportColumn {
  std::string name;
  std::string caption;
  bool isMarkup = false;              // RAW="no"
  std::vector<ReportColumn> columns;  // of a group; empty for a field
};

// A finished record.
struct ReportRecord {
  std::map<std::string, std::string> texts;                 // by field; a field that was not set is not there
  std::map<std::string, std::vector<ReportRecord>> groups;  // by field
};

// What a report holds. Shared by the report, which fills it, and by whoever reads it.
struct ReportContent {
  std::string title;
  std::vector<ReportColumn> columns;
  std::vector<ReportRecord> records;
  bool shown = false;
};

// Reads a record format; see ReportFactory::NewReport.
std::vector<ReportColumn> ParseRecordFormat(std::string_view recordFormat);

// A report that keeps its records.
std::unique_ptr<Report> NewMemoryReport(std::shared_ptr<ReportContent> content);

// Makes reports that keep their records, and remembers them in the order of their making.
class MemoryReportFactory final : public ReportFactory {
 public:
  std::unique_ptr<Report> NewReport(std::string_view recordFormat, std::string_view title) override;
  const std::vector<std::shared_ptr<ReportContent>>& Reports() const { return reports_; }

 private:
  std::vector<std::shared_ptr<ReportContent>> reports_;
};

}  // namespace qmrules::platform
