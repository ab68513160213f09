#include "desktop/results/findingtexts.h"

#include <QCoreApplication>
#include <QStringList>
#include <array>

namespace qmrules::desktop {

namespace {

using validation::Verdict;

class FindingTexts {
  Q_DECLARE_TR_FUNCTIONS(ValidationResults)
};

struct VerdictTexts {
  const char* word;
  const char* meaning;
  const char* icon;
};

// By the numbers of the verdicts.
constexpr std::array<VerdictTexts, validation::kVerdicts> kTexts = {{
    {QT_TRANSLATE_NOOP("ValidationResults", "unchanged"),
     QT_TRANSLATE_NOOP("ValidationResults", "The text stands at its rows."), "VerdictUnchanged"},
    {QT_TRANSLATE_NOOP("ValidationResults", "in place"),
     QT_TRANSLATE_NOOP("ValidationResults", "The text stands at its rows, with other blanks or in other case."),
     "VerdictInPlace"},
    {QT_TRANSLATE_NOOP("ValidationResults", "no segment"),
     QT_TRANSLATE_NOOP("ValidationResults", "The rule has no segment."), "VerdictNoSegment"},
    {QT_TRANSLATE_NOOP("ValidationResults", "moved"),
     QT_TRANSLATE_NOOP("ValidationResults", "The text stands at other rows of the file."), "VerdictMoved"},
    {QT_TRANSLATE_NOOP("ValidationResults", "ambiguous"),
     QT_TRANSLATE_NOOP("ValidationResults", "The text stands at several places of the file."), "VerdictAmbiguous"},
    {QT_TRANSLATE_NOOP("ValidationResults", "not found"),
     QT_TRANSLATE_NOOP("ValidationResults", "The text is nowhere in the file."), "VerdictNotFound"},
    {QT_TRANSLATE_NOOP("ValidationResults", "rows disagree"),
     QT_TRANSLATE_NOOP("ValidationResults",
                       "The stored text has more lines than the rule has rows, so it was not looked for."),
     "VerdictRowsDisagree"},
    {QT_TRANSLATE_NOOP("ValidationResults", "file missing"),
     QT_TRANSLATE_NOOP("ValidationResults", "The file cannot be read."), "VerdictFileMissing"},
    {QT_TRANSLATE_NOOP("ValidationResults", "changed"),
     QT_TRANSLATE_NOOP("ValidationResults", "The text does not stand at its rows."), "VerdictChanged"},
}};

const VerdictTexts& TextsOf(Verdict verdict) {
  return kTexts[static_cast<std::size_t>(verdict)];
}

QString FileAndRows(const std::string& file, const validation::RowRange& rows) {
  return FindingTexts::tr("%1, rows %2")
      .arg(QString::fromStdString(file), QString::fromStdString(validation::RowsText(rows)));
}

}  // namespace

validation::VerdictWords AllVerdictWords() {
  validation::VerdictWords words;
  for (std::size_t verdict = 0; verdict < words.size(); ++verdict) {
    words[verdict] = FindingTexts::tr(kTexts[verdict].word).toStdString();
  }
  return words;
}

QString VerdictMeaning(Verdict verdict) {
  return FindingTexts::tr(TextsOf(verdict).meaning);
}

std::string VerdictIcon(Verdict verdict) {
  return TextsOf(verdict).icon;
}

QString CountsText(const validation::FindingList& list) {
  QStringList counts;
  for (const Verdict verdict : validation::VerdictsByNeed()) {
    if (list.CountOf(verdict) == 0) continue;
    counts += FindingTexts::tr("%1: %2").arg(FindingTexts::tr(TextsOf(verdict).word)).arg(list.CountOf(verdict));
  }
  return counts.join(QString::fromUtf8(" · "));
}

QString StoredCaption(const validation::RuleFinding& finding) {
  if (finding.verdict == Verdict::NoSegment) return {};
  return FindingTexts::tr("Stored text: %1").arg(FileAndRows(finding.fileName, finding.rows));
}

QString PlaceCaption(const validation::RuleFinding& finding, const validation::FindingPlace& place) {
  const QString where = FileAndRows(finding.fileName, place.rows);
  switch (place.kind) {
    case validation::PlaceKind::Chosen:
      return finding.candidates.size() == 1 ? where : FindingTexts::tr("Nearest place: %1").arg(where);
    case validation::PlaceKind::Candidate:
      return FindingTexts::tr("Other place: %1").arg(where);
    case validation::PlaceKind::Near:
      return FindingTexts::tr("Something like it, characters that differ: %2. %1").arg(where).arg(place.distance);
    case validation::PlaceKind::OldRows:
      break;
  }
  return FindingTexts::tr("Now: %1").arg(where);
}

}  // namespace qmrules::desktop
