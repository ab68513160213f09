#include "workbench/codemodel/cobol/data/dataclauses.h"
#include "workbench/codemodel/cobol/data/dataentry.h"
#include "workbench/codemodel/cobol/data/divisions.h"
#include "workbench/codemodel/cobol/data/headers.h"

namespace qmrules::workbench::codemodel::cobol {

namespace {

using enum Word;

bool BeginsDescriptionClause(Word word) {
  switch (word) {
    case Control:
    case Controls:
    case Page:
    case Heading:
    case First:
    case Last:
    case Footing:
    case Code:
    case Global:
    case Is:
      return true;
    default:
      return false;
  }
}

// A whole number with the words around it.
void PassNumber(HeadContext& context) {
  context.PassOver({Is, Are, Plus, Number, Numbers, Line, Lines, Columns, On});
  if (context.cursor.At(TokenKind::Plus)) context.cursor.Next();
  if (context.cursor.At(TokenKind::Number)) context.cursor.Next();
}

bool ParseReportDescriptionClause(HeadContext& context, NodeId report) {
  TokenCursor& cursor = context.cursor;
  switch (cursor.WordAt()) {
    case Control:
    case Controls:
      cursor.Next();
      context.PassOver({Is, Are, Final});
      while (context.AtName() && !BeginsDescriptionClause(cursor.WordAt()))
        context.ReadVariable(Role::Key, VarUsage::Out);
      return true;
    case Page:
      cursor.Next();
      context.PassOver({Limit, Limits});
      PassNumber(context);
      PassNumber(context);
      context.PassOver({Lines, Line, Columns});
      return true;
    case Heading:
    case Footing:
      cursor.Next();
      PassNumber(context);
      return true;
    case First:
    case Last:
      cursor.Next();
      context.PassOver({Detail, De, Control, Heading, Footing, Ch, Cf});
      PassNumber(context);
      return true;
    case Code:
      cursor.Next();
      context.PassOver({Is, With});
      context.ReadOperand(Role::Other);
      return true;
    case Global:
      context.model.File(report).flags |= kGlobal;
      cursor.Next();
      return true;
    case Is:
      cursor.Next();
      return true;
    default:
      return false;
  }
}

// TYPE IS CONTROL FOOTING name.
void ParseType(HeadContext& context) {
  context.PassOver({Is, Report, Page, Control, Heading, Footing, Detail, Rh, Ph, Ch, De, Cf, Pf, Rf, For, On, Final});
  if (context.AtName() && !BeginsDataClause(context.cursor.WordAt())) context.ReadVariable(Role::Key, VarUsage::Out);
  if (context.cursor.Accept(Or)) context.cursor.Accept(Page);
}

// LINE NUMBER IS PLUS 2, LINE 5 ON NEXT PAGE, NEXT GROUP NEXT PAGE.
void ParsePlace(HeadContext& context) {
  TokenCursor& cursor = context.cursor;
  PassNumber(context);
  cursor.Accept(On);
  if (cursor.At(Next) && cursor.WordAt(1) == Page) cursor.Next();
  cursor.Accept(Page);
}

// SOURCE and SUM: items, and expressions of them.
void ReadSources(HeadContext& context) {
  TokenCursor& cursor = context.cursor;
  while ((context.AtDataName() && !BeginsDataClause(cursor.WordAt())) || context.AtLiteral()) {
    if (cursor.At(TokenKind::Number) && AtEntry(context)) return;
    context.ReadOperand(Role::Source);
    if (IsArithmeticOperator(cursor.Current().kind)) cursor.Next();
  }
}

void ParseSum(HeadContext& context) {
  TokenCursor& cursor = context.cursor;
  context.PassOver({Of});
  ReadSources(context);
  if (!cursor.Accept(Upon)) return;
  while (context.AtName() && !BeginsDataClause(cursor.WordAt())) {
    context.ReadReference(Role::Other, PendingName::Kind::Data);
  }
}

}  // namespace

void ParseReportDescription(HeadContext& context, NodeId report) {
  TokenCursor& cursor = context.cursor;
  context.model.File(report).organization = context.model.Text("REPORT");
  bool isTold = false;
  while (!cursor.Accept(TokenKind::Period)) {
    const bool isNext = HeaderAt(context) != Header::None || cursor.At(Rd) ||
                        (cursor.At(TokenKind::Number) && cursor.Current().Has(kFirstOnRow) && AtEntry(context));
    if (isNext) {
      if (!isTold) context.Report("The full stop of the report description before this is missing.");
      return;
    }
    if (ParseReportDescriptionClause(context, report)) continue;
    if (!isTold) context.Report("This is no clause of a report description.");
    isTold = true;
    cursor.Next();
  }
}

bool BeginsReportClause(Word word) {
  switch (word) {
    case Type:
    case Line:
    case Lines:
    case Next:
    case Column:
    case Columns:
    case Col:
    case Cols:
    case Source:
    case Sum:
    case Reset:
    case Word::Group:
      return true;
    default:
      return false;
  }
}

bool ParseReportClause(HeadContext& context, ItemDescription&) {
  TokenCursor& cursor = context.cursor;
  switch (cursor.WordAt()) {
    case Type:
      cursor.Next();
      ParseType(context);
      return true;
    case Line:
    case Lines:
      cursor.Next();
      ParsePlace(context);
      return true;
    case Next:
      cursor.Next();
      cursor.Accept(Group);
      ParsePlace(context);
      return true;
    case Column:
    case Columns:
    case Col:
    case Cols:
      cursor.Next();
      ParsePlace(context);
      return true;
    case Source:
      cursor.Next();
      context.PassOver({Is, Are});
      ReadSources(context);
      context.PassOver({Rounded});
      return true;
    case Sum:
      cursor.Next();
      ParseSum(context);
      return true;
    case Reset:
      cursor.Next();
      context.PassOver({On, Final});
      context.ReadVariable(Role::Key, VarUsage::Out);
      return true;
    case Group:
      cursor.Next();
      context.PassOver({Indicate});
      return true;
    default:
      return false;
  }
}

}  // namespace qmrules::workbench::codemodel::cobol
