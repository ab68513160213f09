#pragma once

#include <map>
#include <string>
#include <string_view>

#include "desktop/source/sourcetexts.h"

namespace qmrules::test {

// Sources that stand in memory. COBOL files are coloured by the COBOL reader.
class MemoryTexts final : public desktop::SourceTexts {
 public:
  void Put(const std::string& file, std::string bytes) { files_[file] = std::move(bytes); }
  void Remove(const std::string& file) { files_.erase(file); }
  void SetEncoding(std::string encoding) { encoding_ = std::move(encoding); }
  // The classifier of every file, in place of the language's own.
  void SetClassifier(workbench::codemodel::TextClassifier classifier) { classifier_ = std::move(classifier); }
  int Reads() const { return reads_; }

  std::string ReadBytes(std::string_view file) override;
  std::string Encoding() override { return encoding_; }
  workbench::codemodel::TextClassifier Classifier(const platform::CurrentFile& file) override;

 private:
  std::map<std::string, std::string, std::less<>> files_;
  std::string encoding_;
  workbench::codemodel::TextClassifier classifier_;
  int reads_ = 0;
};

// Rows "ROW 1", "ROW 2" and so on, each with a line feed behind it.
std::string NumberedRows(int count);

}  // namespace qmrules::test
