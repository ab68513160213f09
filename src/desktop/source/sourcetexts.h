#pragma once

#include <string>
#include <string_view>

#include "platform/workspace.h"
#include "workbench/codemodel/textclasses.h"

namespace qmrules::desktop {

// Where the source view has its texts from.
class SourceTexts {
 public:
  virtual ~SourceTexts() = default;

  // The bytes of a file, by its name relative to the source folder. Throws platform::Error, with the reason, when it
  // cannot be read.
  virtual std::string ReadBytes(std::string_view file) = 0;
  // The encoding of the source files, see platform/encoding.h; "" for the default.
  virtual std::string Encoding() = 0;
  // What tells the classes of the file's text, to be coloured by; an empty function for a file without colours. It is
  // called on another thread, with nothing of this object.
  virtual workbench::codemodel::TextClassifier Classifier(const platform::CurrentFile& file) = 0;
};

}  // namespace qmrules::desktop
