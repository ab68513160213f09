#include "catalogue/gateway.h"

#include <fmt/format.h>

#include <limits>

#include "platform/error.h"
#include "shell/text.h"

namespace qmrules::catalogue {

using platform::Error;
using platform::KeyedCollection;

namespace {

constexpr std::size_t kLongestPackedList = 5000;
constexpr std::size_t kFullList = 4000;

}  // namespace

std::unique_ptr<platform::Fetch> NewQuery(platform::Repository& repository) {
  auto fetch = repository.NewFetch();
  fetch->Reset();
  return fetch;
}

std::int32_t IDField(const platform::FetchRow& row, std::string_view name) {
  const std::int64_t id = row.Item(name).Value().Integer();
  if (id < 1 || id > std::numeric_limits<std::int32_t>::max()) {
    throw Error(fmt::format("The field {} holds {}, which is not the ID of an object.", name, id));
  }
  return static_cast<std::int32_t>(id);
}

bool AddKeyed(KeyedCollection<std::string>& collection, std::string_view text) {
  std::string key = "k";
  key += text;
  return collection.Add(std::string(text), key);
}

void PackIDs(KeyedCollection<std::string>& ids) {
  while (ids.Count() >= 2) {
    const std::string& first = ids.At(1);
    const std::string& second = ids.At(2);
    if (shell::CharacterCount(first) + 1 + shell::CharacterCount(second) > kLongestPackedList) return;
    std::string joined = first;
    joined.append(",").append(second);
    ids.RemoveAt(1);
    ids.RemoveAt(1);
    ids.Add(std::move(joined));
  }
}

void IDList::Add(std::int32_t id) {
  text_ += ',';
  text_ += std::to_string(id);
}

bool IDList::IsFull() const {
  return text_.size() > kFullList;
}

}  // namespace qmrules::catalogue
