#include "codemodel/generatedprogram.h"

#include <fmt/format.h>

#include <algorithm>
#include <random>
#include <string_view>

namespace qmrules::bench {

namespace {

constexpr std::uint32_t kLinesPerGroup = 11;
constexpr std::uint32_t kLinesPerParagraph = 32;
// A paragraph works on the areas around its own, this many to each side; one reference in so many goes anywhere.
constexpr std::uint32_t kNeighbours = 20;
constexpr std::uint32_t kFarOneIn = 8;

class Generator {
 public:
  Generator(std::uint32_t lines, std::uint32_t seed, Performing performing)
      : random_(seed),
        performing_(performing),
        groups_(std::max(lines / 5 / kLinesPerGroup, 2U)),
        paragraphs_(std::max(lines * 4 / 5 / (kLinesPerParagraph + 4), 2U)) {
    text_.reserve(std::size_t{lines} * 60);
  }

  std::string Program() {
    Head();
    for (std::uint32_t group = 1; group <= groups_; ++group) Group(group);
    Line(7, "LINKAGE SECTION.");
    Line(7, "01  LK-PARM.");
    Line(11, "05  LK-CODE              PIC X(02).");
    Line(11, "05  LK-AMOUNT            PIC S9(09)V99 COMP-3.");
    Line(7, "PROCEDURE DIVISION USING LK-PARM.");
    Line(7, "0000-MAIN.");
    Line(11, "OPEN INPUT IN-FILE OUTPUT OUT-FILE.");
    for (std::uint32_t paragraph = 1; paragraph <= paragraphs_; ++paragraph) {
      Line(11, fmt::format("PERFORM {}.", ParagraphName(paragraph)));
    }
    Line(11, "CLOSE IN-FILE OUT-FILE.");
    Line(11, "GOBACK.");
    for (std::uint32_t paragraph = 1; paragraph <= paragraphs_; ++paragraph) Paragraph(paragraph);
    return std::move(text_);
  }

 private:
  void Line(std::uint32_t column, std::string_view text) {
    text_.append(column, ' ');
    text_ += text;
    text_ += '\n';
  }
  void Comment(std::string_view text) {
    text_ += "      * ";
    text_ += text;
    text_ += '\n';
  }
  std::uint32_t Random(std::uint32_t from, std::uint32_t to) {
    return from + static_cast<std::uint32_t>(random_() % (to - from + 1));
  }

  void Head() {
    for (const char* line : {"IDENTIFICATION DIVISION.",
                             "PROGRAM-ID. GENPROG.",
                             "ENVIRONMENT DIVISION.",
                             "INPUT-OUTPUT SECTION.",
                             "FILE-CONTROL.",
                             "    SELECT IN-FILE ASSIGN TO INFILE",
                             "        FILE STATUS IS WS-IN-STATUS.",
                             "    SELECT OUT-FILE ASSIGN TO OUTFILE.",
                             "DATA DIVISION.",
                             "FILE SECTION.",
                             "FD  IN-FILE.",
                             "01  IN-REC.",
                             "    05  IN-KEY               PIC X(10).",
                             "    05  IN-AMOUNT            PIC S9(07)V99.",
                             "    05  IN-REST              PIC X(61).",
                             "FD  OUT-FILE.",
                             "01  OUT-REC              PIC X(80).",
                             "WORKING-STORAGE SECTION.",
                             "77  WS-IN-STATUS         PIC X(02) VALUE SPACES.",
                             "77  WS-EOF               PIC X(01) VALUE 'N'.",
                             "    88  AT-THE-END           VALUE 'Y'.",
                             "77  WS-INDEX             PIC S9(04) COMP VALUE ZERO.",
                             "77  WS-LIMIT             PIC S9(04) COMP VALUE 10."}) {
      Line(7, line);
    }
  }

  std::string Item(std::string_view stem, std::uint32_t group) const { return fmt::format("WS-{}-{:05}", stem, group); }
  std::uint32_t RandomGroup() {
    if (Random(1, kFarOneIn) == 1) return Random(1, groups_);
    return Random(home_ > kNeighbours ? home_ - kNeighbours : 1, std::min(home_ + kNeighbours, groups_));
  }
  std::string RandomItem(std::string_view stem) { return Item(stem, RandomGroup()); }
  // The one that paragraph `from` performs.
  std::uint32_t PerformedBy(std::uint32_t from) {
    if (performing_ == Performing::AnyParagraph) return Random(1, paragraphs_);
    return std::min(from + Random(1, kNeighbours), paragraphs_);
  }
  static std::string ParagraphName(std::uint32_t paragraph) { return fmt::format("P{:05}-STEP", paragraph); }

  // kLinesPerGroup lines.
  void Group(std::uint32_t group) {
    Comment(fmt::format("Values of contract area {}", group));
    Line(7, fmt::format("01  WS-AREA-{:05}.", group));
    Line(11, fmt::format("05  {:<20} PIC X(08) VALUE SPACES.", Item("CODE", group)));
    Line(11, fmt::format("05  {:<20} PIC X(01) VALUE 'A'.", Item("TYPE", group)));
    Line(15, fmt::format("88  {:<20} VALUE 'A' 'B'.", Item("OPEN", group)));
    Line(11, fmt::format("05  {:<20} PIC S9(09)V99 COMP-3 VALUE ZERO.", Item("AMT", group)));
    Line(11, fmt::format("05  {:<20} PIC 9(05) VALUE ZERO.", Item("CNT", group)));
    Line(11, fmt::format("05  {:<20} OCCURS 10 TIMES.", Item("ROW", group)));
    Line(15, fmt::format("10  {:<20} PIC 9(03)V9(04).", Item("FAC", group)));
    Line(15, fmt::format("10  {:<20} PIC X(20).", Item("TXT", group)));
    Line(7, fmt::format("01  WS-VIEW-{:05} REDEFINES WS-AREA-{:05}.", group, group));
    Line(11, fmt::format("05  {:<20} PIC X(04).", Item("PRE", group)));
  }

  void Paragraph(std::uint32_t paragraph) {
    paragraph_ = paragraph;
    home_ = std::max(static_cast<std::uint32_t>(std::uint64_t{paragraph} * groups_ / paragraphs_), 1U);
    Comment("*------------------------------------------------------------*");
    Comment(fmt::format("Step {}: derives the amounts of one area.", paragraph));
    Line(7, ParagraphName(paragraph) + ".");
    std::uint32_t lines = 3;
    while (lines < kLinesPerParagraph) lines += Sentence();
  }

  // The number of lines written.
  std::uint32_t Sentence() {
    switch (Random(0, 9)) {
      case 0:
        return Decision();
      case 1:
        return Choice();
      case 2:
        return Loop();
      case 3:
        return Reading();
      case 4:
        return Texts();
      default:
        return Assignments();
    }
  }

  std::uint32_t Assignments() {
    Line(11, fmt::format("MOVE {} TO {}", RandomItem("CNT"), RandomItem("AMT")));
    Line(11, fmt::format("MOVE '{:02}' TO {}", Random(0, 99), RandomItem("CODE")));
    Line(11, fmt::format("ADD {} TO {} ROUNDED", RandomItem("CNT"), RandomItem("AMT")));
    Line(11, fmt::format("COMPUTE {} = {} * 1.{}", RandomItem("AMT"), RandomItem("AMT"), Random(10, 99)));
    Line(15, fmt::format("+ {} (WS-INDEX)", RandomItem("FAC")));
    const std::uint32_t area = RandomGroup();
    Line(11, fmt::format("MOVE {} OF WS-AREA-{:05} TO OUT-REC (1:8).", Item("CODE", area), area));
    return 6;
  }

  std::uint32_t Decision() {
    Comment("Open areas above the limit take the factor of the row.");
    Line(11, fmt::format("IF {} AND {} > {}", RandomItem("OPEN"), RandomItem("AMT"), Random(1, 9999)));
    Line(15, fmt::format("IF {} = 'X{}'", RandomItem("CODE"), Random(1, 9)));
    Line(18, fmt::format("OR {} (WS-INDEX) NOT < 1.5", RandomItem("FAC")));
    Line(19, fmt::format("SUBTRACT {} FROM {}", RandomItem("CNT"), RandomItem("AMT")));
    Line(23, fmt::format("GIVING {}", RandomItem("AMT")));
    Line(15, "ELSE");
    Line(19, fmt::format("MOVE ZERO TO {} {}", RandomItem("CNT"), RandomItem("AMT")));
    Line(15, "END-IF");
    const std::uint32_t performed = PerformedBy(paragraph_);
    Line(15, performed == paragraph_ ? "CONTINUE" : fmt::format("PERFORM {}", ParagraphName(performed)));
    Line(11, "ELSE");
    Line(15, fmt::format("MOVE {} TO LK-AMOUNT", RandomItem("AMT")));
    Line(11, "END-IF.");
    return 13;
  }

  std::uint32_t Choice() {
    Line(11, fmt::format("EVALUATE {}", RandomItem("TYPE")));
    Line(15, "WHEN 'A'");
    Line(15, "WHEN 'B'");
    Line(19, fmt::format("SET {} TO TRUE", RandomItem("OPEN")));
    Line(15, "WHEN 'C' THRU 'F'");
    Line(19, fmt::format("MULTIPLY 2 BY {}", RandomItem("AMT")));
    Line(15, "WHEN OTHER");
    Line(19, "MOVE 'E1' TO LK-CODE");
    Line(11, "END-EVALUATE.");
    return 9;
  }

  std::uint32_t Loop() {
    Line(11, "PERFORM VARYING WS-INDEX FROM 1 BY 1");
    Line(15, "UNTIL WS-INDEX > WS-LIMIT");
    const std::uint32_t area = RandomGroup();
    Line(15, fmt::format("MOVE {} (WS-INDEX) TO {}", Item("TXT", area), RandomItem("CODE")));
    Line(15, fmt::format("ADD {} (WS-INDEX) TO {}", Item("FAC", area), RandomItem("AMT")));
    Line(11, "END-PERFORM.");
    return 5;
  }

  std::uint32_t Reading() {
    Line(11, "READ IN-FILE");
    Line(15, "AT END MOVE 'Y' TO WS-EOF");
    Line(15, fmt::format("NOT AT END ADD 1 TO {}", RandomItem("CNT")));
    Line(11, "END-READ.");
    Line(11, fmt::format("CALL 'SUBPGM{:02}' USING IN-REC WS-AREA-{:05}.", Random(1, 20), Random(1, groups_)));
    Line(11, "WRITE OUT-REC FROM IN-REC.");
    return 6;
  }

  std::uint32_t Texts() {
    Line(11, fmt::format("STRING {} DELIMITED BY SPACE", RandomItem("CODE")));
    Line(15, "'/' IN-KEY DELIMITED BY SIZE");
    Line(15, fmt::format("INTO {} (WS-INDEX)", RandomItem("TXT")));
    Line(11, "END-STRING.");
    Line(11, fmt::format("INSPECT {} REPLACING ALL ' ' BY '0'.", RandomItem("CODE")));
    return 5;
  }

  std::mt19937 random_;
  Performing performing_;
  std::uint32_t groups_;
  std::uint32_t home_ = 1;  // the area of the paragraph that is being written
  std::uint32_t paragraphs_;
  std::uint32_t paragraph_ = 0;  // that is being written
  std::string text_;
};

}  // namespace

std::string GenerateProgram(std::uint32_t lines, std::uint32_t seed, Performing performing) {
  return Generator(lines, seed, performing).Program();
}

}  // namespace qmrules::bench
