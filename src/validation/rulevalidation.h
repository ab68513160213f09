#pragma once

#include "browser/browserservices.h"
#include "browser/selection.h"
#include "platform/event.h"
#include "platform/filesystem.h"
#include "segments/emphasis.h"
#include "validation/validationrun.h"

namespace qmrules::validation {

// The command `Validate`: asks, shows the options, and validates the selected rules.
class RuleValidation {
 public:
  // All of them outlive this.
  RuleValidation(const browser::BrowserServices& services, const browser::Selection& selection,
                 segments::Emphasis& emphasis, const platform::FileSystem& fileSystem)
      : services_(services), selection_(selection), emphasis_(emphasis), fileSystem_(fileSystem) {}

  // Does nothing more when no rule is selected, which it tells, and when the user cancels. Afterwards the selected node
  // and the marks of the segments are shown anew, and the user is told what was found. Throws Error when the repository
  // fails or the options lack a node; rules that are written by then stay so, and the marks are there again.
  void Run();

  // The whole result, before the user is told; the report goes with the call.
  platform::Event<const ValidationReport&> OnValidated;

 private:
  bool UserAgrees(std::size_t rules) const;
  ValidationReport Validate(platform::KeyedCollection<std::string> rules, std::string action) const;
  void Tell(int resourceNumber, platform::MessageStyle style) const;

  browser::BrowserServices services_;
  const browser::Selection& selection_;
  segments::Emphasis& emphasis_;
  const platform::FileSystem& fileSystem_;
};

}  // namespace qmrules::validation
