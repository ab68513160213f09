#include "desktop/source/memorytexts.h"

#include "platform/error.h"
#include "workbench/codemodel/cobol/reading/textclassification.h"

namespace qmrules::test {

std::string MemoryTexts::ReadBytes(std::string_view file) {
  ++reads_;
  const auto found = files_.find(file);
  if (found == files_.end()) throw platform::Error(std::string(file) + ": there is no such file.");
  return found->second;
}

workbench::codemodel::TextClassifier MemoryTexts::Classifier(const platform::CurrentFile& file) {
  if (classifier_) return classifier_;
  if (file.Language != "COBOL") return {};
  return [](std::shared_ptr<const workbench::codemodel::SourceFile> source) {
    return workbench::codemodel::cobol::ClassifyText(std::move(source), {});
  };
}

std::string NumberedRows(int count) {
  std::string text;
  for (int row = 1; row <= count; ++row) text += "ROW " + std::to_string(row) + "\n";
  return text;
}

}  // namespace qmrules::test
