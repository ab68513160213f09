#pragma once

namespace qmrules::platform {

// The user's language, by the locale identifiers of the exchange format.
class Locale {
 public:
  virtual ~Locale() = default;
  // 1033 English (United States), 1041 Japanese, 1042 Korean, 1049 Russian, ... as shell::LocaleIdentifier tells; 0 for
  // a locale without one.
  virtual int GetUserDefaultLCID() const = 0;
};

class FixedLocale final : public Locale {
 public:
  explicit FixedLocale(int lcid) : lcid_(lcid) {}
  int GetUserDefaultLCID() const override { return lcid_; }

 private:
  int lcid_;
};

// The locale of the process's environment: LC_ALL, else LC_CTYPE, else LANG, as they stand at each call;
// without any of them 1033.
class SystemLocale final : public Locale {
 public:
  int GetUserDefaultLCID() const override;
};

}  // namespace qmrules::platform
