#include "workbench/codemodel/vocabulary.h"

#include <algorithm>
#include <array>

#include "shell/casefold.h"

namespace qmrules::workbench::codemodel {

namespace {

using enum Entity;

// One row for each entity, in the order of the enumeration.
struct EntitySpec {
  Entity entity;
  std::string_view name;
  std::span<const std::string_view> attributes;
  std::span<const RelationSpec> relations;
};

constexpr std::array<std::string_view, 3> kPlain = {"Name", "Text", "VarUsage"};
constexpr std::array<std::string_view, 4> kDescribed = {"Name", "Text", "VarUsage", "Description"};
constexpr std::array<std::string_view, 17> kDecl = {
    "Name",   "Text",  "VarUsage",    "Level",       "Picture",   "Usage", "Offset",   "Size",   "Occurs",
    "Digits", "Scale", "OccursLeast", "DependingOn", "Redefines", "Value", "External", "Global",
};
constexpr std::array<std::string_view, 1> kDeclSection = {"Section"};
constexpr std::array<std::string_view, 3> kFileOnly = {"Organization", "Access", "Assign"};
constexpr std::array<std::string_view, 5> kStat = {"Name", "Text", "VarUsage", "PORTTYPE", "Verb"};
constexpr std::array<std::string_view, 7> kIf = {"Name", "Text", "VarUsage", "PORTTYPE", "Verb", "Kind", "Conditions"};
constexpr std::array<std::string_view, 6> kJump = {"Name", "Text", "VarUsage", "PORTTYPE", "Verb", "Declaration"};
constexpr std::array<std::string_view, 6> kBlock = {"Name", "Text", "VarUsage", "PORTTYPE", "Verb", "Role"};
constexpr std::array<std::string_view, 4> kCond = {"Name", "Text", "VarUsage", "PORTTYPE"};
constexpr std::array<std::string_view, 6> kName = {"Name", "Text", "VarUsage", "PORTTYPE", "Role", "Declaration"};
constexpr std::array<std::string_view, 6> kConst = {"Name", "Text", "VarUsage", "PORTTYPE", "Role", "Value"};
constexpr std::array<std::string_view, 5> kFunc = {"Name", "Text", "VarUsage", "PORTTYPE", "Role"};

template <std::size_t A, std::size_t B>
constexpr std::array<std::string_view, A + B> Join(const std::array<std::string_view, A>& first,
                                                   const std::array<std::string_view, B>& second) {
  std::array<std::string_view, A + B> joined{};
  std::copy(second.begin(), second.end(), std::copy(first.begin(), first.end(), joined.begin()));
  return joined;
}

constexpr auto kDeclAttributes = Join(kDecl, kDeclSection);
constexpr auto kFileAttributes = Join(kDeclAttributes, kFileOnly);

constexpr std::array<RelationSpec, 6> kStatRelations = {{
    {"IF", kSpecialisation, If},
    {"GOTO", kSpecialisation, Goto},
    {"PERFORM", kSpecialisation, Perform},
    {"BLOCK", kSpecialisation, Block},
    {"PORT", kSpecialisation, Port},
    {"IOSTAT", kSpecialisation, IoStat},
}};
constexpr std::array<RelationSpec, 2> kLabelRelations = {
    {{"SECTION", kSpecialisation, Section}, {"PAR", kSpecialisation, Par}}};
constexpr std::array<RelationSpec, 1> kLabelOccurrences = {{{"Occurrences", kReference, Ref}}};
constexpr std::array<RelationSpec, 4> kDeclRelations = {{
    {"FILE", kSpecialisation, File},
    {"Occurrences", kReference, Var},
    {"Redefines", kReference, Decl},
    {"DependingOn", kReference, Decl},
}};
constexpr std::array<RelationSpec, 4> kFileRelations = {{
    {"Occurrences", kReference, Ref},
    {"Records", kReference, Decl},
    {"Status", kReference, Decl},
    {"Key", kReference, Decl},
}};
constexpr std::array<RelationSpec, 1> kIfRelations = {{{"Conditions", kReference, Cond}}};
constexpr std::array<RelationSpec, 1> kJumpRelations = {{{"Declaration", kReference, Label}}};
constexpr std::array<RelationSpec, 2> kCondRelations = {
    {{"THEN branch", kReference, Block}, {"ELSE branch", kReference, Block}}};
constexpr std::array<RelationSpec, 1> kVarRelations = {{{"Declaration", kReference, Decl}}};
constexpr std::array<RelationSpec, 3> kRefRelations = {{
    {"Declaration", kReference, Label},
    {"Data", kReference, Decl},
    {"Program", kReference, Program},
}};

constexpr std::array<EntitySpec, kEntities> kSpecs = {{
    {Identification, "IDENTIFICATION", kDescribed, {}},
    {Environment, "ENVIRONMENT", kPlain, {}},
    {Data, "DATA", kPlain, {}},
    {Division, "DIVISION", kPlain, {}},
    {Program, "PROGRAM", kPlain, {}},
    {Registers, "REGISTERS", kPlain, {}},
    {DataSection, "DATASECTION", kPlain, {}},
    {Label, "LABEL", kDescribed, kLabelRelations},
    {Section, "SECTION", kDescribed, kLabelOccurrences},
    {Par, "PAR", kDescribed, kLabelOccurrences},
    {Decl, "DECL", kDeclAttributes, kDeclRelations},
    {File, "FILE", kFileAttributes, kFileRelations},
    {Stat, "STAT", kStat, kStatRelations},
    {If, "IF", kIf, kIfRelations},
    {Goto, "GOTO", kJump, kJumpRelations},
    {Perform, "PERFORM", kJump, kJumpRelations},
    {Block, "BLOCK", kBlock, {}},
    {Port, "PORT", kStat, {}},
    {IoStat, "IOSTAT", kStat, {}},
    {Cond, "COND", kCond, kCondRelations},
    {Var, "VAR", kName, kVarRelations},
    {Const, "CONST", kConst, {}},
    {Func, "FUNC", kFunc, {}},
    {Ref, "REF", kName, kRefRelations},
}};

constexpr bool RowsFollowTheEnumeration() {
  for (std::size_t row = 0; row < kSpecs.size(); ++row) {
    if (static_cast<std::size_t>(kSpecs[row].entity) != row) return false;
  }
  return true;
}
static_assert(RowsFollowTheEnumeration());

const EntitySpec& SpecOf(Entity entity) {
  return kSpecs[static_cast<std::size_t>(entity)];
}

// The kinds below each entity, the entity itself first. Two levels are all that the relations above have.
struct Kinds {
  std::array<Entity, 8> kinds{};
  std::size_t count = 0;
};

constexpr std::array<Kinds, kEntities> GatherKinds() {
  std::array<Kinds, kEntities> all{};
  for (std::size_t row = 0; row < kEntities; ++row) {
    Kinds& own = all[row];
    own.kinds[own.count++] = kSpecs[row].entity;
    for (std::size_t next = 0; next < own.count; ++next) {
      for (const RelationSpec& relation : kSpecs[static_cast<std::size_t>(own.kinds[next])].relations) {
        if (relation.kind == kSpecialisation) own.kinds[own.count++] = relation.target;
      }
    }
  }
  return all;
}
constexpr std::array<Kinds, kEntities> kKinds = GatherKinds();

constexpr std::array<std::string_view, kRoles> kRoleNames = {
    "",         "Source",    "Target",    "Both",      "Subscript", "Offset", "Length",      "Argument", "Returning",
    "Program",  "File",      "Record",    "Key",       "Into",      "From",   "By",          "Varying",  "Times",
    "Pointer",  "Tally",     "Count",     "Delimiter", "Remainder", "Status", "DependingOn", "Subject",  "Search",
    "Then",     "Else",      "Body",      "Thru",      "Input",     "Output", "Redefined",   "Renamed",  "Value",
    "LengthOf", "AddressOf", "Qualifier", "Other",
};
static_assert(!kRoleNames.back().empty());

}  // namespace

std::span<const Entity> KindsOf(Entity entity) {
  const Kinds& kinds = kKinds[static_cast<std::size_t>(entity)];
  return std::span(kinds.kinds).first(kinds.count);
}

bool IsKindOf(Entity entity, Entity general) {
  const std::span<const Entity> kinds = KindsOf(general);
  return std::find(kinds.begin(), kinds.end(), entity) != kinds.end();
}

std::string_view NameOf(Entity entity) {
  return SpecOf(entity).name;
}

std::optional<Entity> EntityNamed(std::string_view name) {
  for (const EntitySpec& spec : kSpecs) {
    if (shell::EqualIgnoringCase(spec.name, name)) return spec.entity;
  }
  return std::nullopt;
}

std::string_view NameOf(VarUsage usage) {
  constexpr std::array<std::string_view, kVarUsages> names = {"", "IN", "OUT", "INOUT"};
  return names[static_cast<std::size_t>(usage)];
}

std::string_view NameOf(Role role) {
  return kRoleNames[static_cast<std::size_t>(role)];
}

std::span<const std::string_view> AttributesOf(Entity entity) {
  return SpecOf(entity).attributes;
}

std::span<const RelationSpec> RelationsOf(Entity entity) {
  return SpecOf(entity).relations;
}

}  // namespace qmrules::workbench::codemodel
