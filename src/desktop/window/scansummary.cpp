#include "desktop/window/scansummary.h"

#include <QCoreApplication>
#include <QStringList>

#include "desktop/views/qttext.h"

namespace qmrules::desktop {

namespace {

using Outcome = workbench::ScannedModel::Outcome;

struct SummaryTexts {
  Q_DECLARE_TR_FUNCTIONS(ScanSummary)
};

QString Line(const std::string& file, const std::string& text) {
  return QString("%1: %2").arg(ToQt(file), ToQt(text));
}

}  // namespace

ScanSummary SummaryOf(const workbench::ScanReport& report) {
  const auto count = [&](Outcome outcome) { return report.Count(outcome); };
  if (report.programs.empty() && report.problems.empty() && !report.cancelled) {
    return {SummaryTexts::tr("No COBOL program was found in the workspace."), {}};
  }
  QStringList parts{SummaryTexts::tr("Programs scanned: %1").arg(count(Outcome::Added) + count(Outcome::Updated)),
                    SummaryTexts::tr("unchanged: %1").arg(count(Outcome::Unchanged))};
  if (count(Outcome::Missing) > 0) parts += SummaryTexts::tr("missing: %1").arg(count(Outcome::Missing));
  if (count(Outcome::Failed) > 0) parts += SummaryTexts::tr("failed: %1").arg(count(Outcome::Failed));
  if (report.cancelled) parts += SummaryTexts::tr("stopped before the end");
  QStringList problems;
  for (const auto& problem : report.problems) problems += Line(problem.file, problem.text);
  for (const auto& program : report.programs) {
    if (program.outcome == Outcome::Failed) problems += Line(program.file, program.problem);
  }
  return {parts.join(", ") + ".", problems.join('\n')};
}

}  // namespace qmrules::desktop
