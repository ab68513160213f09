#include "cli/validationfiles.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <utility>

#include "platform/xml.h"
#include "shell/text.h"

namespace qmrules::cli {

using validation::RowRange;
using validation::RowsText;
using validation::RuleFinding;
using validation::Verdict;

namespace {

struct VerdictText {
  Verdict verdict;
  const char* name;
  const char* meaning;  // of a rule that has it
  const char* level;    // in SARIF; "" for a rule that is no result
};

constexpr std::array<VerdictText, 9> kVerdicts = {{
    {Verdict::Unchanged, "unchanged", "The text of the rule's segment stands at its lines.", ""},
    {Verdict::InPlace, "in place",
     "The text of the rule's segment stands at its lines, with other blanks or in other case.", ""},
    {Verdict::NoSegment, "no segment", "The rule has no segment.", ""},
    {Verdict::Moved, "moved", "The text of the rule's segment stands at other lines of the file.", "warning"},
    {Verdict::Ambiguous, "ambiguous",
     "The text of the rule's segment stands at several other places of the file; the nearest is taken.", "warning"},
    {Verdict::NotFound, "not found", "The text of the rule's segment is no longer in the file.", "error"},
    {Verdict::RowsDisagree, "rows disagree", "The rule's stored text has more lines than the rule has rows.", "error"},
    {Verdict::FileMissing, "file missing", "The file of the rule's segment cannot be read.", "error"},
    {Verdict::Changed, "changed", "The text of the rule's segment does not stand at its lines.", "error"},
}};

const VerdictText& TextOf(Verdict verdict) {
  return *std::find_if(kVerdicts.begin(), kVerdicts.end(),
                       [&](const VerdictText& candidate) { return candidate.verdict == verdict; });
}

bool IsResult(const RuleFinding& finding) {
  return *TextOf(finding.verdict).level != '\0';
}

Json RowsJson(const RowRange& rows) {
  return {{"from", rows.FromRow}, {"to", rows.ToRow}};
}

std::string RuleKey(const RuleFinding& finding) {
  return fmt::format("RULE#{}", finding.ruleID);
}

std::string Sentence(const RuleFinding& finding) {
  const std::string place = PlaceText(finding);
  return fmt::format("{} \"{}\", {}:{}: {}{}", RuleKey(finding), finding.ruleName, finding.fileName,
                     RowsText(finding.rows), TextOf(finding.verdict).meaning,
                     place.empty() ? "" : fmt::format(" ({})", place));
}

// SARIF's IDs of rules have no blanks.
std::string SarifID(Verdict verdict) {
  std::string id = std::string("segment-") + TextOf(verdict).name;
  std::replace(id.begin(), id.end(), ' ', '-');
  return id;
}

Json SarifResult(const RuleFinding& finding) {
  std::string file = finding.fileName;
  std::replace(file.begin(), file.end(), '\\', '/');
  Json place = {{"artifactLocation", {{"uri", file}}}};
  if (finding.rows.FromRow >= 1 && finding.rows.ToRow >= finding.rows.FromRow) {
    place["region"] = {{"startLine", finding.rows.FromRow}, {"endLine", finding.rows.ToRow}};
  }
  Json result = {{"ruleId", SarifID(finding.verdict)},
                 {"level", TextOf(finding.verdict).level},
                 {"message", {{"text", Sentence(finding)}}},
                 {"locations", Json::array({{{"physicalLocation", place}}})},
                 {"partialFingerprints", {{"qmrulesRule", RuleKey(finding)}}}};
  return result;
}

}  // namespace

std::string VerdictName(Verdict verdict) {
  return TextOf(verdict).name;
}

std::string PlaceText(const RuleFinding& finding) {
  if (finding.verdict == Verdict::InPlace) return "";
  if (!finding.candidates.empty()) {
    std::string text = "now " + RowsText(finding.candidates[finding.chosen]);
    std::string others;
    for (std::size_t place = 0; place < finding.candidates.size(); ++place) {
      if (place != finding.chosen) others += (others.empty() ? "" : ", ") + RowsText(finding.candidates[place]);
    }
    return others.empty() ? text : text + ", or " + others;
  }
  if (!finding.near) return "";
  return fmt::format("near {}, {} character{} off", RowsText(finding.near->rows), finding.near->distance,
                     finding.near->distance == 1 ? "" : "s");
}

Json ToJson(const RuleFinding& finding) {
  Json json = {{"key", RuleKey(finding)},
               {"rule", finding.ruleName},
               {"file", finding.fileName},
               {"rows", RowsJson(finding.rows)},
               {"verdict", VerdictName(finding.verdict)}};
  if (!finding.candidates.empty()) {
    json["newRows"] = RowsJson(finding.candidates[finding.chosen]);
    json["candidates"] = Json::array();
    for (std::size_t place = 0; place < finding.candidates.size(); ++place) {
      Json candidate = RowsJson(finding.candidates[place]);
      candidate["chosen"] = place == finding.chosen;
      json["candidates"].push_back(std::move(candidate));
    }
  }
  if (finding.near) {
    json["nearest"] = RowsJson(finding.near->rows);
    json["nearest"]["distance"] = finding.near->distance;
  }
  return json;
}

std::string JUnitText(const Findings& findings) {
  platform::XmlDocument document;
  document.loadXML("<testsuites><testsuite name=\"qmrules validate\"/></testsuites>", "JUnit");
  auto suite = document.selectSingleNode("/testsuites/testsuite");
  int failures = 0;
  int skipped = 0;
  for (const RuleFinding* const finding : findings) {
    auto test = suite.appendChild(document.createElement("testcase"));
    test.setAttribute("classname", shell::SafeText(finding->fileName));
    test.setAttribute("name", shell::SafeText(RuleKey(*finding) + " " + finding->ruleName));
    if (finding->verdict == Verdict::NoSegment) {
      ++skipped;
      test.appendChild(document.createElement("skipped")).setAttribute("message", TextOf(Verdict::NoSegment).meaning);
    } else if (IsResult(*finding)) {
      ++failures;
      auto failure = test.appendChild(document.createElement("failure"));
      failure.setAttribute("type", VerdictName(finding->verdict));
      failure.setAttribute("message", shell::SafeText(Sentence(*finding)));
    }
  }
  suite.setAttribute("tests", std::to_string(findings.size()));
  suite.setAttribute("failures", std::to_string(failures));
  suite.setAttribute("errors", "0");
  suite.setAttribute("skipped", std::to_string(skipped));
  return document.xml();
}

std::string SarifText(const Findings& findings, const std::string& version) {
  Json kinds = Json::array();
  for (const VerdictText& text : kVerdicts) {
    if (*text.level == '\0') continue;
    kinds.push_back({{"id", SarifID(text.verdict)},
                     {"shortDescription", {{"text", text.meaning}}},
                     {"defaultConfiguration", {{"level", text.level}}}});
  }
  Json results = Json::array();
  for (const RuleFinding* const finding : findings) {
    if (IsResult(*finding)) results.push_back(SarifResult(*finding));
  }
  const Json driver = {{"name", "qmrules"}, {"version", version}, {"rules", std::move(kinds)}};
  const Json run = {{"tool", {{"driver", driver}}}, {"results", std::move(results)}};
  const Json document = {{"version", "2.1.0"}, {"runs", Json::array({run})}};
  return JsonText(document) + "\n";
}

}  // namespace qmrules::cli
