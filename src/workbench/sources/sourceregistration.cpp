#include "workbench/sources/sourceregistration.h"

#include <fmt/format.h>

#include <algorithm>
#include <memory>
#include <vector>

#include "platform/error.h"
#include "platform/objectkey.h"
#include "shell/casefold.h"

namespace qmrules::workbench {

namespace {

using platform::Error;
using platform::Object;
using platform::Repository;

// The object of this file and name or, when the file has one object only, that one, whatever its name.
std::unique_ptr<Object> FindByFile(Repository& repository, const ScannedProgram& program, const std::string& name) {
  const auto fetch = repository.NewFetch();
  fetch->SetRoot(fetch->AddObject(false, program.language, "ID,Name", "Source=" + platform::FilterValue(program.file)));
  std::vector<std::string> ids;
  for (fetch->Execute(""); !fetch->Eof(); fetch->MoveNext()) {
    ids.push_back(fetch->Row().Item("ID").Text());
    if (fetch->Row().Item("Name").Text() != name) continue;
    ids = {ids.back()};
    break;
  }
  return ids.size() == 1 ? repository.object(fmt::format("{}#{}", program.language, ids.front())) : nullptr;
}

// The name to register under; "" in `asName` means the program's own.
std::string NameOf(const ScannedProgram& program, std::string_view asName) {
  if (asName.empty()) return program.programId;
  const auto first = asName.find_first_not_of(' ');
  if (first == std::string_view::npos) throw Error("The name behind --as is blank; give the program a name.");
  return shell::ToUpper(asName.substr(first, asName.find_last_not_of(' ') - first + 1));
}

// The object of this source, when it is known; nullptr when the name is free. Error when another source has it.
std::unique_ptr<Object> FindKnown(Repository& repository, const ScannedProgram& program, const std::string& name,
                                  bool nameGiven) {
  // Several programs of one file cannot be told apart by the file.
  if (program.onlyOneOfFile) {
    if (auto known = FindByFile(repository, program, name)) {
      const std::string knownName = known->Attrs("Name").Text();
      if (!nameGiven || knownName == name) return known;
      throw RegistrationRefused(
          fmt::format("{} is registered already, as {}; leave out --as.", program.file, knownName));
    }
  }
  auto known = repository.FindObject(program.language, name);
  if (!known) return nullptr;
  const std::string file = known->Attrs("Source").Text();
  if (file == program.file) return known;
  throw RegistrationRefused(
      fmt::format("The program {} of {} is known already from {}; register it under another name with --as NAME.", name,
                  program.file, file));
}

constexpr std::string_view kDataFlags[] = {"DataView", "DataRelations", "DataDepends"};

bool HasModel(const Object& source, const std::string& modelFile) {
  return source.Attrs("Quillmark").Text() == modelFile && std::ranges::all_of(kDataFlags, [&](std::string_view flag) {
           return source.Attrs(flag).Boolean() != modelFile.empty();
         });
}

// Between Edit and Post. An empty name stands for no model.
void PutModel(Object& source, const std::string& modelFile) {
  source.Attrs("Quillmark", modelFile);
  for (const auto flag : kDataFlags) source.Attrs(flag, !modelFile.empty());
}

std::unique_ptr<Object> NewSource(Repository& repository, const ScannedProgram& program, const std::string& name) {
  auto source = repository.NewObject(program.language, name);
  source->Edit();
  source->Attrs("Source", program.file);
  source->Attrs("SourceLinesNum", static_cast<std::int64_t>(program.lines));
  PutModel(*source, program.modelFile.value_or(""));
  source->Post();
  return source;
}

// The object PROGRAM that produces the source; nullptr for none.
std::unique_ptr<Object> FindProducer(Repository& repository, const Object& source) {
  const auto fetch = repository.NewFetch();
  const auto producer = fetch->AddObject(false, "PROGRAM", "ID");
  const auto relation = fetch->AddRelation("IsProducedBy", false, "", producer);
  const auto id = platform::SplitKey(source.Key()).id;
  fetch->SetRoot(fetch->AddObject(false, source.EntityDef().Name(), "", fmt::format("ID={}", id), relation));
  if (fetch->Execute("")) return nullptr;
  return repository.object("PROGRAM#" + fetch->Row().Item("ID").Text());
}

std::unique_ptr<Object> NewProducer(Repository& repository, const ScannedProgram& program, const std::string& name,
                                    const Object& source) {
  auto producer = repository.NewObject("PROGRAM", name);
  producer->Edit();
  producer->Attrs("Source", program.file);
  producer->Post();
  producer->Link("Produces", source.Key());
  return producer;
}

// True when something had to be written to bring a known source up to date.
bool Refresh(Object& source, const ScannedProgram& program) {
  const auto lines = static_cast<std::int64_t>(program.lines);
  const bool hasNewModel = program.modelFile && !HasModel(source, *program.modelFile);
  if (source.Attrs("SourceLinesNum").Integer() == lines && !hasNewModel) return false;
  source.Edit();
  source.Attrs("SourceLinesNum", lines);
  if (hasNewModel) PutModel(source, *program.modelFile);
  source.Post();
  return true;
}

}  // namespace

Registration RegisterSource(Repository& repository, std::string_view projectKey, const ScannedProgram& program,
                            std::string_view asName) {
  const std::string name = NameOf(program, asName);
  auto source = FindKnown(repository, program, name, !asName.empty());
  const bool isNew = source == nullptr;
  Registration done;
  const auto command = repository.BeginCommand("RegisterSource");
  const auto transaction = repository.BeginTransaction();
  if (isNew) source = NewSource(repository, program, name);
  const bool changed = !isNew && Refresh(*source, program);
  done.name = source->Attrs("Name").Text();
  done.key = source->Key();
  auto producer = isNew ? nullptr : FindProducer(repository, *source);
  if (!producer) producer = NewProducer(repository, program, done.name, *source);
  bool joined = false;
  for (Object* object : {source.get(), producer.get()}) {
    if (object->BelongsToProject(projectKey)) continue;
    object->Link("BelongsTo", projectKey);
    joined = true;
  }
  transaction->Commit();
  using enum Registration::Outcome;
  done.outcome = isNew ? Added : changed || joined ? Updated : Unchanged;
  return done;
}

bool WithdrawModel(Repository& repository, std::string_view sourceKey) {
  const auto source = repository.object(sourceKey);
  if (HasModel(*source, "")) return false;
  source->Edit();
  PutModel(*source, "");
  source->Post();
  return true;
}

}  // namespace qmrules::workbench
