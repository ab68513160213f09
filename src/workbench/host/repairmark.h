#pragma once

#include <cstdint>
#include <string>

#include "workbench/repository/connection.h"

namespace qmrules::workbench {

// Remembers for a workspace when the attributes of its rules were last brought in line with the schema document, so
// that this walk over all rules is made only when there may be something to repair. The mark is a small JSON file: the
// fingerprint of the schema document and the number of the last entry of the change journal at that time.
class RepairMark {
 public:
  struct Places {
    std::string markPath;
    std::string schemaPath;
    std::string storePath;
    repository::ConnectionFactory connect;
  };
  explicit RepairMark(Places places);

  // True when the schema document gives an attribute a list of values and, since SetDone, has changed or a rule was
  // written. A mark that is missing or broken is none. Throws platform::Error when the schema document or the catalogue
  // cannot be read.
  bool IsDue() const;

  // Throws platform::Error when the mark cannot be written; the old one then stands.
  void SetDone() const;

 private:
  Places places_;
};

}  // namespace qmrules::workbench
