#include "workbench/codemodel/cobol/procedure/cicscommands.h"

#include <algorithm>
#include <cstdint>
#include <iterator>

namespace qmrules::workbench::codemodel::cobol {

namespace {

using enum CicsCommandKind;

// In the order of the alphabet.
constexpr CicsCommand kCommands[] = {
    {"ADDRESS", Inquiry},
    {"ASKTIME", Inquiry},
    {"ASSIGN", Inquiry},
    {"CONNECT", Io, true},
    {"CONVERSE", Io},
    {"DEFINE", Plain, true},
    {"DELETE", Io},
    {"DELETEQ", Io, true},
    {"DOCUMENT", Plain, true},
    {"DUMP", Plain, true},
    {"ENDBR", Io},
    {"ENDBROWSE", Plain, true},
    {"EXTRACT", Inquiry, true},
    {"FORMATTIME", Inquiry},
    {"GET", Io, true},
    {"GETNEXT", Inquiry, true},
    {"HANDLE", Handle, true},
    {"IGNORE", Handle, true},
    {"INQUIRE", Inquiry, true},
    {"INVOKE", Io, true},
    {"ISSUE", Io, true},
    {"JOURNAL", Io},
    {"LINK", Call},
    {"MOVE", Io, true},
    {"POP", Plain, true},
    {"PURGE", Plain, true},
    {"PUSH", Plain, true},
    {"PUT", Io, true},
    {"QUERY", Plain, true},
    {"READ", Io},
    {"READNEXT", Io},
    {"READPREV", Io},
    {"READQ", Io, true},
    {"RECEIVE", Io, true},
    {"RESETBR", Io},
    {"RETRIEVE", Io},
    {"RETURN", Return},
    {"REWRITE", Io},
    {"ROUTE", Io},
    {"SEND", Io, true},
    {"SET", Plain, true},
    {"SPOOLCLOSE", Io},
    {"SPOOLOPEN", Io, true},
    {"SPOOLREAD", Io},
    {"SPOOLWRITE", Io},
    {"START", Io},
    {"STARTBR", Io},
    {"STARTBROWSE", Inquiry, true},
    {"SYNCPOINT", Plain},
    {"TEST", Plain, true},
    {"UNLOCK", Io},
    {"VERIFY", Plain, true},
    {"WAIT", Plain, true},
    {"WEB", Io, true},
    {"WRITE", Io},
    {"WRITEQ", Io, true},
    {"XCTL", Call},
};

static_assert(std::is_sorted(std::begin(kCommands), std::end(kCommands),
                             [](const CicsCommand& a, const CicsCommand& b) { return a.word < b.word; }));

using enum VarUsage;
using Kind = CicsOptionKind;

// In the order of the alphabet, by option and then by command. An option that is not here is read, or, with an
// inquiry, receives data.
constexpr CicsOption kOptions[] = {
    {"ASKTIME", "ABSTIME", In, Role::Target},
    {"CONVERTTIME", "ABSTIME", In, Role::Target},
    {"FORMATTIME", "ABSTIME", Out, Role::Source},
    {"QUERY", "ALTER", In, Role::Target},
    {"GETNEXT", "BROWSETOKEN", Out, Role::Other},
    {"", "CHANGETIME", In, Role::Target},
    {"GETNEXT", "CHANNEL", Out, Role::Other},
    {"STARTBROWSE", "CHANNEL", Out, Role::Other},
    {"", "COMMAREA", Out, Role::Argument},
    {"ADDRESS", "COMMAREA", In, Role::Target},
    {"LINK", "COMMAREA", InOut, Role::Argument},
    {"", "CONTAINER", Out, Role::File, Kind::Name},
    {"GETNEXT", "CONTAINER", In, Role::Target},
    {"QUERY", "CONTROL", In, Role::Target},
    {"", "CONVID", Out, Role::Other},
    {"EXTRACT", "CONVID", Out, Role::Other},
    {"", "DATASET", Out, Role::File, Kind::Name},
    {"FORMATTIME", "DATESEP", Out, Role::Other},
    {"", "DAYSLEFT", In, Role::Target},
    {"DOCUMENT", "DOCSIZE", In, Role::Target},
    {"", "DOCTOKEN", Out, Role::Other},
    {"DUMP", "DUMPID", In, Role::Target},
    {"LOAD", "ENTRY", In, Role::Target},
    {"", "ESMREASON", In, Role::Target},
    {"", "ESMRESP", In, Role::Target},
    {"", "EXPIRYTIME", In, Role::Target},
    {"BIF", "FIELD", InOut, Role::Both},
    {"", "FILE", Out, Role::File, Kind::Name},
    {"", "FLENGTH", Out, Role::Length},
    {"GET", "FLENGTH", InOut, Role::Length},
    {"LOAD", "FLENGTH", In, Role::Length},
    {"RECEIVE", "FLENGTH", InOut, Role::Length},
    {"", "FROM", Out, Role::From},
    {"", "INTO", In, Role::Into},
    {"", "INVALIDCOUNT", In, Role::Target},
    {"", "ITEM", Out, Role::Key},
    {"WRITEQ", "ITEM", InOut, Role::Key},
    {"HANDLE", "LABEL", Out, Role::None, Kind::Procedure},
    {"", "LASTUSETIME", In, Role::Target},
    {"", "LENGTH", Out, Role::Length},
    {"CONVERSE", "LENGTH", InOut, Role::Length},
    {"ISSUE", "LENGTH", InOut, Role::Length},
    {"LOAD", "LENGTH", In, Role::Length},
    {"READ", "LENGTH", InOut, Role::Length},
    {"READNEXT", "LENGTH", InOut, Role::Length},
    {"READPREV", "LENGTH", InOut, Role::Length},
    {"READQ", "LENGTH", InOut, Role::Length},
    {"RECEIVE", "LENGTH", InOut, Role::Length},
    {"RETRIEVE", "LENGTH", InOut, Role::Length},
    {"WEB", "LENGTH", InOut, Role::Length},
    {"QUERY", "MAXIMUM", In, Role::Target},
    {"QUERY", "MINIMUM", In, Role::Target},
    {"", "NUMITEMS", In, Role::Target},
    {"DELETE", "NUMREC", In, Role::Target},
    {"", "PROGRAM", Out, Role::Program, Kind::Program},
    {"ASSIGN", "PROGRAM", In, Role::Target},
    {"", "QNAME", Out, Role::File, Kind::Name},
    {"", "QUEUE", Out, Role::File, Kind::Name},
    {"RETRIEVE", "QUEUE", In, Role::Target},
    {"QUERY", "READ", In, Role::Target},
    {"", "REPLY", In, Role::Target},
    {"", "REPLYLENGTH", In, Role::Target},
    {"", "RESP", In, Role::Status},
    {"", "RESP2", In, Role::Status},
    {"", "RIDFLD", Out, Role::Key},
    {"READNEXT", "RIDFLD", InOut, Role::Key},
    {"READPREV", "RIDFLD", InOut, Role::Key},
    {"RETRIEVE", "RTERMID", In, Role::Target},
    {"RETRIEVE", "RTRANSID", In, Role::Target},
    {"", "SESSTOKEN", Out, Role::Other},
    {"", "SET", In, Role::Into},
    {"", "STATE", In, Role::Target},
    {"WEB", "STATUSCODE", InOut, Role::Other},
    {"WEB", "STATUSTEXT", InOut, Role::Other},
    {"FORMATTIME", "TIMESEP", Out, Role::Other},
    {"SPOOLREAD", "TOFLENGTH", In, Role::Length},
    {"", "TOKEN", Out, Role::Other},
    {"READ", "TOKEN", In, Role::Target},
    {"READNEXT", "TOKEN", InOut, Role::Both},
    {"READPREV", "TOKEN", InOut, Role::Both},
    {"SPOOLOPEN", "TOKEN", In, Role::Target},
    {"CONVERSE", "TOLENGTH", InOut, Role::Length},
    {"QUERY", "UPDATE", In, Role::Target},
    {"ADDRESS", "USING", Out, Role::Source},
    {"GET", "VALUE", In, Role::Target},
    {"QUERY", "VALUE", In, Role::Target},
    {"WEB", "VALUE", InOut, Role::Other},
};

constexpr auto Precedes = [](const CicsOption& a, const CicsOption& b) {
  return a.word != b.word ? a.word < b.word : a.command < b.command;
};

static_assert(std::is_sorted(std::begin(kOptions), std::end(kOptions), Precedes));

const CicsOption* Find(std::string_view command, std::string_view word) {
  const CicsOption wanted{command, word};
  const CicsOption* found = std::lower_bound(std::begin(kOptions), std::end(kOptions), wanted, Precedes);
  return found != std::end(kOptions) && found->word == word && found->command == command ? found : nullptr;
}

}  // namespace

CicsCommand CicsCommandOf(std::string_view word) {
  const auto precedes = [](const CicsCommand& a, std::string_view b) { return a.word < b; };
  const CicsCommand* found = std::lower_bound(std::begin(kCommands), std::end(kCommands), word, precedes);
  if (found != std::end(kCommands) && found->word == word) return *found;
  return {word};
}

CicsOption CicsOptionOf(const CicsCommand& command, std::string_view word) {
  if (const CicsOption* own = Find(command.word, word)) return *own;
  const CicsOption* general = Find({}, word);
  const bool isStatus = general != nullptr && general->role == Role::Status;
  if (command.kind == CicsCommandKind::Inquiry && !isStatus) return {command.word, word, In, Role::Target};
  return general != nullptr ? *general : CicsOption{command.word, word};
}

}  // namespace qmrules::workbench::codemodel::cobol
