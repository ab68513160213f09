#include "platform/schema.h"

namespace qmrules::platform {

std::string_view AttrTypeName(AttrType type) {
  switch (type) {
    case AttrType::LongText:
      return "LONGTEXT";
    case AttrType::Boolean:
      return "BOOLEAN";
    case AttrType::Integer:
      return "INTEGER";
    case AttrType::Timestamp:
      return "TIMESTAMP";
    case AttrType::Char:
      break;
  }
  return "CHAR";
}

}  // namespace qmrules::platform
