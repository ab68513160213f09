#pragma once

#include <functional>
#include <optional>

#include "desktop/options/optiontable.h"
#include "platform/xml.h"

// Options in their documents. What an option does not say about itself is never touched: other nodes, other attributes,
// and the attributes of list elements that stay.
namespace qmrules::desktop {

// The value that the document holds, or nothing when it has no node for the option. (The node of a presence is its
// value, so there is always one.)
std::optional<OptionValue> ReadOption(const platform::XmlDocument& document, const OptionSpec& option);

// Takes a write back.
using UndoWrite = std::function<void()>;

// Puts the value into the document. A node that is missing comes from `defaults`, with the nodes around it that are
// missing too. Throws platform::Error, with the document as it was, when neither has the node, and for a text that XML
// cannot hold.
[[nodiscard]] UndoWrite WriteOption(platform::XmlDocument& document, const platform::XmlDocument& defaults,
                                    const OptionSpec& option, const OptionValue& value);

}  // namespace qmrules::desktop
