#include "workbench/codemodel/cobol/procedure/verbs.h"

#include <array>

namespace qmrules::workbench::codemodel::cobol {

namespace {

// In the order of Verb.
constexpr std::array kNames = std::to_array<std::string_view>({
    "",
    "ACCEPT",
    "ADD",
    "ALLOCATE",
    "ALTER",
    "CALL",
    "CANCEL",
    "CLOSE",
    "COMMIT",
    "COMPUTE",
    "CONTINUE",
    "DELETE",
    "DISABLE",
    "DISPLAY",
    "DIVIDE",
    "ENABLE",
    "ENTRY",
    "EVALUATE",
    "EXAMINE",
    "EXEC CICS",
    "EXEC DLI",
    "EXEC SQL",
    "EXEC",
    "EXHIBIT",
    "EXIT",
    "EXIT PARAGRAPH",
    "EXIT PERFORM",
    "EXIT PERFORM CYCLE",
    "EXIT PROGRAM",
    "EXIT SECTION",
    "FREE",
    "GENERATE",
    "GOBACK",
    "GO TO",
    "IF",
    "INITIALIZE",
    "INITIATE",
    "INSPECT",
    "INVOKE",
    "JSON GENERATE",
    "JSON PARSE",
    "MERGE",
    "MOVE",
    "MULTIPLY",
    "NEXT SENTENCE",
    "OPEN",
    "PERFORM",
    "PURGE",
    "RAISE",
    "READ",
    "READY",
    "RECEIVE",
    "RELEASE",
    "RESET",
    "RESUME",
    "RETURN",
    "REWRITE",
    "ROLLBACK",
    "SEARCH",
    "SEND",
    "SET",
    "SORT",
    "START",
    "STOP",
    "STOP RUN",
    "STRING",
    "SUBTRACT",
    "SUPPRESS",
    "TERMINATE",
    "TRANSFORM",
    "UNLOCK",
    "UNSTRING",
    "USE",
    "VALIDATE",
    "WRITE",
    "XML GENERATE",
    "XML PARSE",
    "IF",
    "",
});
static_assert(kNames.size() == static_cast<std::size_t>(Verb::Unknown) + 1);

}  // namespace

std::string_view NameOf(Verb verb) {
  return kNames[static_cast<std::size_t>(verb)];
}

}  // namespace qmrules::workbench::codemodel::cobol
