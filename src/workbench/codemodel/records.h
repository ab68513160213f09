#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

#include "workbench/codemodel/diagnostics.h"
#include "workbench/codemodel/expandedtext.h"
#include "workbench/codemodel/vocabulary.h"

// The records that a code model is made of. They lie in the model file as they lie in memory, without padding, and are
// used where they lie.
namespace qmrules::workbench::codemodel {

// Nodes are numbered from 1 in the order of the tree (a node before its children, children in the order of the
// expanded text), so what lies below node n is the run n + 1 … last. 0 is no node.
using NodeId = std::uint32_t;
// Texts are numbered in the model's pool of texts; 0 is the empty text.
using TextId = std::uint32_t;

enum NodeFlags : std::uint16_t {
  kImplicit = 1,      // stands in no source text of its own: a READ's record, the PAR of a section's first statements
  kByContent = 2,     // an argument that cannot be changed: BY CONTENT, BY VALUE
  kGap = 4,           // not all of the text of this node is in the model
  kAllSubscript = 8,  // subscript ALL
  kRefMod = 16,       // a VAR with reference modification
  kRounded = 32,
  kCorresponding = 64,
  kOmitted = 128,        // OMITTED argument
  kPortUsing = 256,      // a PORT's type: the entry,
  kPortReturn = 512,     // or an exit; with neither it leads to another program
  kEndsSentence = 1024,  // the last statement of its sentence, of those that no other statement holds
  kTestAfter = 2048,     // a PERFORM that asks its UNTIL behind what it performs
  kDivides = 4096,       // arithmetic that divides by what can be zero or raises to a power: it can have no result
  kSelects = 8192,       // an INITIALIZE that takes in other items than usual: VALUE, DEFAULT, FILLER
  kNoHandle = 16384,     // an EXEC CICS command that goes on whatever comes of it: NOHANDLE
};

struct NodeRecord {
  NodeId parent = 0;
  NodeId last = 0;  // the last node below this one; its own number for a leaf
  std::uint32_t firstRow = 0;
  std::uint32_t lastRow = 0;      // inclusive, in the same file
  std::uint32_t position = 0;     // characters of the file before it,
  std::uint32_t endPosition = 0;  // and before what follows
  std::uint32_t order = 0;        // its first token's place in the expanded text, from 0
  TextId name = 0;                // DECL, FILE, PAR …: as declared; VAR, REF: of its declaration, or as written when
                                  // that is not known; STAT and its kinds: the verb; CONST: the literal; FUNC: its name
  NodeId declaration = 0;         // VAR, REF, GOTO, PERFORM: what the name means; 0 when that is not known
  std::uint32_t detail = 0;       // DECL: index in decls; FILE: in files; COND: TextId of the normalised text;
                                  // PAR, SECTION, IDENTIFICATION: TextId of the comment above; IF: TextId of its Kind;
                                  // PORT: TextId of the program's name where it is a literal; VAR, CONST, FUNC behind
                                  // INITIALIZE … REPLACING: TextId of the category, "NUMERIC"
  std::uint16_t file = 0;         // index in the model's list of files
  std::uint16_t flags = 0;
  Entity entity = Entity::Stat;
  std::uint8_t verb = 0;  // of a statement: number in the language's own list of verbs
  VarUsage usage = VarUsage::None;
  Role role = Role::None;
};
static_assert(sizeof(NodeRecord) == 48 && std::has_unique_object_representations_v<NodeRecord>);

enum class DataUsage : std::uint8_t {
  Group,
  Display,
  Binary,        // COMP, COMP-4, BINARY
  NativeBinary,  // COMP-5, BINARY-LONG …
  Packed,        // COMP-3
  PackedNoSign,  // COMP-6
  Float,         // COMP-1
  Double,        // COMP-2
  ByteBinary,    // COMP-X
  Index,
  Pointer,
  ProcedurePointer,
  National,
  Dbcs,  // DISPLAY-1
  ObjectReference,
  Condition,  // level 88
  Renames,    // level 66: its bytes are those of others
};
inline constexpr std::size_t kDataUsages = static_cast<std::size_t>(DataUsage::Renames) + 1;
std::string_view NameOf(DataUsage usage);  // "GROUP", "DISPLAY", "COMP-3"

enum DeclFlags : std::uint16_t {
  kFiller = 1,
  kSigned = 2,
  kSignSeparate = 4,
  kSignLeading = 8,
  kSynchronized = 16,
  kJustified = 32,
  kBlankWhenZero = 64,
  kExternal = 128,
  kGlobal = 256,
  kNumeric = 512,
  kEdited = 1024,
  kOccurs = 2048,     // has an OCCURS clause itself
  kDynamic = 4096,    // ANY LENGTH, or size known at run time only
  kIndexName = 8192,  // declared by INDEXED BY
  kRegister = 16384,  // supplied by the language or its environment
  kAlphabetic = 32768,
};

// A data item. Offsets and sizes are bytes as on the mainframe: one byte a character, two a national one, binary by
// digits. `offset` counts from the start of the storage area that `area` tells: items of one area can overlap.
struct DeclRecord {
  std::uint64_t offset = 0;  // of its first occurrence
  std::uint64_t size = 0;    // of one occurrence; an OCCURS DEPENDING ON below it counts with its most
  NodeId node = 0;
  NodeId area = 0;       // DECL at level 01 or 77 whose storage this is; of a redefining one the redefined;
                         // all records of a file share the first record's area
  NodeId redefines = 0;  // DECL named behind REDEFINES; for 66 the first renamed item
  NodeId renamesThrough = 0;
  NodeId dependingOn = 0;
  std::uint32_t occursLeast = 1;
  std::uint32_t occurs = 1;  // most occurrences
  TextId picture = 0;        // as written
  TextId value = 0;          // VALUE clause as written, values parted by a blank
  std::int16_t scale = 0;    // digits behind the decimal point
  std::uint16_t digits = 0;
  std::uint16_t flags = 0;
  std::uint8_t level = 0;
  DataUsage usage = DataUsage::Group;
  std::uint8_t section = 0;  // DataSectionKind
  std::uint8_t reserved[11] = {};
};
static_assert(sizeof(DeclRecord) == 72 && std::has_unique_object_representations_v<DeclRecord>);

enum class DataSectionKind : std::uint8_t {
  File,
  WorkingStorage,
  LocalStorage,
  Linkage,
  Screen,
  Report,
  Communication
};
inline constexpr std::size_t kDataSections = static_cast<std::size_t>(DataSectionKind::Communication) + 1;
std::string_view NameOf(DataSectionKind section);  // "FILE", "WORKING-STORAGE"

struct FileRecord {
  NodeId node = 0;          // FILE
  NodeId select = 0;        // REF of SELECT in the ENVIRONMENT
  NodeId firstRecord = 0;   // DECL
  TextId assign = 0;        // what it is assigned to, as written
  TextId organization = 0;  // "SEQUENTIAL", "INDEXED", "RELATIVE", "LINE SEQUENTIAL"
  TextId access = 0;
  NodeId status = 0;  // DECLs
  NodeId key = 0;
  std::uint8_t isSort = 0;  // SD
  std::uint8_t reserved = 0;
  std::uint16_t flags = 0;  // DeclFlags: kExternal, kGlobal
};
static_assert(sizeof(FileRecord) == 36 && std::has_unique_object_representations_v<FileRecord>);

// A program of the model: the outermost first, then nested ones in the order of the text.
struct UnitRecord {
  NodeId node = 0;  // PROGRAM; 0 for the outermost, which is the model itself
  NodeId identification = 0;
  NodeId division = 0;  // DIVISION; 0 when it has no procedure division
  TextId name = 0;
  std::uint32_t parent = 0;  // index of the unit around it; its own for the outermost
  NodeId firstNode = 0;      // nodes of the unit are those from here …
  NodeId lastNode = 0;       // … to here, those of nested programs included
};
static_assert(sizeof(UnitRecord) == 28 && std::has_unique_object_representations_v<UnitRecord>);

struct FileEntry {
  std::string name;            // relative to the source folder
  std::uint64_t hash[2] = {};  // of its bytes
};

// All that the front end of a language finds out about one program.
struct ModelData {
  std::string language;           // "COBOL": the ModelName
  std::vector<NodeRecord> nodes;  // nodes[0] stands for node 0 and is empty
  std::vector<DeclRecord> decls;
  std::vector<FileRecord> fileRecords;
  std::vector<UnitRecord> units;
  std::vector<std::string> texts;  // texts[0] is empty
  std::vector<FileEntry> files;    // the program's own first
  std::vector<Dependency> dependencies;
  std::vector<Diagnostic> diagnostics;
  std::string options;     // what decided how the program was read, as the front end writes it
  std::uint32_t rows = 0;  // of the program's own file
};

}  // namespace qmrules::workbench::codemodel
