#include "validation/validationrun.h"

#include <fmt/format.h>

#include <utility>

#include "catalogue/gateway.h"
#include "platform/linereader.h"
#include "shell/text.h"
#include "validation/rulestovalidate.h"
#include "validation/segmentcomparison.h"
#include "validation/sourcecheck.h"
#include "validation/validationoptions.h"
#include "validation/validationwriter.h"

namespace qmrules::validation {

namespace {

constexpr int kNoRulesFound = 583;
constexpr int kValidatingRules = 596;

// The progress display of a run, closed on every path.
class RunDisplay {
 public:
  RunDisplay(platform::Progress* progress, const std::string& text, std::size_t rules) : progress_(progress) {
    if (progress_ == nullptr) return;
    progress_->StartProgress(text, static_cast<int>(rules), false);
    progress_->StartStep("");
  }
  RunDisplay(const RunDisplay&) = delete;
  RunDisplay& operator=(const RunDisplay&) = delete;
  ~RunDisplay() {
    if (progress_ != nullptr) progress_->FinishProgress();
  }
  void FinishFile(std::size_t rules) {
    if (progress_ == nullptr) return;
    progress_->FinishStep(static_cast<int>(rules));
    progress_->StartStep("");
  }
  void FinishLast() {
    if (progress_ != nullptr) progress_->FinishStep(1);
  }

 private:
  platform::Progress* progress_;
};

// What a look into its file tells of a rule.
struct RuleState {
  bool hasText = false;
  bool opened = false;  // its file was read; only looked at for a rule with a text
  SourceCheck check;
};

class ValidationRun {
 public:
  ValidationRun(const ValidationServices& services, const ValidationRequest& request, platform::Progress* progress)
      : services_(services),
        request_(request),
        repairs_(request.action == kRepair),
        folder_(services.FE.GetFerrowoodName(platform::FerrowoodName::SourceFolder)),
        files_(services.fileSystem, folder_),
        relocation_({.collapseSpaces = request.collapseSpaces, .processEvents = services.processEvents}),
        writer_(services),
        display_(progress, services.texts.Text(kValidatingRules), request.ruleIDs.Count()) {}

  ValidationReport Run() {
    report_.counts.rules = static_cast<std::int32_t>(request_.ruleIDs.Count());
    rules_ = ReadRulesToValidate(services_.FE.Repository(), request_.ruleIDs, files_);
    states_.resize(rules_.size());
    for (const RuleToValidate& rule : rules_) {
      RuleFinding& finding = report_.findings.emplace_back();
      finding.ruleID = rule.id;
      finding.fileName = files_.Name(rule.file);
      finding.rows = rule.rows;
    }
    CheckFiles();
    WriteResults();
    WriteRelocated();
    if (request_.writes) writer_.Finish();
    display_.FinishLast();
    report_.message = ValidationMessage(report_.counts, request_.action, services_.texts);
    return std::move(report_);
  }

 private:
  // What a file tells does not depend on the order of the rules, so each file has its turn once.
  void CheckFiles() {
    std::vector<std::vector<std::size_t>> byFile(files_.Count());
    for (std::size_t place = 0; place < rules_.size(); ++place) byFile[rules_[place].file].push_back(place);
    for (std::size_t file = 0; file < byFile.size(); ++file) {
      CheckFile(files_.Name(file), byFile[file]);
      if (services_.processEvents) services_.processEvents();
    }
  }

  void CheckFile(const std::string& name, const std::vector<std::size_t>& places) {
    std::vector<std::int32_t> ids;
    ids.reserve(places.size());
    for (const std::size_t place : places) ids.push_back(rules_[place].id);
    auto texts = ReadRuleTexts(services_.FE.Repository(), ids);
    CheckFile(name, places, texts);
    if (!request_.wantsTexts) return;
    for (const std::size_t place : places) {
      RuleFinding& finding = report_.findings[place];
      auto& [ruleName, segment] = texts[finding.ruleID];
      finding.ruleName = std::move(ruleName);
      finding.storedText = std::move(segment);
    }
  }

  void CheckFile(const std::string& name, const std::vector<std::size_t>& places,
                 std::unordered_map<std::int32_t, RuleTexts>& texts) {
    std::vector<std::size_t> withText;
    for (const std::size_t place : places) {
      const auto text = texts.find(rules_[place].id);
      states_[place].hasText = text != texts.end() && !text->second.segment.empty();
      if (states_[place].hasText) {
        withText.push_back(place);
      } else {
        report_.findings[place].verdict = Verdict::NoSegment;
      }
    }
    if (withText.empty()) return;

    const auto fileText = ReadSourceText(services_.fileSystem, folder_, name);
    const auto lines = fileText ? platform::SplitLines(*fileText) : std::vector<std::string_view>();
    std::vector<std::size_t> astray;
    for (const std::size_t place : withText) {
      RuleState& state = states_[place];
      RuleFinding& finding = report_.findings[place];
      state.opened = fileText.has_value();
      if (state.opened)
        state.check = CheckSource(lines, finding.rows.FromRow, finding.rows.ToRow, texts[finding.ruleID].segment);
      if (state.check.stands) continue;
      finding.verdict = state.opened ? Verdict::Changed : Verdict::FileMissing;
      if (state.opened) astray.push_back(place);
    }
    if (!astray.empty() && (repairs_ || request_.wantsPlaces)) LookFor(*fileText, astray, texts);
  }

  void LookFor(const std::string& fileText, const std::vector<std::size_t>& places,
               std::unordered_map<std::int32_t, RuleTexts>& texts) {
    if (request_.method == ComparisonMethod::MultipleMatching) {
      Relocate(fileText, places, texts);
    } else {
      for (const std::size_t place : places) Search(fileText, report_.findings[place], texts);
    }
    if (!request_.wantsHints) return;
    for (const std::size_t place : places) {
      RuleFinding& finding = report_.findings[place];
      if (finding.verdict == Verdict::NotFound) AddNearPlace(fileText, finding, texts[finding.ruleID].segment);
    }
  }

  void Relocate(const std::string& fileText, const std::vector<std::size_t>& places,
                std::unordered_map<std::int32_t, RuleTexts>& texts) {
    std::vector<RuleRecord> records;
    records.reserve(places.size());
    for (const std::size_t place : places) {
      const RuleFinding& finding = report_.findings[place];
      records.push_back({std::to_string(finding.ruleID), finding.rows.FromRow, finding.rows.ToRow,
                         texts[finding.ruleID].segment, false});
    }
    relocation_.RelocateSegments(fileText, records,
                                 [&](std::size_t index, const RuleRecord&, const RelocationFinding& found) {
                                   TakeOutcome(report_.findings[places[index]], found);
                                 });
    for (std::size_t index = 0; index < places.size(); ++index) {
      if (records[index].Valid) report_.findings[places[index]].text = std::move(records[index].SegText);
    }
  }

  static void TakeOutcome(RuleFinding& finding, const RelocationFinding& found) {
    switch (found.outcome) {
      case RelocationOutcome::Relocated:
        finding.verdict = found.matches.Rows(found.chosen) == finding.rows ? Verdict::InPlace
                          : found.matches.Count() == 1                     ? Verdict::Moved
                                                                           : Verdict::Ambiguous;
        for (std::size_t place = 0; place < found.matches.Count(); ++place) {
          finding.candidates.push_back(found.matches.Rows(place));
        }
        finding.chosen = found.chosen;
        break;
      case RelocationOutcome::RowsDisagree:
        finding.verdict = Verdict::RowsDisagree;
        break;
      case RelocationOutcome::NotFound:
      case RelocationOutcome::TooManyLines:
        finding.verdict = Verdict::NotFound;
        break;
    }
  }

  void Search(const std::string& fileText, RuleFinding& finding,
              const std::unordered_map<std::int32_t, RuleTexts>& texts) const {
    SegmentPlace place{finding.rows.FromRow, finding.rows.ToRow, texts.at(finding.ruleID).segment};
    switch (FindSegmentBy(request_.method, fileText, place)) {
      case SearchOutcome::Found:
        finding.verdict = Verdict::Moved;
        finding.candidates = {{place.FromRow, place.ToRow}};
        finding.text = std::move(place.SegText);
        break;
      case SearchOutcome::NotFound:
        finding.verdict = Verdict::NotFound;
        break;
      case SearchOutcome::RowsDisagree:
        finding.verdict = Verdict::RowsDisagree;
        break;
    }
  }

  static void AddNearPlace(const std::string& fileText, RuleFinding& finding, const std::string& text) {
    SegmentPlace place{finding.rows.FromRow, finding.rows.ToRow, text};
    ApproximateMatch match;
    if (FindSegmentApproximately(fileText, place, &match) != SearchOutcome::Found) return;
    finding.near = NearPlace{{place.FromRow, place.ToRow}, match.totalDistance};
  }

  // A first row behind the end of the file is remembered until the next file is opened. A rule without a segment opens
  // none, so directly behind such a rule it does not count as correct.
  void WriteResults() {
    bool pastEnd = false;
    for (std::size_t place = 0; place < rules_.size(); ++place) {
      const RuleState& state = states_[place];
      if (state.hasText && state.opened) pastEnd = state.check.pastEnd;
      if (!state.hasText) ++report_.counts.noSegment;
      const bool isCorrect = state.hasText ? state.check.stands : !pastEnd;
      if (isCorrect) {
        ++report_.counts.correct;
        Write([&] { writer_.PutCorrect(rules_[place].id); });
      } else {
        if (!state.hasText) report_.findings[place].verdict = Verdict::Changed;
        WriteIncorrect(place);
      }
    }
  }

  void WriteIncorrect(std::size_t place) {
    const RuleState& state = states_[place];
    const std::int32_t id = rules_[place].id;
    if (request_.action == kLeave) {
      Write([&] { writer_.PutInvalid(id); });
    } else if (request_.action == kDelete) {
      Write([&] { writer_.DeleteSegment(id); });
    } else if (repairs_ && state.hasText && !state.opened) {
      Write([&] { writer_.PutInvalid(id); });
      ++report_.counts.notValidated;
    } else if (repairs_ && request_.method == ComparisonMethod::MultipleMatching) {
      DeferToFile(place);
    } else if (repairs_) {
      WriteFound(place);
      if (state.hasText) ++(IsFound(place) ? report_.counts.validated : report_.counts.notValidated);
    }
  }

  // The rules of one file are written together behind all others, the files in the order of their first such rule.
  void DeferToFile(std::size_t place) {
    const std::size_t file = rules_[place].file;
    const auto [entry, isNew] = deferredPlaces_.emplace(file, deferred_.size());
    if (isNew) deferred_.emplace_back();
    deferred_[entry->second].push_back(place);
  }

  void WriteRelocated() {
    for (const std::vector<std::size_t>& places : deferred_) {
      for (const std::size_t place : places) {
        ++(IsFound(place) ? report_.counts.validated : report_.counts.notValidated);
        WriteFound(place);
      }
      display_.FinishFile(places.size());
    }
  }

  bool IsFound(std::size_t place) const { return !report_.findings[place].candidates.empty(); }

  void WriteFound(std::size_t place) {
    const RuleFinding& finding = report_.findings[place];
    const bool isFound = IsFound(place);
    const RowRange rows = isFound ? finding.candidates[finding.chosen] : RowRange();
    Write([&] { writer_.WriteValidationResult(finding.ruleID, isFound, rows.FromRow, rows.ToRow, finding.text); });
  }

  template <class Step>
  void Write(const Step& step) {
    if (request_.writes) step();
  }

  ValidationServices services_;
  const ValidationRequest& request_;
  bool repairs_;
  std::string folder_;
  FileGroups files_;
  SegmentRelocation relocation_;
  ValidationWriter writer_;
  RunDisplay display_;
  ValidationReport report_;
  std::vector<RuleToValidate> rules_;
  std::vector<RuleState> states_;                                // of the rules, by place
  std::unordered_map<std::size_t, std::size_t> deferredPlaces_;  // of files, in deferred_
  std::vector<std::vector<std::size_t>> deferred_;
};

}  // namespace

std::string RowsText(const RowRange& rows) {
  return rows.FromRow == rows.ToRow ? std::to_string(rows.FromRow) : fmt::format("{}-{}", rows.FromRow, rows.ToRow);
}

ValidationReport ValidateRules(const ValidationServices& services, const ValidationRequest& request,
                               platform::Progress* progress) {
  return ValidationRun(services, request, progress).Run();
}

void BatchRuleValidation(const ValidationServices& services, std::string_view projectID, std::string& message) {
  const auto fetch = catalogue::NewQuery(services.FE.Repository());
  const auto rule = fetch->AddObject(false, catalogue::kRule, "ID");
  const auto has = fetch->AddRelation("Has", false, "", rule);
  fetch->SetRoot(fetch->AddObject(true, catalogue::kRuleSet, "", {}, has));
  if (fetch->Execute(projectID)) {
    message = services.texts.Text(kNoRulesFound);
    return;
  }
  ValidationRequest request;
  for (; !fetch->Eof(); fetch->MoveNext()) {
    catalogue::AddKeyed(request.ruleIDs, std::to_string(catalogue::IDField(fetch->Row(), "ID")));
  }
  fetch->Reset();
  request.action = ReadValidationAction(services.FE.ProjectOptions());
  request.collapseSpaces = ReadCollapseSpaces(services.FE.ProjectOptions());
  message = ValidateRules(services, request, nullptr).message;
}

}  // namespace qmrules::validation
