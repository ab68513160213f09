#include "workbench/repository/journal.h"

#include <fmt/format.h>

#include <charconv>

#include "workbench/repository/storelayout.h"
#include "workbench/repository/storesession.h"

namespace qmrules::workbench::repository {

namespace {

constexpr std::size_t kHeldEntries = 512;
constexpr std::size_t kHeldBytes = std::size_t{512} * 1024;
constexpr std::size_t kRowsTogether = 8;
constexpr std::size_t kLongestID = 11;

std::string InsertSql(std::size_t rows) {
  std::string sql = fmt::format("INSERT INTO \"{}\" (CommandID, Action, Object, Other, Changes) VALUES ", journalTable);
  for (std::size_t row = 0; row < rows; ++row) sql += row == 0 ? "(?, ?, ?, ?, ?)" : ", (?, ?, ?, ?, ?)";
  return sql;
}

std::string_view ActionName(JournalAction action) {
  switch (action) {
    case JournalAction::Add:
      return "ADD";
    case JournalAction::Edit:
      return "EDIT";
    case JournalAction::Delete:
      return "DELETE";
    case JournalAction::Link:
      return "LINK";
    case JournalAction::UnLink:
      break;
  }
  return "UNLINK";
}

// The escape of a character that cannot stand in a JSON text, or "".
std::string EscapeOf(char character) {
  switch (character) {
    case '"':
      return "\\\"";
    case '\\':
      return "\\\\";
    case '\n':
      return "\\n";
    case '\r':
      return "\\r";
    case '\t':
      return "\\t";
    default:
      break;
  }
  const auto code = static_cast<unsigned char>(character);
  return code < 0x20 ? fmt::format("\\u{:04x}", code) : "";
}

bool NeedsEscape(char character) {
  return static_cast<unsigned char>(character) < 0x20 || character == '"' || character == '\\';
}

// A loop without a way out, which looks at many bytes at a time.
bool HasEscapes(std::string_view text) {
  unsigned found = 0;
  for (const char character : text) found |= NeedsEscape(character) ? 1U : 0U;
  return found != 0;
}

// Appends the text as JSON. Every written text goes through here, and a document builder would copy it three times.
void AppendJson(std::string& out, std::string_view text) {
  out += '"';
  if (!HasEscapes(text)) {
    out += text;
    out += '"';
    return;
  }
  std::size_t begin = 0;
  for (std::size_t position = 0; position < text.size(); ++position) {
    if (!NeedsEscape(text[position])) continue;
    out += text.substr(begin, position - begin);
    out += EscapeOf(text[position]);
    begin = position + 1;
  }
  out += text.substr(begin);
  out += '"';
}

void AppendJson(std::string& out, const StoredValue& value) {
  if (const auto* number = std::get_if<std::int64_t>(&value)) {
    out += std::to_string(*number);
  } else if (const auto* text = std::get_if<std::string>(&value)) {
    AppendJson(out, std::string_view(*text));
  } else {
    out += "null";
  }
}

// The size of the entry's text when nothing in it is escaped.
std::size_t LikelySize(const std::vector<AttributeChange>& changes) {
  constexpr std::size_t punctuation = 16;
  std::size_t size = 2;
  for (const auto& change : changes) {
    size += change.attribute->Name().size() + punctuation;
    for (const auto* value : {&change.before, &change.after}) {
      if (const auto* text = std::get_if<std::string>(value)) size += text->size();
    }
  }
  return size;
}

}  // namespace

void JournalEntry::SetAddedID(std::int32_t id) noexcept {
  char digits[kLongestID];
  const auto [end, error] = std::to_chars(digits, digits + kLongestID, id);
  object += '#';
  object.append(digits, end);
}

JournalEntry ChangeEntry(JournalAction action, std::string_view key, const std::vector<AttributeChange>& changes) {
  JournalEntry entry;
  entry.action = action;
  entry.object.reserve(key.size() + 1 + kLongestID);
  entry.object = key;
  std::string& text = entry.changes;
  text.reserve(LikelySize(changes));
  text += '{';
  for (const auto& change : changes) {
    if (text.size() > 1) text += ',';
    // An attribute's name has letters, digits and "_" only.
    text += '"';
    text += change.attribute->Name();
    text += "\":[";
    AppendJson(text, change.before);
    text += ',';
    AppendJson(text, change.after);
    text += ']';
  }
  text += '}';
  return entry;
}

JournalEntry LinkEntry(JournalAction action, std::string from, std::string to, const StoreRelation& relation) {
  JournalEntry entry;
  entry.action = action;
  entry.object = std::move(from);
  entry.other = std::move(to);
  entry.changes = fmt::format("{{\"Relation\":\"{}\"}}", relation.Name());
  return entry;
}

void CommandJournal::BeginCommand(std::string_view name) {
  command_ = std::make_shared<JournalCommand>();
  command_->name = name;
  inCommand_ = true;
}

void CommandJournal::EndCommand() {
  command_.reset();
  inCommand_ = false;
}

void CommandJournal::MakeRoom() {
  if (held_.size() >= kHeldEntries || heldBytes_ >= kHeldBytes) WriteHeld();
  held_.reserve(kHeldEntries);
  if (!command_) command_ = std::make_shared<JournalCommand>();
  if (!command_->isUsed) command_->at = session_.Now();
}

void CommandJournal::Append(JournalEntry entry) noexcept {
  command_->isUsed = true;
  entry.command = command_;
  heldBytes_ += entry.changes.size();
  held_.push_back(std::move(entry));
}

void CommandJournal::WriteHeld() {
  std::size_t written = 0;
  try {
    while (written < held_.size()) {
      const std::size_t rows = held_.size() - written < kRowsTogether ? 1 : kRowsTogether;
      WriteRows(written, rows);
      written += rows;
    }
  } catch (...) {
    held_.erase(held_.begin(), held_.begin() + static_cast<std::ptrdiff_t>(written));
    throw;
  }
  held_.clear();
  heldBytes_ = 0;
}

void CommandJournal::WriteRows(std::size_t first, std::size_t rows) {
  static const std::string oneRow = InsertSql(1);
  static const std::string manyRows = InsertSql(kRowsTogether);
  for (std::size_t place = first; place < first + rows; ++place) {
    if (held_[place].command->id == 0) StoreCommand(*held_[place].command);
  }
  const auto statement = session_.Use(rows == 1 ? oneRow : manyRows);
  int parameter = 0;
  for (std::size_t place = first; place < first + rows; ++place) {
    const auto& entry = held_[place];
    statement->BindInteger(parameter++, entry.command->id);
    statement->BindTextInPlace(parameter++, ActionName(entry.action));
    statement->BindTextInPlace(parameter++, entry.object);
    statement->BindTextInPlace(parameter++, entry.other);
    statement->BindTextInPlace(parameter++, entry.changes);
  }
  statement->Step();
}

void CommandJournal::StoreCommand(JournalCommand& command) {
  static const std::string sql =
      fmt::format("INSERT INTO \"{}\" (At, UserName, Command) VALUES (?, ?, ?)", journalCommandTable);
  const auto statement = session_.Use(sql);
  statement->BindText(0, command.at);
  statement->BindText(1, session_.UserName());
  statement->BindText(2, command.name);
  statement->Step();
  command.id = session_.Database().LastInsertedID();
  openRows_.push_back(command.id);
}

void CommandJournal::AfterCommit() {
  ownRows_.insert(openRows_.begin(), openRows_.end());
  openRows_.clear();
  if (command_) command_->isStored = command_->id != 0;
  if (!inCommand_) command_.reset();
}

void CommandJournal::ForgetEndedCommands() {
  ownRows_.clear();
  if (command_ && command_->isStored) ownRows_.insert(command_->id);
}

void CommandJournal::AfterRollback() {
  AfterPartialRollback(0);
  openRows_.clear();
  if (!inCommand_) command_.reset();
}

void CommandJournal::AfterPartialRollback(std::int64_t before) {
  held_.clear();
  heldBytes_ = 0;
  // A row that was not there before has been written within the part that is undone.
  if (!command_ || command_->isStored || command_->id == before) return;
  std::erase(openRows_, command_->id);
  command_->id = 0;
}

}  // namespace qmrules::workbench::repository
