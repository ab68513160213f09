#pragma once

#include <memory>
#include <string_view>

namespace qmrules::platform {

class ReportRecords;

// One field of the record being filled.
class ReportField {
 public:
  virtual ~ReportField() = default;
  // The field's content: markup where the record format says RAW="no", plain text elsewhere. Throws Error for a group.
  virtual void SetText(std::string_view text) = 0;
  // The records of a group, within the record being filled. Throws Error for a field that is no group.
  virtual ReportRecords& Records() = 0;
};

// A list of records that grows one by one: AddNew, fields, Update.
class ReportRecords {
 public:
  virtual ~ReportRecords() = default;
  // Begins a record. One that was begun and not updated is dropped.
  virtual void AddNew() = 0;
  // A field of the record begun, named as in the record format. Throws Error for another name, and without AddNew. The
  // reference is good until Update.
  virtual ReportField& Field(std::string_view name) = 0;
  // Puts the record at the end of the list. Throws Error without AddNew.
  virtual void Update() = 0;
};

// A report of the host, laid out by its record format.
class Report : public ReportRecords {
 public:
  // Hands the records to the user. The report takes no more after that.
  virtual void Show() = 0;
};

class ReportFactory {
 public:
  virtual ~ReportFactory() = default;
  // Makes an empty report. The record format is an XML text: below the root "LCRecordFormat" one element for each
  // field, with the attribute CAPTION; one with elements of its own is a group. Throws Error when it is malformed.
  virtual std::unique_ptr<Report> NewReport(std::string_view recordFormat, std::string_view title) = 0;
};

}  // namespace qmrules::platform
