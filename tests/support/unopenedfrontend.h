#pragma once

#include <memory>
#include <string>

#include "platform/error.h"
#include "platform/frontend.h"

namespace qmrules::test {

// The front end of a workspace that nothing is asked of.
class UnopenedFrontEnd final : public platform::FrontEnd {
 public:
  platform::Repository& Repository() override { throw platform::Error("No repository is open."); }
  std::unique_ptr<platform::Object> ProjectObject() override { throw platform::Error("No project is chosen."); }
  platform::Options& ProjectOptions() override { throw platform::Error("No project is chosen."); }
  platform::Options& GlobalOptions() override { throw platform::Error("No options are open."); }
  std::string UserName() const override { return "analyst"; }
  std::string GetFerrowoodName(int) const override { return {}; }
  std::string HelpFile() const override { return {}; }
};

}  // namespace qmrules::test
