#pragma once

#include <string>
#include <vector>

#include "shell/language.h"

namespace qmrules::shell {

/// All that the user reads, in one language, by number. Immutable, so it may be read from any thread.
///
/// A number that has no text is a defect of the caller: every lookup then throws std::logic_error that names it. The
/// texts live as long as the table; placeholders "%1" to "%3" are filled by `Subst`. In the texts 544, 567 and 633 "%1"
/// stands for a line break, which the caller passes as carriage return and line feed.
class StringTable {
 public:
  explicit StringTable(Language language);

  // Callers keep references to the texts, so a table stays where it is.
  StringTable(const StringTable&) = delete;
  StringTable& operator=(const StringTable&) = delete;

  [[nodiscard]] Language SpokenLanguage() const { return language_; }

  /// The message `n` = 0 to 149: the text of resource number `n` + 500.
  [[nodiscard]] const std::string& Message(int n) const;

  /// The label `n` = 0 to 114: the text of resource number `n` + 100.
  [[nodiscard]] const std::string& Label(int n) const;

  /// The text by its resource number as the documentation quotes it: 100 to 214 or 500 to 649.
  [[nodiscard]] const std::string& Text(int resourceNumber) const;

 private:
  Language language_;
  std::vector<std::string> texts_;  ///< labels, then messages
};

/// The table of a language, which lives to the end of the program. For handing around: nobody but the one who knows the
/// user's language calls this.
[[nodiscard]] const StringTable& StringTableFor(Language language);

}  // namespace qmrules::shell
