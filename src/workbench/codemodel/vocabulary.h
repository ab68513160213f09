#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

namespace qmrules::workbench::codemodel {

// The kinds of objects of a code model, for every language alike.
//
// The tree of one program, with what its nodes stand for:
//
//   IDENTIFICATION              PROGRAM-ID and its companions; always there, and the first node of the top level
//   ENVIRONMENT                 FILE-CONTROL and the rest; children REF, VAR
//   DATA
//     DATASECTION               WORKING-STORAGE and so on
//       FILE                    FD or SD, with its records below it; a kind of DECL
//       DECL                    a data item, a condition name, an index; those that lie within it below it
//         VAR, CONST, REF       what its clauses name: DEPENDING ON, REDEFINES, VALUE
//   DIVISION                    the procedure division
//     PORT "USING"              the entry, with a VAR for each parameter
//     SECTION
//       PAR                     statements that stand before the first paragraph are in a PAR of the section's name
//         statements
//     PORT "RETURN"             the end of the text, where it can be reached by falling through
//   PROGRAM                     a nested program, with children as from IDENTIFICATION on
//   REGISTERS                   DECLs that the language supplies, as far as the program uses them: RETURN-CODE, EIBRESP
//
// Statements. Each is a STAT or one of its special kinds. What hangs on the outcome of a statement (AT END, ON SIZE
// ERROR, WHEN of a SEARCH) is an IF of its own behind it, under the same parent, so that every branch of a program is
// one of these two shapes:
//
//   IF  Kind "If"               IF COND, then its "THEN branch" BLOCK, then its "ELSE branch" BLOCK, if there is one
//       Kind "If at end" …      the same: COND "AT END", the BLOCK of AT END, the BLOCK of NOT AT END
//   IF  Kind "Evaluate",        the subjects' VARs; for each WHEN group a COND and its BLOCK; last the BLOCK of
//                               WHEN OTHER, which is the "ELSE branch" of the last COND
//       "Search"                the COND and the BLOCK of AT END, where there is one; then as for WHEN above
//   PERFORM                     out of line: a REF for each procedure name, VARs, a COND for UNTIL and for each AFTER
//   BLOCK                       what only holds other statements: an inline PERFORM (with VARs and CONDs before them),
//                               the branches above
//   PORT "CALL"                 CALL, CICS LINK and XCTL, INVOKE: what leads to another program
//   PORT "RETURN"               GOBACK, EXIT PROGRAM, STOP RUN, CICS RETURN
//   IOSTAT                      what brings data in or out: files, screens, queues, SQL
//
// An operand is a VAR, CONST, FUNC or REF below its statement or COND; subscripts and the parts of a reference
// modification lie below the VAR that they belong to, arguments below their FUNC. An operand that a statement has
// without spelling it out is there too, and implicit: the record of a READ, the file of a WRITE, the pairs of items of
// a MOVE CORRESPONDING (each sending item right before its receiving one), the subject of an EVALUATE in each of its
// CONDs.
enum class Entity : std::uint8_t {
  Identification,
  Environment,
  Data,
  Division,
  Program,
  Registers,
  DataSection,
  Label,  // what a procedure name can mean; no object is of this kind itself
  Section,
  Par,
  Decl,
  File,
  Stat,
  If,
  Goto,
  Perform,
  Block,
  Port,
  IoStat,
  Cond,
  Var,    // an occurrence of a data name
  Const,  // a literal or a figurative constant
  Func,   // an intrinsic function
  Ref,    // an occurrence of a name that is no variable: a paragraph, a file, a program
};
inline constexpr std::size_t kEntities = static_cast<std::size_t>(Entity::Ref) + 1;

// Into which kinds a kind falls: the entity itself and, at any depth, what its relations of kind 1 lead to.
std::span<const Entity> KindsOf(Entity entity);
bool IsKindOf(Entity entity, Entity general);
std::string_view NameOf(Entity entity);                    // "IDENTIFICATION"
std::optional<Entity> EntityNamed(std::string_view name);  // in any case

// How data passes an occurrence. `In` means that data comes into the variable.
enum class VarUsage : std::uint8_t { None, In, Out, InOut };
inline constexpr std::size_t kVarUsages = static_cast<std::size_t>(VarUsage::InOut) + 1;
std::string_view NameOf(VarUsage usage);  // "", "IN", "OUT", "INOUT"

// What an operand is to its statement: enough to tell which operands the data of another one comes from.
enum class Role : std::uint8_t {
  None,
  Source,     // read; where data moves, what moves
  Target,     // written from all Sources
  Both,       // read and written: ADD … TO b
  Subscript,  // below a VAR
  Offset,     // of a reference modification, below a VAR
  Length,     // likewise
  Argument,   // of a FUNC or CALL, by reference where the VAR is INOUT
  Returning,  // what a CALL, a method or a program gives back
  Program,    // the program called
  File,
  Record,
  Key,
  Into,     // READ … INTO
  From,     // WRITE … FROM; PERFORM VARYING … FROM
  By,       // PERFORM VARYING … BY
  Varying,  // the counter itself
  Times,
  Pointer,  // WITH POINTER
  Tally,
  Count,      // COUNT IN
  Delimiter,  // DELIMITED BY; DELIMITER IN is a Target
  Remainder,
  Status,
  DependingOn,
  Subject,  // of an EVALUATE
  Search,   // the table searched
  Then,     // BLOCKs
  Else,
  Body,   // BLOCK of an inline PERFORM; REF: performed when a condition arises
  Thru,   // second name of a range
  Input,  // REF: INPUT PROCEDURE, file opened for input, …
  Output,
  Redefined,
  Renamed,
  Value,     // VALUE clause
  LengthOf,  // LENGTH OF: nothing of the data is read
  AddressOf,
  Qualifier,  // REF below a VAR: a group that its name is qualified by
  Other,
};
inline constexpr std::size_t kRoles = static_cast<std::size_t>(Role::Other) + 1;
std::string_view NameOf(Role role);  // "", "Source"

// What an entity's objects have, in their order.
std::span<const std::string_view> AttributesOf(Entity entity);

// Kinds of relations: what leads from an entity to its special kinds, and what leads from an object to others.
inline constexpr int kReference = 0;
inline constexpr int kSpecialisation = 1;

struct RelationSpec {
  std::string_view name;
  int kind = kReference;
  Entity target = Entity::Stat;
};
std::span<const RelationSpec> RelationsOf(Entity entity);

}  // namespace qmrules::workbench::codemodel
