#pragma once

#include <memory>

#include "browser/browserservices.h"
#include "browser/selection.h"
#include "platform/event.h"
#include "platform/filesystem.h"
#include "segments/emphasis.h"
#include "validation/validationrun.h"

namespace qmrules::validation {

// The whole result of a run with its texts; whoever hears it may keep it.
using ValidatedEvent = platform::Event<std::shared_ptr<const ValidationReport>>;

// The command `Validate`: asks, shows the options, and validates the selected rules.
class RuleValidation {
 public:
  // All of them outlive this. `onValidated` is raised when the results are written, before the user is told.
  RuleValidation(const browser::BrowserServices& services, const browser::Selection& selection,
                 segments::Emphasis& emphasis, const platform::FileSystem& fileSystem, ValidatedEvent& onValidated)
      : services_(services),
        selection_(selection),
        emphasis_(emphasis),
        fileSystem_(fileSystem),
        onValidated_(onValidated) {}

  // Does nothing more when no rule is selected, which it tells, and when the user cancels. Afterwards the selected node
  // and the marks of the segments are shown anew, and the user is told what was found. Throws Error when the repository
  // fails or the options lack a node; rules that are written by then stay so, and the marks are there again.
  void Run();

 private:
  bool UserAgrees(std::size_t rules) const;
  ValidationReport Validate(platform::KeyedCollection<std::string> rules, std::string action) const;
  void Tell(int resourceNumber, platform::MessageStyle style) const;

  browser::BrowserServices services_;
  const browser::Selection& selection_;
  segments::Emphasis& emphasis_;
  const platform::FileSystem& fileSystem_;
  ValidatedEvent& onValidated_;
};

}  // namespace qmrules::validation
