#include "workbench/repository/storefetch.h"

#include <fmt/format.h>

#include "platform/error.h"
#include "shell/casefold.h"
#include "workbench/repository/objectwriter.h"

namespace qmrules::workbench::repository {

using platform::Error;
using platform::ObjectNode;
using platform::RelationNode;

void DeclareFilter(DeclaredNode& node, const platform::Filter& filter) {
  if (const auto* text = std::get_if<std::string>(&filter)) {
    node.filterText = *text;
    node.filter = ParseFilter(node.filterText);
  } else if (const auto* element = std::get_if<platform::XmlElement>(&filter)) {
    node.condition = std::make_unique<ConditionObject>(ParseCondition(*element));
  }
}

StoreFetch::~StoreFetch() {
  StopLiveWalk();
}

ObjectNode StoreFetch::AddObject(bool inProject, std::optional<std::string_view> entity, std::string_view fetchList,
                                 const platform::Filter& filter, std::optional<RelationNode> related) {
  DeclaredNode node;
  node.inProject = inProject;
  if (entity) node.entity = std::string(*entity);
  node.fetchList = fetchList;
  node.items = ParseFetchList(node.fetchList);
  DeclareFilter(node, filter);
  if (related) {
    if (related->index >= path_.relations.size()) throw Error("A fetch node starts from a relation of another fetch.");
    node.related = related->index;
  }
  path_.nodes.push_back(std::move(node));
  return {path_.nodes.size() - 1};
}

RelationNode StoreFetch::AddRelation(std::string_view relation, bool inProject, std::string_view fetchList,
                                     ObjectNode target) {
  if (!fetchList.empty())
    throw Error(fmt::format("The relation \"{}\" delivers nothing; its fetch list is always empty.", relation));
  if (target.index >= path_.nodes.size())
    throw Error(fmt::format("The relation \"{}\" leads to a node of another fetch.", relation));
  path_.relations.push_back({std::string(relation), ParseRelation(relation), inProject, target.index, ""});
  return {path_.relations.size() - 1};
}

RelationNode StoreFetch::AddCount(std::string_view relation, bool inProject, std::string_view alias) {
  const auto step = ParseRelation(relation);
  if (step.isNegated || step.closure != Closure::None) {
    throw Error(fmt::format("The relation \"{}\" cannot be counted: a count follows one plain relation.", relation));
  }
  path_.relations.push_back({std::string(relation), step, inProject, std::nullopt, std::string(alias)});
  return {path_.relations.size() - 1};
}

void StoreFetch::SetRoot(ObjectNode node) {
  if (node.index >= path_.nodes.size()) throw Error("The root of a fetch is a node of another fetch.");
  path_.root = node.index;
}

bool StoreFetch::Execute(std::string_view projectKey) {
  StopLiveWalk();
  std::optional<std::int32_t> projectID;
  if (!projectKey.empty()) projectID = ParseProject(session_.Schema(), projectKey).id;
  auto compiled = CompileFetch(session_.Schema(), path_, projectID);
  columns_ = std::move(compiled.columns);
  statement_.emplace(session_.Use(compiled.statement.text));
  for (std::size_t parameter = 0; parameter < compiled.statement.parameters.size(); ++parameter) {
    Bind(**statement_, static_cast<int>(parameter), compiled.statement.parameters[parameter]);
  }
  state_ = State::Live;
  session_.BeginWalk(*this);
  MoveNext();
  return Eof();
}

const platform::FetchRow& StoreFetch::Row() const {
  if (Eof()) throw Error("A fetch has no row past its last one.");
  if (state_ == State::Broken) std::rethrow_exception(failure_);
  return *this;
}

void StoreFetch::MoveNext() {
  switch (state_) {
    case State::End:
      throw Error("A fetch cannot move past its last row.");
    case State::Broken:
      std::rethrow_exception(failure_);
    case State::Live:
      try {
        if ((*statement_)->Step()) return;
      } catch (...) {
        StopLiveWalk();
        throw;
      }
      StopLiveWalk();
      return;
    case State::Spooled:
      if (spool_->Read(spooledRow_)) return;
      spool_.reset();
      state_ = State::End;
      return;
  }
}

void StoreFetch::Reset() {
  StopLiveWalk();
  spool_.reset();
  path_ = {};
  columns_.clear();
}

void StoreFetch::StopLiveWalk() {
  if (statement_) session_.EndWalk(*this);
  statement_.reset();
  state_ = State::End;
}

void StoreFetch::ReadLiveRow(std::vector<StoredValue>& row) const {
  for (std::size_t column = 0; column < row.size(); ++column) {
    row[column] = ReadStored(**statement_, static_cast<int>(column));
  }
}

void StoreFetch::BeforeWrite() noexcept {
  try {
    PutAside();
  } catch (...) {
    statement_.reset();
    failure_ = std::current_exception();
    state_ = State::Broken;
  }
}

void StoreFetch::PutAside() {
  // A row just read is still the caller's: it goes first into the spool and comes back as the current one.
  auto spool = std::make_unique<RowSpool>();
  std::vector<StoredValue> row(columns_.size());
  do {
    ReadLiveRow(row);
    spool->Write(row);
  } while ((*statement_)->Step());
  spool->Rewind();
  statement_.reset();
  spool_ = std::move(spool);
  spooledRow_.assign(columns_.size(), {});
  spool_->Read(spooledRow_);
  state_ = State::Spooled;
}

platform::FetchField StoreFetch::Item(std::string_view name) const {
  for (std::size_t column = 0; column < columns_.size(); ++column) {
    if (columns_[column].name == name) return {*this, column};
  }
  for (std::size_t column = 0; column < columns_.size(); ++column) {
    if (shell::EqualIgnoringCase(columns_[column].name, name)) return {*this, column};
  }
  throw Error(fmt::format("The fetch delivers no field \"{}\".", name));
}

platform::Value StoreFetch::ValueAt(std::size_t column) const {
  Row();
  const auto type = columns_[column].type;
  if (state_ == State::Spooled) return FromStored(type, spooledRow_[column]);
  return FromStored(type, ReadStored(**statement_, static_cast<int>(column)));
}

std::string StoreFetch::TextAt(std::size_t column) const {
  Row();
  if (state_ == State::Live) return std::string((*statement_)->Text(static_cast<int>(column)));
  const auto& cell = spooledRow_[column];
  if (const auto* text = std::get_if<std::string>(&cell)) return *text;
  if (const auto* number = std::get_if<std::int64_t>(&cell)) return std::to_string(*number);
  return {};
}

}  // namespace qmrules::workbench::repository
