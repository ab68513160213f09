#include "browser/browserparts.h"

#include <stdexcept>

#include "browser/commandwidgets.h"
#include "catalogue/gateway.h"

namespace qmrules::bench {

BrowserParts::BrowserParts(workbench::EmbeddedHost& host)
    : workspace_(host, progress_),
      schema_(shell::ReadRuleSchema(host.Registry(), host, host.FileSystem())),
      services_{workspace_, host,           progress_, dialogs_, pointer_, host.Clock(),
                texts_,     host.Globals(), *this,     *this,    widgets_},
      objects_(services_, keys_),
      panes_(services_, objects_,
             {.rule = host.Repository().Schema().Entity(catalogue::kRule),
              .document = schema_.document,
              .definitions = schema_.attributes,
              .lists = schema_.lists}),
      selection_(services_, objects_, keys_),
      selectedOnly_(services_, objects_, keys_) {
  browser::FillCommandWidgets(widgets_, texts_);
}

void BrowserParts::SetHostItem(std::string_view command, std::string_view state) {
  workspace_.PropertyLet("QMRules", command, std::string(state));
}

void BrowserParts::RecordFailure(std::string_view text) {
  throw std::runtime_error(std::string(text));
}

void BrowserParts::Run(std::string_view key) {
  throw std::runtime_error("the command " + std::string(key) + " was asked for.");
}

}  // namespace qmrules::bench
