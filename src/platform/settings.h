#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace qmrules::platform {

// What the user's screen remembers from one run to the next: texts by section and name, both in any case.
class UserSettings {
 public:
  virtual ~UserSettings() = default;
  // The text, or `otherwise` when it was never set. Throws Error when the store cannot be read.
  virtual std::string Get(std::string_view section, std::string_view name, std::string_view otherwise) const = 0;
  // Throws Error when the store cannot be written; it then stands as before.
  virtual void Set(std::string_view section, std::string_view name, std::string_view value) = 0;
};

// Values of the machine, the same for all its users, which the system only reads. Key paths are written with "\" and,
// like names, compare in any case.
class Registry {
 public:
  virtual ~Registry() = default;
  // The value, or nothing where there is none.
  virtual std::optional<std::string> Value(std::string_view key, std::string_view name) const = 0;
};

inline constexpr std::string_view registryKey = "SOFTWARE\\Norvane\\Ferrowood";
// Path of the schema document of the extended attributes.
inline constexpr std::string_view userExtensionsValue = "UserExtensions";

class MemorySettings final : public UserSettings {
 public:
  std::string Get(std::string_view section, std::string_view name, std::string_view otherwise) const override;
  void Set(std::string_view section, std::string_view name, std::string_view value) override;

 private:
  std::map<std::pair<std::string, std::string>, std::string> values_;  // by folded section and name
};

// Settings in a JSON file: {"SECTION": {"NAME": "TEXT"}}. The file is read at each call, so that two running programs
// see and keep each other's settings; what else it holds is kept as it is. A file that is not there holds nothing and
// is made, with its folder, by the first Set. One that is broken is refused with "PATH:LINE:COLUMN: reason" and left as
// it is.
class JsonUserSettings final : public UserSettings {
 public:
  explicit JsonUserSettings(std::string path) : path_(std::move(path)) {}
  std::string Get(std::string_view section, std::string_view name, std::string_view otherwise) const override;
  void Set(std::string_view section, std::string_view name, std::string_view value) override;

 private:
  std::string path_;
};

class MemoryRegistry final : public Registry {
 public:
  std::optional<std::string> Value(std::string_view key, std::string_view name) const override;
  void SetValue(std::string_view key, std::string_view name, std::string_view value);

 private:
  std::map<std::pair<std::string, std::string>, std::string> values_;  // by folded key and name
};

// Values in a JSON file: {"KEY": {"NAME": "TEXT"}}, read at each call. A file that is not there holds none; Value
// throws Error "PATH:LINE:COLUMN: reason" for one that is broken.
class JsonRegistry final : public Registry {
 public:
  explicit JsonRegistry(std::string path) : path_(std::move(path)) {}
  std::optional<std::string> Value(std::string_view key, std::string_view name) const override;

 private:
  std::string path_;
};

}  // namespace qmrules::platform
