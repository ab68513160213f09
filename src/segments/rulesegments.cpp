#include "segments/rulesegments.h"

#include <fmt/format.h>

#include "catalogue/gateway.h"
#include "catalogue/ignorederrors.h"
#include "shell/text.h"

namespace qmrules::segments {

using catalogue::MakeKey;

bool IsTooLong(std::string_view sourceText) {
  return shell::CharacterCount(sourceText) > kLongestSegment;
}

std::string ReadSourceLines(const platform::FileSystem& fileSystem, std::string_view path, std::int32_t firstRow,
                            std::int32_t lastRow) {
  const auto stream = fileSystem.OpenTextFile(path);
  std::int32_t row = 1;
  for (; row < firstRow && !stream->AtEndOfStream(); ++row) stream->SkipLine();
  std::string text;
  for (; row <= lastRow && !stream->AtEndOfStream(); ++row) {
    text += shell::SafeText(stream->ReadLine());
    text += '\n';
  }
  return text;
}

void PutSegment(platform::Object& rule, const Segment& segment, platform::Timestamp now) {
  rule.Attrs("Model", segment.Model);
  rule.Attrs("Program", segment.Program);
  rule.Attrs("FileName", segment.FileName);
  rule.Attrs("FromRow", segment.FromRow);
  rule.Attrs("ToRow", segment.ToRow);
  rule.Attrs("SourceText", segment.SourceText);
  rule.Attrs("Valid", "Valid");
  rule.Attrs("Validated", now);
}

void DeleteRuleIO(platform::Repository& repository, std::int32_t ruleID) {
  const auto fetch = catalogue::NewQuery(repository);
  const auto element = fetch->AddObject(false, catalogue::kRuleIO, "ID");
  const auto has = fetch->AddRelation("Has", false, "", element);
  fetch->SetRoot(fetch->AddObject(false, catalogue::kRule, "", fmt::format("ID={}", ruleID), has));
  platform::KeyedCollection<std::string> keys;
  for (fetch->Execute(""); !fetch->Eof(); fetch->MoveNext()) {
    keys.Add(MakeKey(catalogue::kRuleIO, catalogue::IDField(fetch->Row(), "ID")));
  }
  fetch->Reset();
  if (keys.Empty()) return;

  repository.PrepareDelete(keys);
  for (const std::string& key : keys) {
    catalogue::WithErrorsIgnored([&] { repository.object(key)->Delete(); });
  }
}

}  // namespace qmrules::segments
