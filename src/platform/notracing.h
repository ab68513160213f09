#pragma once

#include <string>
#include <utility>

#include "platform/dataflow.h"

namespace qmrules::platform {

// The tracing library of a host that traces no variables: each program is refused with the reason.
class NoTracing final : public TracingLibrary {
 public:
  explicit NoTracing(std::string reason) : reason_(std::move(reason)) {}

  bool LoadProgram(const Program& /*program*/, std::string& result) override {
    result = reason_;
    return false;
  }
  void UnloadProgram(std::string_view /*name*/) override {}
  std::int32_t ExpandNode(std::string_view /*node*/, std::string_view /*direction*/, std::string_view /*relation*/,
                          std::string& result) override {
    result = reason_;
    return 0;
  }
  std::optional<std::string> GetExpandNodeResult() override { return std::nullopt; }

 private:
  std::string reason_;
};

}  // namespace qmrules::platform
