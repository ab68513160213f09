#include "workbench/codemodel/cobol/data/dataclauses.h"

#include <fmt/format.h>

#include <algorithm>
#include <limits>

#include "workbench/codemodel/cobol/data/dataentry.h"
#include "workbench/codemodel/cobol/data/usageclause.h"

namespace qmrules::workbench::codemodel::cobol {

namespace {

using enum Word;

void Fault(HeadContext& context, ItemDescription& item, std::string text) {
  if (!item.isFaulty) context.Report(std::move(text));
  item.isFaulty = true;
}

// A whole number or a constant that stands for one, at the cursor; -1 for none.
std::int64_t ReadCount(HeadContext& context) {
  TokenCursor& cursor = context.cursor;
  std::int64_t count = -1;
  if (cursor.At(TokenKind::Number)) {
    if (cursor.Current().Has(kFirstOnRow) && AtEntry(context)) return -1;
    count = 0;
    for (const char digit : cursor.Text()) {
      if (digit < '0' || digit > '9') return -1;
      count = std::min<std::int64_t>(count * 10 + (digit - '0'), std::numeric_limits<std::uint32_t>::max());
    }
  } else if (context.AtName()) {
    count = context.scope.Constant(cursor.Current().symbol);
    if (count < 0) return -1;
    context.ReadVariable(Role::Other, VarUsage::Out);
    return std::min<std::int64_t>(count, std::numeric_limits<std::uint32_t>::max());
  }
  if (count >= 0) cursor.Next();
  return count;
}

// PICTURE X(LENGTH): a constant's name in parentheses is given as its number.
std::string WithConstants(const HeadContext& context, std::string_view text) {
  std::string numbers;
  for (std::size_t place = 0; place < text.size();) {
    numbers += text[place];
    const std::size_t end = text[place] == '(' ? text.find(')', place) : std::string_view::npos;
    ++place;
    if (end == std::string_view::npos) continue;
    const std::uint32_t symbol = context.symbols.Find(text.substr(place, end - place));
    const std::int64_t count = symbol == SymbolTable::kNone ? -1 : context.scope.Constant(symbol);
    if (count < 0) continue;
    numbers += std::to_string(count);
    place = end;
  }
  return numbers;
}

void ParsePictureClause(HeadContext& context, ItemDescription& item) {
  TokenCursor& cursor = context.cursor;
  cursor.Next();
  cursor.Accept(Is);
  if (!cursor.At(TokenKind::Picture)) {
    Fault(context, item, "A picture is missing here.");
    return;
  }
  const std::string_view text = cursor.Text();
  item.hasPicture = true;
  item.pictureText = context.model.Text(text);
  const ProgramScope& scope = context.scope;
  item.picture = ParsePicture(text, scope.currencySymbol, scope.decimalComma);
  if (!item.picture) {
    item.picture = ParsePicture(WithConstants(context, text), scope.currencySymbol, scope.decimalComma);
  }
  if (!item.picture) Fault(context, item, fmt::format("{} is no picture.", text));
  cursor.Next();
  if (context.AtText("LOCALE")) cursor.Next();
}

void ParseRedefines(HeadContext& context, const ItemStack& items, ItemDescription& item) {
  TokenCursor& cursor = context.cursor;
  cursor.Next();
  if (!context.AtName()) {
    Fault(context, item, "The name of the redefined item is missing here.");
    return;
  }
  const std::uint32_t token = cursor.Index();
  const std::uint32_t name = cursor.Current().symbol;
  cursor.Next();
  while ((cursor.At(Of) || cursor.At(In)) && context.AtName(1)) {
    cursor.Next();
    cursor.Next();
  }
  const NodeId node = context.model.Leaf(Entity::Ref, token, cursor.Previous());
  NodeRecord& record = context.model.Node(node);
  record.role = Role::Redefined;
  record.name = context.NameText(token);
  NodeId redefined = context.scope.LastChild(items.Parent(), name);
  if (redefined == item.node) redefined = 0;
  if (redefined == 0 || context.model.Node(redefined).entity != Entity::Decl) {
    context.model.Report(Severity::Gap, token,
                         fmt::format("{} is no item of the same group before this one.", context.symbols.Text(name)));
    return;
  }
  item.redefines = redefined;
  record.declaration = redefined;
}

NodeId ReadRenamed(HeadContext& context, const ItemStack& items, ItemDescription& item) {
  if (!context.AtName()) {
    Fault(context, item, "The name of the renamed item is missing here.");
    return 0;
  }
  const HeadContext::QualifiedName name = context.ReadName(Role::Renamed);
  const NodeId group = items.Record();
  const Resolution renamed =
      group == 0 ? Resolution{} : context.scope.ResolveWithin(group + 1, item.node - 1, name.name, name.qualifiers);
  if (renamed.found != Resolution::Found::One) {
    context.model.Report(Severity::Gap, name.token,
                         fmt::format("{}{}", context.symbols.Text(name.name),
                                     renamed.found == Resolution::Found::None ? " is not declared in this record."
                                                                              : " is ambiguous; qualify it."));
    return 0;
  }
  context.TieName(name, renamed.node);
  return renamed.node;
}

void ParseRenames(HeadContext& context, const ItemStack& items, ItemDescription& item) {
  TokenCursor& cursor = context.cursor;
  cursor.Next();
  item.needsNoPicture = true;
  item.renames = ReadRenamed(context, items, item);
  if (cursor.Accept(Thru) || cursor.Accept(Through)) item.renamesThrough = ReadRenamed(context, items, item);
}

void ParseIndexNames(HeadContext& context, const ItemDescription& item) {
  TokenCursor& cursor = context.cursor;
  cursor.Accept(By);
  while (context.AtName() && !BeginsDataClause(cursor.WordAt())) {
    const std::uint32_t token = cursor.Index();
    const std::uint32_t symbol = cursor.Current().symbol;
    const NodeId node = context.model.Leaf(Entity::Decl, token, token);
    context.model.Node(node).name = context.NameText(token);
    DeclRecord& decl = context.model.AddDecl(node);
    decl.area = node;
    decl.size = 4;
    decl.usage = DataUsage::Index;
    decl.flags = kIndexName | kNumeric | kSigned;
    decl.section = static_cast<std::uint8_t>(item.section);
    context.scope.Declare(symbol, node);
    cursor.Next();
  }
}

void ParseTableKeys(HeadContext& context, ItemDescription& item) {
  TokenCursor& cursor = context.cursor;
  cursor.Next();
  context.PassOver({Key, Is, Are});
  const PendingName pending{.kind = PendingName::Kind::Within, .owner = item.node};
  while (context.AtName() && !BeginsDataClause(cursor.WordAt())) {
    context.ReadVariable(Role::Key, VarUsage::Out, pending);
  }
}

void ReadOccurrences(HeadContext& context, ItemDescription& item) {
  TokenCursor& cursor = context.cursor;
  std::int64_t most = ReadCount(context);
  if (most < 0) {
    Fault(context, item, "The number of occurrences is missing here.");
    return;
  }
  std::int64_t least = most;
  if (cursor.Accept(To)) {
    if (context.AcceptText("UNBOUNDED")) {
      item.flags |= kDynamic;
      most = std::max<std::int64_t>(least, 1);
    } else {
      most = ReadCount(context);
      if (most < 0) Fault(context, item, "The most number of occurrences is missing here.");
    }
  }
  item.occursLeast = static_cast<std::uint32_t>(std::max<std::int64_t>(least, 0));
  item.occurs = static_cast<std::uint32_t>(std::max<std::int64_t>(most, 1));
  if (item.occursLeast > item.occurs) item.occurs = item.occursLeast;
}

void ParseOccurs(HeadContext& context, ItemDescription& item) {
  TokenCursor& cursor = context.cursor;
  cursor.Next();
  item.flags |= kOccurs;
  const bool isDynamic = cursor.Accept(Dynamic);
  if (isDynamic) {
    item.flags |= kDynamic;
    if (context.AcceptText("CAPACITY")) {
      cursor.Accept(In);
      context.ReadVariable(Role::Other, VarUsage::Out);
    }
  } else {
    ReadOccurrences(context, item);
  }
  for (;;) {
    if (cursor.Accept(Times) || cursor.Accept(Initialized)) continue;
    if (cursor.Accept(Depending)) {
      cursor.Accept(On);
      const PendingName pending{
          .kind = PendingName::Kind::Data, .patch = PendingName::Patch::DependingOn, .owner = item.node};
      if (context.ReadVariable(Role::DependingOn, VarUsage::Out, pending) == 0) {
        Fault(context, item, "The name of the item that the number depends on is missing here.");
      }
    } else if (cursor.At(Ascending) || cursor.At(Descending)) {
      ParseTableKeys(context, item);
    } else if (cursor.Accept(Indexed)) {
      ParseIndexNames(context, item);
    } else {
      return;
    }
  }
}

bool ParseSign(HeadContext& context, ItemDescription& item) {
  TokenCursor& cursor = context.cursor;
  if (!cursor.At(Sign) && !cursor.At(Leading) && !cursor.At(Trailing)) return false;
  if (cursor.Accept(Sign)) cursor.Accept(Is);
  item.hasSign = true;
  item.flags &= static_cast<std::uint16_t>(~(kSignLeading | kSignSeparate));
  if (cursor.Accept(Leading)) {
    item.flags |= kSignLeading;
  } else {
    cursor.Accept(Trailing);
  }
  if (cursor.Accept(Separate)) {
    item.flags |= kSignSeparate;
    cursor.Accept(Character);
  }
  return true;
}

// Clauses that are a few words, most of them one.
bool ParseFlagClause(HeadContext& context, ItemDescription& item) {
  TokenCursor& cursor = context.cursor;
  switch (cursor.WordAt()) {
    case Sync:
    case Synchronized:
      item.flags |= kSynchronized;
      cursor.Next();
      context.PassOver({Left, Right});
      return true;
    case Just:
    case Justified:
      item.flags |= kJustified;
      cursor.Next();
      context.PassOver({Left, Right});
      return true;
    case Blank:
      cursor.Next();
      cursor.Accept(When);
      if (cursor.At(Zero) || cursor.At(Zeros) || cursor.At(Zeroes)) cursor.Next();
      item.flags |= kBlankWhenZero;
      return true;
    case External:
      item.flags |= kExternal;
      cursor.Next();
      if (cursor.Accept(As) || cursor.Accept(By)) cursor.Next();
      return true;
    case Global:
      item.flags |= kGlobal;
      cursor.Next();
      return true;
    case Any:
      item.flags |= kDynamic;
      cursor.Next();
      if (!cursor.Accept(Length)) cursor.Accept(Numeric);
      return true;
    case Dynamic:
      item.flags |= kDynamic;
      cursor.Next();
      cursor.Accept(Length);
      if (cursor.Accept(Limit)) {
        cursor.Accept(Is);
        ReadCount(context);
      }
      return true;
    case Is:
    case Based:
    case Volatile:
      cursor.Next();
      return true;
    default:
      return false;
  }
}

// TYPE, LIKE, SAME AS: described as another item is.
bool ParseModel(HeadContext& context, ItemDescription& item) {
  TokenCursor& cursor = context.cursor;
  if (context.AcceptText("TYPEDEF")) {
    context.AcceptText("STRONG");
    return true;
  }
  if (context.AcceptText("ALIGNED")) return true;
  const bool isModel =
      context.AtText("LIKE") || (cursor.At(Same) && cursor.WordAt(1) == As) || (cursor.At(Type) && context.AtName(1));
  if (!isModel) return false;
  cursor.Next();
  context.PassOver({As, To});
  item.needsNoPicture = true;
  item.flags |= kDynamic;
  context.ReadReference(Role::Other, PendingName::Kind::Data);
  return true;
}

bool ParseConstant(HeadContext& context, ItemDescription& item) {
  TokenCursor& cursor = context.cursor;
  if (!cursor.Accept(Constant)) return false;
  item.needsNoPicture = true;
  if (item.name != SymbolTable::kNone) {
    context.scope.DeclareSpecial(item.name, ProgramScope::SpecialKind::Constant, item.node);
  }
  context.PassOver({Is, Global});
  if (cursor.Accept(From)) {
    if (context.AtName()) cursor.Next();
    return true;
  }
  cursor.Accept(As);
  ParseValues(context, item);
  return true;
}

// A DATE FORMAT is passed over: it says nothing of the bytes.
bool ParseDateFormat(HeadContext& context) {
  TokenCursor& cursor = context.cursor;
  if (!cursor.At(Date) || !context.AtText("FORMAT", 1)) return false;
  cursor.Next();
  cursor.Next();
  cursor.Accept(Is);
  if (cursor.At(TokenKind::Word) || cursor.At(TokenKind::Picture)) cursor.Next();
  return true;
}

}  // namespace

bool BeginsDataClause(Word word) {
  switch (word) {
    case Pic:
    case Word::Picture:
    case Value:
    case Values:
    case Redefines:
    case Renames:
    case Occurs:
    case Usage:
    case Sign:
    case Sync:
    case Synchronized:
    case Just:
    case Justified:
    case Blank:
    case External:
    case Global:
    case GroupUsage:
    case Indexed:
    case Depending:
    case Ascending:
    case Descending:
      return true;
    default:
      return IsUsageWord(word);
  }
}

bool ParseDataClause(HeadContext& context, ItemStack& items, ItemDescription& item) {
  TokenCursor& cursor = context.cursor;
  if (!cursor.At(TokenKind::Word)) return false;
  switch (cursor.WordAt()) {
    case Pic:
    case Word::Picture:
      ParsePictureClause(context, item);
      return true;
    case Value:
    case Values:
      cursor.Next();
      ParseValues(context, item);
      return true;
    case Redefines:
      ParseRedefines(context, items, item);
      return true;
    case Renames:
      ParseRenames(context, items, item);
      return true;
    case Occurs:
      ParseOccurs(context, item);
      return true;
    default:
      break;
  }
  return ParseUsage(context, item) || ParseSign(context, item) || ParseFlagClause(context, item) ||
         ParseConstant(context, item) || ParseModel(context, item) || ParseDateFormat(context);
}

}  // namespace qmrules::workbench::codemodel::cobol
