#include "validation/rulevalidation.h"

#include <utility>

#include "catalogue/ignorederrors.h"
#include "platform/widgets/treeview.h"
#include "shell/text.h"
#include "validation/validationoptions.h"

namespace qmrules::validation {

using platform::MessageAnswer;
using platform::MessageStyle;

namespace {

constexpr int kContinue = 535;
constexpr int kNothingToValidate = 615;
constexpr int kOneRule = 616;
constexpr int kRules = 617;

// A file has many lines, and the host need not look for events at each.
constexpr unsigned kLinesBetweenEvents = 1024;

// Takes the marks of the segments out of the viewer, and paints them anew at the end, whatever came between.
class MarksAside {
 public:
  MarksAside(platform::Workspace& workspace, segments::Emphasis& emphasis) : emphasis_(emphasis) {
    if (workspace.CurFile()) workspace.MethodCall("QMSource", "CheckSegment", "");
  }
  MarksAside(const MarksAside&) = delete;
  MarksAside& operator=(const MarksAside&) = delete;
  ~MarksAside() {
    if (!isBack_) catalogue::WithErrorsIgnored([this] { emphasis_.Refresh(); });
  }
  void PutBack() {
    isBack_ = true;
    emphasis_.Refresh();
  }

 private:
  segments::Emphasis& emphasis_;
  bool isBack_ = false;
};

}  // namespace

void RuleValidation::Run() {
  platform::KeyedCollection<std::string> rules = selection_.GetSelection().rules;
  if (rules.Empty()) {
    Tell(kNothingToValidate, MessageStyle::Exclamation);
    return;
  }
  platform::Options& options = services_.FE.ProjectOptions();
  if (!UserAgrees(rules.Count()) || !options.DisplayDialog(kRuleValidationPath)) return;
  std::string action = ReadValidationAction(options);

  const platform::BusyCursor busy(services_.pointer);
  MarksAside marks(services_.QMWS, emphasis_);
  const auto report = std::make_shared<const ValidationReport>(Validate(std::move(rules), std::move(action)));
  services_.host.ShowNode(services_.widgets.tvObjects.SelectedNode());
  marks.PutBack();
  onValidated_.Raise(report);
  const platform::NormalCursor normal(services_.pointer);
  services_.dialogs.MessageBox(
      report->message, services_.globals.externalName,
      report->counts.notValidated >= 1 ? MessageStyle::Exclamation : MessageStyle::Information);
}

bool RuleValidation::UserAgrees(std::size_t rules) const {
  const std::string& many = services_.texts.Text(kRules);
  const std::string question =
      (rules == 1 ? services_.texts.Text(kOneRule) : shell::Subst(many, {std::to_string(rules)})) + "\r\n" +
      services_.texts.Text(kContinue);
  return services_.dialogs.MessageBox(question, services_.globals.externalName, MessageStyle::Question) ==
         MessageAnswer::Yes;
}

ValidationReport RuleValidation::Validate(platform::KeyedCollection<std::string> rules, std::string action) const {
  ValidationRequest request;
  request.ruleIDs = std::move(rules);
  request.action = std::move(action);
  request.collapseSpaces = ReadCollapseSpaces(services_.FE.ProjectOptions());
  // Only whoever looks at the findings pays for what they tell beyond the message.
  request.wantsPlaces = onValidated_.HasObservers();
  request.wantsTexts = request.wantsPlaces;
  unsigned lines = 0;
  const auto processEvents = [this, &lines] {
    if (++lines % kLinesBetweenEvents == 0) services_.progress.Cancelled();
  };
  const auto command = services_.Repository().BeginCommand("Validate");
  return ValidateRules({services_.FE, fileSystem_, services_.clock, services_.texts, services_.globals, processEvents},
                       request, &services_.progress);
}

void RuleValidation::Tell(int resourceNumber, MessageStyle style) const {
  services_.dialogs.MessageBox(services_.texts.Text(resourceNumber), services_.globals.externalName, style);
}

}  // namespace qmrules::validation
