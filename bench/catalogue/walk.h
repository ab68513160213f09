#pragma once

#include <initializer_list>
#include <string_view>

#include "catalogue/measurement.h"
#include "catalogue/rawstore.h"
#include "platform/fetch.h"

namespace qmrules::bench {

// Runs the fetch and gives every named field of every row as a text of its own.
inline void Walk(platform::Fetch& fetch, std::string_view projectKey, std::initializer_list<std::string_view> names,
                 RowSink& sink) {
  for (fetch.Execute(projectKey); !fetch.Eof(); fetch.MoveNext()) {
    const auto& row = fetch.Row();
    for (const auto name : names) sink.Take(row.Item(name).Text());
    sink.EndRow();
  }
}

// The same for a hand-written statement with its parameters bound.
inline void Walk(RawStatement& statement, int columns, RowSink& sink) {
  while (statement.Step()) {
    for (int column = 0; column < columns; ++column) sink.Take(statement.Text(column));
    sink.EndRow();
  }
}

}  // namespace qmrules::bench
