// Damages programs at one token at a time and looks at what else is lost from their models.

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <tuple>

#include "workbench/codemodel/cobol/cobolfrontend.h"
#include "workbench/codemodel/cobol/procedure/verbs.h"
#include "workbench/codemodel/cobol/programs/programfiles.h"
#include "workbench/codemodel/cobol/reading/lexer.h"
#include "workbench/codemodel/cobol/reading/words.h"

namespace qmrules::test {
namespace {

namespace codemodel = workbench::codemodel;
namespace cobol = codemodel::cobol;
using codemodel::Entity;
using codemodel::TokenKind;

// A statement or a paragraph by its place in the program's own file.
struct Place {
  std::uint32_t begin = 0;
  std::uint8_t verb = 0;  // 0 for a paragraph
  std::uint32_t end = 0;
  auto Key() const { return std::tuple(begin, verb); }
};

struct Outline {
  std::vector<Place> statements, paragraphs;  // by place
};

Outline OutlineOf(const std::vector<codemodel::FrontEnd::Program>& programs) {
  Outline outline;
  for (const auto& program : programs) {
    for (const auto& node : program.model.nodes) {
      if (node.file != 0 || (node.flags & codemodel::kImplicit) != 0) continue;
      const bool isParagraph = node.entity == Entity::Par || node.entity == Entity::Section;
      if (isParagraph) outline.paragraphs.push_back({node.position, 0, node.endPosition});
      if (node.verb == 0 || node.verb == static_cast<std::uint8_t>(cobol::Verb::Unknown) ||
          node.verb == static_cast<std::uint8_t>(cobol::Verb::Phrase)) {
        continue;
      }
      outline.statements.push_back({node.position, node.verb, node.endPosition});
    }
  }
  std::ranges::sort(outline.statements, {}, &Place::Key);
  std::ranges::sort(outline.paragraphs, {}, &Place::Key);
  return outline;
}

std::vector<Place> Lost(const std::vector<Place>& before, const std::vector<Place>& after) {
  std::vector<Place> lost;
  std::ranges::set_difference(before, after, std::back_inserter(lost), {}, &Place::Key, &Place::Key);
  return lost;
}

// The innermost statement around the place; nullptr for none.
const Place* Around(const std::vector<Place>& statements, std::uint32_t offset) {
  const Place* around = nullptr;
  for (const auto& statement : statements) {
    if (statement.begin <= offset && offset < statement.end) around = &statement;
  }
  return around;
}

enum class Damage { Delete, Garble };

std::string Damaged(std::string text, const codemodel::Token& token, Damage damage) {
  for (std::uint32_t offset = token.offset; offset < token.offset + token.length; ++offset) {
    char& byte = text[offset];
    if (byte != '\n' && byte != '\r') byte = damage == Damage::Delete ? ' ' : 'Q';
  }
  return text;
}

struct Tally {
  std::size_t mutations = 0;
  std::size_t statementsLost = 0;
  std::vector<std::string> paragraphsLost;
  std::vector<std::pair<std::size_t, std::string>> worst;  // statements lost, where
};

class Mutation : public testing::Test {
 protected:
  // Damages every step-th token of each program, the first one being chosen by its place in the list.
  void Mutate(ProgramFiles files, std::size_t step) {
    if (std::getenv("QMRULES_EVERY_TOKEN")) step = 1;  // NOLINT(concurrency-mt-unsafe): one thread
    codemodel::SymbolTable symbols(cobol::CobolWordList());
    std::size_t next = 0;
    for (const auto& file : files.programs) {
      cobol::CobolFrontEnd frontEnd(files.sources, {});
      const auto source = files.sources.Read(file).file;
      const std::string text(source->Text());
      const auto tokens = cobol::Lex(source, {}, symbols).tokens;
      const Outline before = OutlineOf(frontEnd.Translate(file, [] { return false; }));
      for (; next + 1 < tokens.size(); next += step) {
        for (const Damage damage : {Damage::Delete, Damage::Garble}) {
          files.sources.Put(file, Damaged(text, tokens[next], damage));
          const Outline after = OutlineOf(frontEnd.Translate(file, [] { return false; }));
          Compare(file, *source, tokens, next, damage, before, after);
        }
      }
      next -= tokens.size() - 1;
      files.sources.Put(file, text);
    }
  }

  void Compare(const std::string& file, const codemodel::SourceFile& source,
               const std::vector<codemodel::Token>& tokens, std::size_t index, Damage damage, const Outline& before,
               const Outline& after) {
    const auto& token = tokens[index];
    const auto where =
        fmt::format("{}:{}:{} '{}' {}", file, token.row, source.Column(token.offset),
                    source.Text().substr(token.offset, token.length), damage == Damage::Delete ? "deleted" : "garbled");
    ++tally_.mutations;
    const Place* around = Around(before.statements, token.offset);
    auto lost = Lost(before.statements, after.statements);
    std::erase_if(lost, [&](const Place& place) { return around && place.Key() == around->Key(); });
    tally_.statementsLost += lost.size();
    if (!lost.empty()) tally_.worst.emplace_back(lost.size(), where);
    for (const auto& paragraph : Lost(before.paragraphs, after.paragraphs)) {
      if (!IsOfHeader(tokens, index, paragraph.begin)) tally_.paragraphsLost.push_back(where);
    }
  }

  // A header is the name, the word SECTION with its number, and the full stop.
  static bool IsOfHeader(const std::vector<codemodel::Token>& tokens, std::size_t index, std::uint32_t begin) {
    if (tokens[index].offset < begin) return false;
    for (std::size_t before = index; before + 4 > index; --before) {
      if (tokens[before].offset == begin) return true;
      if (before == 0 || (before != index && tokens[before].kind == TokenKind::Period)) return false;
    }
    return false;
  }

  void Judge() {
    std::ranges::sort(tally_.worst, std::greater());
    std::string worst;
    for (std::size_t i = 0; i < std::min<std::size_t>(tally_.worst.size(), 40); ++i) {
      worst += fmt::format("{} statements: {}\n", tally_.worst[i].first, tally_.worst[i].second);
    }
    RecordProperty("mutations", static_cast<int>(tally_.mutations));
    RecordProperty("statementsLost", static_cast<int>(tally_.statementsLost));
    EXPECT_GE(tally_.mutations, 1000U);
    EXPECT_LE(static_cast<double>(tally_.statementsLost) / static_cast<double>(tally_.mutations), 0.1)
        << tally_.mutations << " mutations, " << tally_.statementsLost << " statements lost\n"
        << worst;
    tally_.paragraphsLost.resize(std::min<std::size_t>(tally_.paragraphsLost.size(), 40));
    EXPECT_TRUE(tally_.paragraphsLost.empty()) << fmt::format("{}", fmt::join(tally_.paragraphsLost, "\n"));
  }

  Tally tally_;
};

TEST_F(Mutation, OfTheSamplesCostsTheDamagedStatementOnly) {
  Mutate(SampleFiles(), 1);
  Judge();
}

TEST_F(Mutation, OfTheNistProgramsCostsTheDamagedStatementOnly) {
  Mutate(NistFiles(), 199);
  Judge();
}

}  // namespace
}  // namespace qmrules::test
