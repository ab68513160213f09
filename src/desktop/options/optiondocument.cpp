#include "desktop/options/optiondocument.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "platform/error.h"

namespace qmrules::desktop {

namespace {

using platform::XmlDocument;
using platform::XmlElement;

constexpr const char* kChecked = "CHECKED";
constexpr const char* kTrue = "true";
constexpr const char* kFalse = "false";

bool IsSameNode(const XmlElement& a, const XmlElement& b) {
  return a.nodeName() == b.nodeName() && a.getAttribute("NAME") == b.getAttribute("NAME") &&
         a.getAttribute("ID") == b.getAttribute("ID");
}

// The child of `parent` that stands for the same node as `wanted` of another document, or none.
XmlElement Counterpart(const XmlElement& parent, const XmlElement& wanted) {
  for (XmlElement child = parent.firstChild(); child; child = child.nextSibling()) {
    if (IsSameNode(child, wanted)) return child;
  }
  return {};
}

void Remove(const XmlElement& element) {
  element.parentNode().removeChild(element);
}

// Brings the node over from the defaults, with as many of the nodes around it as are missing; gives the outermost.
XmlElement Transplant(XmlDocument& document, const XmlDocument& defaults, const OptionSpec& option) {
  XmlElement node = defaults.selectSingleNode(option.path);
  XmlElement place = document.documentElement();
  if (!node || !place) throw platform::Error("There is no place for the option " + std::string(option.name) + ".");
  std::vector<XmlElement> wayDown;
  for (; node.parentNode(); node = node.parentNode()) wayDown.push_back(node);
  for (auto step = wayDown.rbegin(); step != wayDown.rend(); ++step) {
    const XmlElement next = Counterpart(place, *step);
    if (!next) return place.appendChild(document.importNode(*step));
    place = next;
  }
  return place;
}

std::vector<XmlElement> ListElements(const XmlElement& node, const OptionSpec& option) {
  std::vector<XmlElement> elements;
  for (XmlElement child = node.firstChild(); child; child = child.nextSibling()) {
    if (child.getAttribute(option.attribute)) elements.push_back(child);
  }
  return elements;
}

// The elements of texts that stay are used again, so that what else they hold stays too.
void WriteTexts(XmlDocument& document, XmlElement node, const OptionSpec& option,
                const std::vector<ListedText>& texts) {
  auto held = ListElements(node, option);
  std::vector<XmlElement> elements;
  for (const ListedText& entry : texts) {
    const auto same = std::find_if(held.begin(), held.end(), [&](const XmlElement& element) {
      return element.getAttribute(option.attribute) == entry.text;
    });
    XmlElement element = same == held.end() ? document.createElement("STRING") : *same;
    if (same != held.end()) held.erase(same);
    element.setAttribute(option.attribute, entry.text);
    element.setAttribute(kChecked, entry.counts ? kTrue : kFalse);
    elements.push_back(element);
  }
  for (const XmlElement& gone : held) Remove(gone);
  for (const XmlElement& element : elements) node.appendChild(element);
}

struct ValueWriter {
  XmlDocument& document;
  XmlElement node;
  const OptionSpec& option;

  void operator()(const std::string& text) { node.setAttribute(option.attribute, text); }
  void operator()(bool isOn) { node.setAttribute(option.attribute, isOn ? kTrue : kFalse); }
  void operator()(const std::vector<ListedText>& texts) { WriteTexts(document, node, option, texts); }
};

UndoWrite WritePresence(XmlDocument& document, const XmlDocument& defaults, const OptionSpec& option, bool isOn) {
  const XmlElement node = document.selectSingleNode(option.path);
  if (static_cast<bool>(node) == isOn) return [] {};
  if (isOn) return [made = Transplant(document, defaults, option)] { Remove(made); };
  auto parent = node.parentNode();
  const auto behind = node.nextSibling();
  parent.removeChild(node);
  return [parent, node, behind]() mutable { parent.insertBefore(node, behind); };
}

void Write(XmlDocument& document, const OptionSpec& option, const OptionValue& value) {
  std::visit(ValueWriter{document, document.selectSingleNode(option.path), option}, value);
}

}  // namespace

std::optional<OptionValue> ReadOption(const XmlDocument& document, const OptionSpec& option) {
  const XmlElement node = document.selectSingleNode(option.path);
  if (option.kind == OptionKind::Presence) return OptionValue(static_cast<bool>(node));
  if (!node) return std::nullopt;
  if (option.kind == OptionKind::Boolean) return OptionValue(node.AttributeOr(option.attribute, kFalse) == kTrue);
  if (option.kind != OptionKind::Texts) return OptionValue(node.AttributeOr(option.attribute, ""));
  std::vector<ListedText> texts;
  for (const XmlElement& element : ListElements(node, option)) {
    texts.push_back({element.AttributeOr(option.attribute, ""), element.AttributeOr(kChecked, kFalse) == kTrue});
  }
  return OptionValue(std::move(texts));
}

UndoWrite WriteOption(XmlDocument& document, const XmlDocument& defaults, const OptionSpec& option,
                      const OptionValue& value) {
  if (option.kind == OptionKind::Presence) return WritePresence(document, defaults, option, std::get<bool>(value));
  UndoWrite undo;
  if (const XmlElement node = document.selectSingleNode(option.path)) {
    undo = [node, before = document.importNode(node)] {
      node.parentNode().insertBefore(before, node);
      Remove(node);
    };
  } else {
    undo = [made = Transplant(document, defaults, option)] { Remove(made); };
  }
  try {
    Write(document, option, value);
  } catch (const platform::Error&) {
    undo();
    throw;
  }
  return undo;
}

}  // namespace qmrules::desktop
