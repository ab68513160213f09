#pragma once

#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>

#include "platform/fetch.h"
#include "platform/repository.h"

namespace qmrules::test {

// The fields of the current row, joined by "|".
inline std::string RowText(const platform::Fetch& fetch, std::initializer_list<std::string_view> names) {
  std::string row;
  for (const auto* name = names.begin(); name != names.end(); ++name) {
    if (name != names.begin()) row += '|';
    row += fetch.Row().Item(*name).Text();
  }
  return row;
}

// The rows from the current one to the last, joined by ";".
inline std::string RestOfRows(platform::Fetch& fetch, std::initializer_list<std::string_view> names) {
  std::string rows;
  for (bool isFirst = true; !fetch.Eof(); fetch.MoveNext(), isFirst = false) {
    if (!isFirst) rows += ';';
    rows += RowText(fetch, names);
  }
  return rows;
}

inline std::string Rows(platform::Fetch& fetch, std::string_view projectKey,
                        std::initializer_list<std::string_view> names) {
  fetch.Execute(projectKey);
  return RestOfRows(fetch, names);
}

// The rows of a fetch of one node, executed with an empty project.
inline std::string Select(platform::Repository& repository, std::string_view entity, std::string_view fetchList,
                          const platform::Filter& filter, std::initializer_list<std::string_view> names) {
  const auto fetch = repository.NewFetch();
  fetch->SetRoot(fetch->AddObject(false, entity, fetchList, filter));
  return Rows(*fetch, "", names);
}

// The same for the IDs alone.
inline std::string IDs(platform::Repository& repository, std::string_view entity, const platform::Filter& filter) {
  return Select(repository, entity, "ID", filter, {"ID"});
}

}  // namespace qmrules::test
