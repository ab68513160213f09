#include "workbench/codemodel/cobol/reading/words.h"

#include <span>

namespace qmrules::workbench::codemodel::cobol {

namespace {

struct Lists {
  using enum Word;

  // clang-format off
  static constexpr Word kVerbs[] = {
      Accept, Add, Allocate, Alter, Call, Cancel, Close, Commit, Compute, Continue, Delete, Disable, Display, Divide,
      Enable, Entry, Evaluate, Examine, Exec, Execute, Exhibit, Exit, Free, Generate, Go, Goback, If, Initialize,
      Initiate, Inspect, Invoke, Json, Merge, Move, Multiply, Next, Open, Perform, Purge, Raise, Read, Ready, Receive,
      Release, Reset, Resume, Return, Rewrite, Rollback, Search, Send, Set, Sort, Start, Stop, String, Subtract,
      Suppress, Terminate, Transform, Unlock, Unstring, Use, Validate, Write, Xml,
  };

  static constexpr Word kScopeEnds[] = {
      EndAccept, EndAdd, EndCall, EndCompute, EndDelete, EndDisplay, EndDivide, EndEvaluate, EndExec, EndIf, EndInvoke,
      EndJson, EndMultiply, EndPerform, EndRead, EndReturn, EndRewrite, EndSearch, EndStart, EndString, EndSubtract,
      EndUnstring, EndWrite, EndXml,
  };

  static constexpr Word kReserved[] = {
      Accept, Access, Add, Address, Advancing, After, All, Alphabet, Alphabetic, AlphabeticLower, AlphabeticUpper,
      Alphanumeric, AlphanumericEdited, Also, Alter, Alternate, And, Any, Are, Area, Areas, Ascending, Assign, At,
      Author, Before, Binary, Blank, Block, Bottom, By, Call, Cancel, Cf, Ch, Character, Characters, Class, ClockUnits,
      Close, Code, CodeSet, Collating, Column, Comma, Common, Communication, Comp, Comp1, Comp2, Comp3, Comp4, Comp5,
      Computational, Computational1, Computational2, Computational3, Computational4, Computational5, Compute,
      Configuration, Contains, Content, Continue, Control, Controls, Converting, Copy, Corr, Corresponding, Count,
      Currency, Data, Date, DateCompiled, DateWritten, Day, DayOfWeek, De, DebugContents, DebugItem, DebugLine,
      DebugName, DebugSub1, DebugSub2, DebugSub3, Debugging, DecimalPoint, Declaratives, Delete, Delimited, Delimiter,
      Depending, Descending, Detail, Disable, Display, Display1, Divide, Division, Down, Duplicates, Else, Enable, End,
      EndAccept, EndAdd, EndCall, EndCompute, EndDelete, EndDisplay, EndDivide, EndEvaluate, EndExec, EndIf, EndInvoke,
      EndMultiply, EndOfPage, EndPerform, EndRead, EndReturn, EndRewrite, EndSearch, EndStart, EndString, EndSubtract,
      EndUnstring, EndWrite, Enter, Entry, Environment, Eop, Equal, Equals, Error, Evaluate, Every, Exception, Exec,
      Execute, Exit, Extend, External, False, Fd, File, FileControl, Filler, Final, First, Footing, For, From, Function,
      Generate, Giving, Global, Go, Goback, Greater, Group, Heading, HighValue, HighValues, IO, IOControl,
      Identification, If, In, Index, Indexed, Indicate, Initial, Initialize, Initiate, Input, InputOutput, Inspect,
      Installation, Into, Invalid, Is, Just, Justified, Key, Label, Last, Leading, Left, Length, Less, Limit, Limits,
      Linage, LinageCounter, Line, LineCounter, Lines, Linkage, LocalStorage, Lock, LowValue, LowValues, Memory, Merge,
      Mode, Modules, Move, Multiple, Multiply, Native, Negative, Next, No, Not, Null, Nulls, Number, Numeric,
      NumericEdited, ObjectComputer, Occurs, Of, Off, Omitted, On, Open, Optional, Or, Order, Organization, Other,
      Output, Overflow, PackedDecimal, Padding, Page, PageCounter, Perform, Pf, Ph, Pic, Picture, Plus, Pointer,
      Position, Positive, Printing, Procedure, ProcedurePointer, Procedures, Proceed, Program, ProgramId, Purge, Quote,
      Quotes, Random, Rd, Read, Receive, Record, Records, Redefines, Reel, Reference, Relative, Release, Remainder,
      Removal, Renames, Replace, Replacing, Report, Reporting, Reports, Rerun, Reserve, Reset, Return, Returning,
      Reversed, Rewind, Rewrite, Rf, Rh, Right, Rounded, Run, Same, Sd, Search, Section, Security, SegmentLimit, Select,
      Send, Sentence, Separate, Sequence, Sequential, Set, Sign, Size, Sort, SortMerge, Source, SourceComputer, Space,
      Spaces, SpecialNames, Standard, Standard1, Standard2, Start, Status, Stop, String, Subtract, Sum, Suppress,
      Symbolic, Sync, Synchronized, Table, Tallying, Tape, Terminate, Test, Than, Then, Through, Thru, Time, Times, To,
      Top, Trailing, True, Unit, Unstring, Until, Up, Upon, Usage, Use, Using, Value, Values, Varying, When, With,
      Words, WorkingStorage, Write, Zero, Zeroes, Zeros,
  };
  // clang-format on
};

constexpr void Mark(std::array<std::uint8_t, detail::kWords>& facts, std::span<const Word> words,
                    detail::WordFacts fact) {
  for (const Word word : words) facts[static_cast<std::size_t>(word)] |= fact;
}

constexpr std::array<std::uint8_t, detail::kWords> MakeFacts() {
  std::array<std::uint8_t, detail::kWords> facts{};
  Mark(facts, Lists::kVerbs, detail::kBeginsStatement);
  Mark(facts, Lists::kScopeEnds, detail::kEndsScope);
  Mark(facts, Lists::kReserved, detail::kNoName);
  return facts;
}

}  // namespace

namespace detail {

constexpr std::array<std::uint8_t, kWords> kFacts = MakeFacts();

}  // namespace detail

const std::vector<std::string_view>& CobolWordList() {
  static const std::vector<std::string_view> words = {
#define QMRULES_WORD(name, text) text,
      QMRULES_COBOL_WORDS(QMRULES_WORD)
#undef QMRULES_WORD
  };
  return words;
}

}  // namespace qmrules::workbench::codemodel::cobol
