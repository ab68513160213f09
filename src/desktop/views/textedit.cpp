#include "desktop/views/textedit.h"

#include <algorithm>

#include "desktop/views/qttext.h"

namespace qmrules::desktop {

TextEdit EditBetween(const QString& before, const QString& after, qsizetype cursor) {
  const qsizetype shorter = std::min(before.size(), after.size());
  // What stands behind the cursor was there before, so equal characters on both sides of the change are told apart.
  const qsizetype tail = std::clamp(after.size() - cursor, qsizetype{0}, shorter);
  qsizetype common = 0;
  while (common < tail && before[before.size() - 1 - common] == after[after.size() - 1 - common]) ++common;
  qsizetype start = 0;
  while (start < shorter - common && before[start] == after[start]) ++start;
  // A surrogate pair changes as a whole.
  if (start > 0 && before[start - 1].isHighSurrogate()) --start;
  if (common > 0 && before[before.size() - common].isLowSurrogate()) --common;
  return {start, before.size() - common - start, after.mid(start, after.size() - common - start)};
}

void HandEdit(platform::widgets::TextBox& model, const TextEdit& edit) {
  model.Select(static_cast<std::size_t>(edit.start), static_cast<std::size_t>(edit.removed));
  if (edit.inserted.isEmpty()) {
    model.Backspace();
  } else {
    model.Type(FromQt(edit.inserted));
  }
}

}  // namespace qmrules::desktop
