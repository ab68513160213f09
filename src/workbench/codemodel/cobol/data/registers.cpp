#include "workbench/codemodel/cobol/data/registers.h"

#include <algorithm>
#include <string_view>
#include <tuple>

#include "workbench/codemodel/cobol/data/layout.h"
#include "workbench/codemodel/cobol/reading/words.h"

namespace qmrules::workbench::codemodel::cobol {

namespace {

enum class Supplier : std::uint8_t { Language, Cics, Sql };

struct Register {
  std::uint8_t level;
  std::string_view name;     // "" for a filler
  std::string_view picture;  // "" for a group
  DataUsage usage = DataUsage::Display;
  std::uint16_t flags = 0;
  std::uint32_t occurs = 1;
  Supplier supplier = Supplier::Language;
};

constexpr auto kBinary = DataUsage::Binary;
constexpr auto kNative = DataUsage::NativeBinary;
constexpr auto kPacked = DataUsage::Packed;
constexpr auto kShown = DataUsage::Display;
constexpr std::uint16_t kOwnSign = kSignSeparate | kSignLeading;

constexpr Register OfCics(std::uint8_t level, std::string_view name, std::string_view picture,
                          DataUsage usage = kShown) {
  return {level, name, picture, usage, 0, 1, Supplier::Cics};
}
constexpr Register OfSql(std::uint8_t level, std::string_view name, std::string_view picture, DataUsage usage = kShown,
                         std::uint32_t occurs = 1) {
  return {level, name, picture, usage, 0, occurs, Supplier::Sql};
}

// Groups stand before their parts, as in a program.
constexpr Register kRegisters[] = {
    {1, "RETURN-CODE", "S9(4)", kBinary},
    {1, "TALLY", "9(5)", kBinary},
    {1, "SORT-RETURN", "S9(4)", kBinary},
    {1, "SORT-CONTROL", "X(8)"},
    {1, "SORT-CORE-SIZE", "S9(8)", kBinary},
    {1, "SORT-FILE-SIZE", "S9(8)", kBinary},
    {1, "SORT-MESSAGE", "X(8)"},
    {1, "SORT-MODE-SIZE", "S9(5)", kBinary},
    {1, "WHEN-COMPILED", "X(16)"},
    {1, "LINAGE-COUNTER", "9(9)", kBinary},
    {1, "LINE-COUNTER", "9(9)", kBinary},
    {1, "PAGE-COUNTER", "9(9)", kBinary},
    {1, "SHIFT-IN", "X"},
    {1, "SHIFT-OUT", "X"},
    {1, "XML-CODE", "S9(9)", kBinary},
    {1, "XML-INFORMATION", "S9(9)", kBinary},
    {1, "XML-EVENT", "X(30)"},
    {1, "XML-TEXT", "X", kShown, kDynamic},
    {1, "XML-NTEXT", "N", DataUsage::National, kDynamic},
    {1, "XML-NAMESPACE", "X", kShown, kDynamic},
    {1, "XML-NNAMESPACE", "N", DataUsage::National, kDynamic},
    {1, "XML-NAMESPACE-PREFIX", "X", kShown, kDynamic},
    {1, "XML-NNAMESPACE-PREFIX", "N", DataUsage::National, kDynamic},
    {1, "JSON-CODE", "S9(9)", kBinary},
    {1, "JSON-STATUS", "S9(9)", kBinary},
    {1, "NUMBER-OF-CALL-PARAMETERS", "S9(9)", kNative},
    {1, "COB-CRT-STATUS", "9(4)"},
    {1, "DEBUG-ITEM", ""},
    {2, "DEBUG-LINE", "X(6)"},
    {2, "", "X"},
    {2, "DEBUG-NAME", "X(30)"},
    {2, "", "X"},
    {2, "DEBUG-SUB-1", "S9(4)", kShown, kOwnSign},
    {2, "", "X"},
    {2, "DEBUG-SUB-2", "S9(4)", kShown, kOwnSign},
    {2, "", "X"},
    {2, "DEBUG-SUB-3", "S9(4)", kShown, kOwnSign},
    {2, "", "X"},
    {2, "DEBUG-CONTENTS", "X(99)"},
    OfCics(1, "DFHCOMMAREA", "X"),
    OfCics(1, "DFHEIBLK", ""),
    OfCics(2, "EIBTIME", "S9(7)", kPacked),
    OfCics(2, "EIBDATE", "S9(7)", kPacked),
    OfCics(2, "EIBTRNID", "X(4)"),
    OfCics(2, "EIBTASKN", "S9(7)", kPacked),
    OfCics(2, "EIBTRMID", "X(4)"),
    OfCics(2, "", "S9(4)", kBinary),
    OfCics(2, "EIBCPOSN", "S9(4)", kBinary),
    OfCics(2, "EIBCALEN", "S9(4)", kBinary),
    OfCics(2, "EIBAID", "X"),
    OfCics(2, "EIBFN", "X(2)"),
    OfCics(2, "EIBRCODE", "X(6)"),
    OfCics(2, "EIBDS", "X(8)"),
    OfCics(2, "EIBREQID", "X(8)"),
    OfCics(2, "EIBRSRCE", "X(8)"),
    OfCics(2, "EIBSYNC", "X"),
    OfCics(2, "EIBFREE", "X"),
    OfCics(2, "EIBRECV", "X"),
    OfCics(2, "EIBSEND", "X"),
    OfCics(2, "EIBATT", "X"),
    OfCics(2, "EIBEOC", "X"),
    OfCics(2, "EIBFMH", "X"),
    OfCics(2, "EIBCOMPL", "X"),
    OfCics(2, "EIBSIG", "X"),
    OfCics(2, "EIBCONF", "X"),
    OfCics(2, "EIBERR", "X"),
    OfCics(2, "EIBERRCD", "X(4)"),
    OfCics(2, "EIBSYNRB", "X"),
    OfCics(2, "EIBNODAT", "X"),
    OfCics(2, "EIBRESP", "S9(8)", kBinary),
    OfCics(2, "EIBRESP2", "S9(8)", kBinary),
    OfCics(2, "EIBRLDBK", "X"),
    OfSql(1, "SQLCA", ""),
    OfSql(2, "SQLCAID", "X(8)"),
    OfSql(2, "SQLCABC", "S9(9)", kNative),
    OfSql(2, "SQLCODE", "S9(9)", kNative),
    OfSql(2, "SQLERRM", ""),
    OfSql(3, "SQLERRML", "S9(4)", kNative),
    OfSql(3, "SQLERRMC", "X(70)"),
    OfSql(2, "SQLERRP", "X(8)"),
    OfSql(2, "SQLERRD", "S9(9)", kNative, 6),
    OfSql(2, "SQLWARN", ""),
    OfSql(3, "SQLWARN0", "X"),
    OfSql(3, "SQLWARN1", "X"),
    OfSql(3, "SQLWARN2", "X"),
    OfSql(3, "SQLWARN3", "X"),
    OfSql(3, "SQLWARN4", "X"),
    OfSql(3, "SQLWARN5", "X"),
    OfSql(3, "SQLWARN6", "X"),
    OfSql(3, "SQLWARN7", "X"),
    OfSql(2, "SQLEXT", ""),
    OfSql(3, "SQLWARN8", "X"),
    OfSql(3, "SQLWARN9", "X"),
    OfSql(3, "SQLWARNA", "X"),
    OfSql(3, "SQLSTATE", "X(5)"),
};
constexpr std::uint32_t kCount = static_cast<std::uint32_t>(std::size(kRegisters));

struct Place {
  std::uint64_t offset = 0, size = 0;
};

std::uint32_t EndOfGroup(std::uint32_t group) {
  std::uint32_t end = group + 1;
  while (end < kCount && kRegisters[end].level > kRegisters[group].level) ++end;
  return end;
}

// The places of a register at level 1 and of all below it.
std::vector<Place> LayOut(std::uint32_t first) {
  const std::uint32_t end = EndOfGroup(first);
  std::vector<Place> places(end - first);
  std::uint64_t offset = 0;
  for (std::uint32_t number = first; number < end; ++number) {
    const Register& item = kRegisters[number];
    Place& place = places[number - first];
    place.offset = offset;
    place.size = ElementarySize(item.usage, ParsePicture(item.picture), item.flags);
    offset += place.size * item.occurs;
  }
  for (std::uint32_t number = first; number < end; ++number) {
    if (!kRegisters[number].picture.empty()) continue;
    const std::uint32_t behind = EndOfGroup(number);
    places[number - first].size =
        (behind == end ? offset : places[behind - first].offset) - places[number - first].offset;
  }
  return places;
}

bool HasExec(const ExpandedText& text, Word environment) {
  for (std::size_t index = 0; index + 1 < text.tokens.size(); ++index) {
    const Token& token = text.tokens[index];
    if (token.kind != TokenKind::Word) continue;
    const Word word = WordOf(token.symbol);
    if (word != Word::Exec && word != Word::Execute) continue;
    const Token& next = text.tokens[index + 1];
    if (next.kind == TokenKind::Word && WordOf(next.symbol) == environment) return true;
  }
  return false;
}

}  // namespace

std::vector<std::pair<std::uint32_t, std::uint32_t>> RegistersOf(const SymbolTable& symbols, const ExpandedText& text) {
  std::vector<std::pair<std::uint32_t, std::uint32_t>> found;
  bool ofCics = false, ofSql = false;
  for (std::uint32_t number = 0; number < kCount; ++number) {
    const Register& item = kRegisters[number];
    const std::uint32_t symbol = item.name.empty() ? SymbolTable::kNone : symbols.Find(item.name);
    if (symbol == SymbolTable::kNone) continue;
    found.emplace_back(symbol, number);
    ofCics = ofCics || item.supplier == Supplier::Cics;
    ofSql = ofSql || item.supplier == Supplier::Sql;
  }
  ofCics = ofCics && HasExec(text, Word::Cics);
  ofSql = ofSql && HasExec(text, Word::Sql);
  std::erase_if(found, [&](const auto& entry) {
    const Supplier supplier = kRegisters[entry.second].supplier;
    return (supplier == Supplier::Cics && !ofCics) || (supplier == Supplier::Sql && !ofSql);
  });
  std::sort(found.begin(), found.end());
  return found;
}

void RegisterMaker::Make(std::vector<Wanted> wanted) {
  std::sort(wanted.begin(), wanted.end(), [](const Wanted& left, const Wanted& right) {
    return std::tie(left.number, left.qualifier, left.var) < std::tie(right.number, right.qualifier, right.var);
  });
  const NodeId node = model_.Open(Entity::Registers, token_);
  model_.Node(node).flags |= kImplicit;
  std::size_t from = 0;
  while (from < wanted.size()) {
    std::uint32_t first = wanted[from].number;
    while (kRegisters[first].level != 1) --first;
    const std::uint32_t end = EndOfGroup(first);
    std::size_t to = from + 1;
    while (to < wanted.size() && wanted[to].number < end &&
           (end - first > 1 || wanted[to].qualifier == wanted[from].qualifier)) {
      ++to;
    }
    MakeGroup(first, end, std::span(wanted).subspan(from, to - from));
    from = to;
  }
  model_.Close(node, token_);
}

// A register at level 1 with those of its parts that are wanted, and the groups around them.
void RegisterMaker::MakeGroup(std::uint32_t first, std::uint32_t end, std::span<const Wanted> wanted) {
  const std::vector<Place> places = LayOut(first);
  std::vector<NodeId> open;
  NodeId area = 0;
  for (std::uint32_t number = first; number < end; ++number) {
    const Register& item = kRegisters[number];
    const std::uint32_t behind = EndOfGroup(number);
    const auto isBelow = [&](const Wanted& use) { return use.number >= number && use.number < behind; };
    if (std::none_of(wanted.begin(), wanted.end(), isBelow)) continue;
    while (open.size() >= item.level) {
      model_.Close(open.back(), token_);
      open.pop_back();
    }
    const NodeId node = model_.Open(Entity::Decl, token_);
    if (area == 0) area = node;
    open.push_back(node);
    NodeRecord& record = model_.Node(node);
    record.flags |= kImplicit;
    record.name = model_.Text(item.name);
    DeclRecord& decl = model_.AddDecl(node);
    decl.area = area;
    decl.level = item.level;
    decl.offset = places[number - first].offset;
    decl.size = places[number - first].size;
    decl.occurs = decl.occursLeast = item.occurs;
    decl.flags = static_cast<std::uint16_t>(item.flags | kRegister | (item.occurs > 1 ? kOccurs : 0));
    decl.section = static_cast<std::uint8_t>(DataSectionKind::WorkingStorage);
    decl.picture = model_.Text(item.picture);
    if (const auto picture = ParsePicture(item.picture)) {
      decl.usage = item.usage;
      DescribePicture(decl, *picture);
    }
    for (const Wanted& use : wanted) {
      if (use.number != number) continue;
      NodeRecord& var = model_.Node(use.var);
      var.declaration = node;
      var.name = model_.Node(node).name;
    }
  }
  for (; !open.empty(); open.pop_back()) model_.Close(open.back(), token_);
}

}  // namespace qmrules::workbench::codemodel::cobol
