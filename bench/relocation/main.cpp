#include <fmt/format.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdio>
#include <exception>
#include <optional>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "bars.h"
#include "codemodel/programs.h"
#include "relocation/history.h"
#include "relocation/mutation.h"
#include "relocation/scoring.h"
#include "shell/text.h"
#include "stopwatch.h"
#include "validation/segmentrelocation.h"

namespace {

using namespace qmrules::bench;  // NOLINT(google-build-using-namespace): the program is of this namespace alone
namespace validation = qmrules::validation;

struct Settings {
  std::string nist = "build/testdata/nist";
  std::string samples = "samples/policybilling/cobol";
  std::string folder = "build/bench-data/relocation";
  std::size_t programs = 60;
  unsigned seed = 1;
};

constexpr int kSegmentsOfAProgram = 8;
constexpr std::array<const char*, 4> kMethods{"ours", "ours, spaces collapsed", "git blame -M -C",
                                              "git blame -w -M -C"};
using Scores = std::array<Score, kMethods.size()>;

// One program before and after its edits.
struct EditedProgram {
  std::string name;
  Version first, second;
  std::vector<CutSegment> segments;
};

void MeasureOurs(const EditedProgram& program, bool collapseSpaces, Score& score) {
  std::vector<validation::RuleRecord> records;
  for (const auto& segment : program.segments) {
    validation::RuleRecord record{"", segment.fromRow, segment.toRow, "", false};
    for (auto row = segment.fromRow; row <= segment.toRow; ++row) {
      record.SegText += qmrules::shell::SafeText(program.first[static_cast<std::size_t>(row - 1)].text) + "\n";
    }
    records.push_back(std::move(record));
  }
  const std::string text = TextOf(program.second);
  const Stopwatch stopwatch;
  validation::SegmentRelocation relocation({.collapseSpaces = collapseSpaces, .processEvents = {}});
  relocation.RelocateSegments(text, records);
  score.seconds += stopwatch.Seconds();

  const Judge judge(program.first, program.second, collapseSpaces);
  for (std::size_t at = 0; at < records.size(); ++at) {
    const Place place =
        records[at].Valid ? Place(validation::RowRange{records[at].FromRow, records[at].ToRow}) : std::nullopt;
    judge.Count(program.segments[at], place, score);
  }
}

// Lines that differ only in runs of spaces are the same to a blame with -w.
void MeasureBlame(const History& history, const EditedProgram& program, bool ignoreSpaces, Score& score) {
  const auto blame = history.Blame(program.name, ignoreSpaces, score.seconds);
  const Judge judge(program.first, program.second, ignoreSpaces);
  for (const auto& segment : program.segments) {
    judge.Count(segment, PlaceByBlame(blame, program.first, program.second, segment), score);
  }
}

std::vector<EditedProgram> EditAll(const ProgramSet& set, Edit edit, const Settings& settings) {
  std::mt19937 random(settings.seed);
  std::vector<EditedProgram> programs;
  const std::size_t step = std::max<std::size_t>(1, set.programs.size() / settings.programs);
  for (std::size_t at = 0; at < set.programs.size(); at += step) {
    EditedProgram program{set.programs[at].name, FirstVersion(set.programs[at].text), {}, {}};
    program.segments = CutSegments(program.first, kSegmentsOfAProgram, random);
    program.second = Mutate(program.first, program.segments, edit, random);
    programs.push_back(std::move(program));
  }
  return programs;
}

Scores MeasureEdit(const ProgramSet& set, Edit edit, const Settings& settings) {
  const auto programs = EditAll(set, edit, settings);
  const History history(settings.folder);
  for (const auto& program : programs) history.Put(program.name, TextOf(program.first));
  history.Commit();
  for (const auto& program : programs) {
    history.Put(program.name, TextOf(program.second));
    history.Commit();
  }
  Scores scores;
  for (const auto& program : programs) {
    MeasureOurs(program, false, scores[0]);
    MeasureOurs(program, true, scores[1]);
    MeasureBlame(history, program, false, scores[2]);
    MeasureBlame(history, program, true, scores[3]);
  }
  return scores;
}

void PrintRow(std::string_view set, std::string_view edit, std::string_view method, const Score& score) {
  fmt::print("{:<10} {:<12} {:<23} {:>8} {:>7} {:>6} {:>7} {:>6} {:>9.4f} {:>7.4f} {:>9.1f}\n", set, edit, method,
             score.segments, score.present, score.moved, score.correct, score.absentMoved, score.Precision(),
             score.Recall(), score.seconds * 1000);
  std::fflush(stdout);
}

Scores MeasureSet(const ProgramSet& set, const Settings& settings) {
  Scores total;
  for (const Edit edit : kEdits) {
    const Scores scores = MeasureEdit(set, edit, settings);
    for (std::size_t method = 0; method < scores.size(); ++method) {
      PrintRow(set.name, NameOf(edit), kMethods[method], scores[method]);
      total[method] += scores[method];
    }
  }
  for (std::size_t method = 0; method < total.size(); ++method) {
    PrintRow(set.name, "all", kMethods[method], total[method]);
  }
  return total;
}

// As a shop keeps programs that its editor no longer numbers: without the columns of the numbers, so that many lines
// are the same.
ProgramSet WithoutNumbers(const ProgramSet& set) {
  constexpr std::size_t firstColumns = 6;
  constexpr std::size_t lastColumn = 72;
  ProgramSet result{"unnumbered", {}};
  for (const auto& program : set.programs) {
    Version version = FirstVersion(program.text);
    for (auto& line : version) {
      line.text.resize(std::min(line.text.size(), lastColumn));
      line.text.replace(0, std::min(line.text.size(), firstColumns), firstColumns, ' ');
      line.text.resize(line.text.find_last_not_of(' ') + 1);
    }
    result.programs.push_back({program.name, TextOf(version)});
  }
  return result;
}

// The segments that one method missed, of those that are there, for each that the other missed.
double MissedBeside(const Score& ours, const Score& other) {
  return static_cast<double>(ours.present - ours.correct) / std::max(1, other.present - other.correct);
}

void Run(const Settings& settings) {
  const auto nist = ReadPrograms("nist", settings.nist, ".CBL");
  fmt::print("{:<10} {:<12} {:<23} {:>8} {:>7} {:>6} {:>7} {:>6} {:>9} {:>7} {:>9}\n", "programs", "edit", "method",
             "segments", "present", "moved", "correct", "absent", "precision", "recall", "ms");
  Scores total;
  for (const auto& set : {ReadPrograms("samples", settings.samples, ".cbl"), nist, WithoutNumbers(nist)}) {
    const Scores scores = MeasureSet(set, settings);
    for (std::size_t method = 0; method < scores.size(); ++method) total[method] += scores[method];
  }
  Bars bars;
  bars.Add("absent_moved", total[0].absentMoved, 0);
  bars.Add("absent_moved_collapsed", total[1].absentMoved, 0);
  bars.Add("missed_beside_blame", MissedBeside(total[0], total[2]), 1);
  bars.Add("missed_beside_blame_w", MissedBeside(total[1], total[3]), 1);
  bars.Add("time_beside_blame", total[0].seconds / total[2].seconds, 1);
  bars.Add("time_beside_blame_w", total[1].seconds / total[3].seconds, 1);
  bars.Print();
}

}  // namespace

int main(int argc, char** argv) {
  CLI::App application("Measures how often segments are found again after edits.");
  Settings settings;
  application.add_option(
      "--nist", settings.nist,
      "The folder of the NIST programs (default: build/testdata/nist, where script/bootstrap puts them)");
  application.add_option("--samples", settings.samples, "The folder of the sample programs");
  application.add_option("--folder", settings.folder, "For the history that a run makes and removes");
  application.add_option("--programs", settings.programs, "About how many programs of each set (default: 60)")
      ->check(CLI::PositiveNumber);
  application.add_option("--seed", settings.seed, "Of the edits (default: 1)");
  CLI11_PARSE(application, argc, argv);
  try {
    Run(settings);
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "bench_relocation: %s\n", failure.what());
    return 1;
  }
  return 0;
}
