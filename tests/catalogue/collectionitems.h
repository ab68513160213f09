#pragma once

#include <string>
#include <vector>

#include "platform/keyedcollection.h"

namespace qmrules::catalogue {

// The items in their order.
inline std::vector<std::string> Items(const platform::KeyedCollection<std::string>& collection) {
  return {collection.begin(), collection.end()};
}

}  // namespace qmrules::catalogue
