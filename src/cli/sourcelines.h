#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>

#include "workbench/codemodel/modelfile.h"
#include "workbench/codemodel/sourcefile.h"
#include "workbench/host/embeddedhost.h"

namespace qmrules::cli {

// The lines of the files of one model, as they are now.
class SourceLines {
 public:
  // Both have to outlive it.
  SourceLines(workbench::EmbeddedHost& host, const workbench::codemodel::ModelImage& model)
      : host_(host), model_(model) {}

  // The row, from 1, without the blanks around it, safe to show; "" where the file has changed and ends before it.
  // Throws platform::Error for a file that cannot be read.
  std::string Row(std::uint16_t file, std::uint32_t row);

 private:
  workbench::EmbeddedHost& host_;
  const workbench::codemodel::ModelImage& model_;
  std::map<std::uint16_t, std::unique_ptr<workbench::codemodel::SourceFile>> files_;
};

}  // namespace qmrules::cli
