#include <fmt/format.h>
#include <libxml/tree.h>

#include <new>

#include "platform/encoding.h"
#include "platform/error.h"
#include "platform/xmltree.h"
#include "shell/utf16.h"
#include "shell/utf8.h"

namespace qmrules::platform {

namespace {

std::string QualifiedName(const xmlNs* space, const xmlChar* name) {
  if (space == nullptr || space->prefix == nullptr) return PlainText(name);
  return PlainText(space->prefix) + ":" + PlainChars(name);
}

bool HasName(const xmlAttr* attribute, std::string_view name) {
  if (attribute->ns == nullptr || attribute->ns->prefix == nullptr) return name == PlainChars(attribute->name);
  return name == QualifiedName(attribute->ns, attribute->name);
}

xmlAttr* FindAttribute(const xmlNode* node, std::string_view name) {
  for (xmlAttr* attribute = node->properties; attribute != nullptr; attribute = attribute->next) {
    if (HasName(attribute, name)) return attribute;
  }
  return nullptr;
}

// The characters that XML 1.0 can hold.
bool IsXmlCharacter(char32_t character) {
  if (character < 0x20) return character == '\t' || character == '\n' || character == '\r';
  return character != 0xFFFE && character != 0xFFFF;
}

void RequireXmlText(std::string_view attribute, std::string_view text) {
  for (std::size_t at = 0; at < text.size();) {
    const shell::Utf8Step step = shell::DecodeAt(text, at);
    if (step.value >= shell::kMalformedByte) {
      throw Error(
          fmt::format("The text for the attribute \"{}\" is not valid UTF-8 at byte offset {}.", attribute, at));
    }
    if (!IsXmlCharacter(step.value)) {
      throw Error(fmt::format("The attribute \"{}\" cannot hold the character U+{:04X} (character {} of its text).",
                              attribute, static_cast<unsigned>(step.value),
                              shell::CharacterCount(text.substr(0, at)) + 1));
    }
    at += step.length;
  }
}

Error NotAnAttributeName(std::string_view name) {
  return Error(fmt::format("\"{}\" is not a name for an XML attribute.", name));
}

// Where a new attribute's prefix leads; nullptr for a name without one.
xmlNs* NamespaceFor(xmlNode* node, const std::string& name) {
  // Declarations of namespaces look like attributes and are none.
  RequireXmlName(name);
  if (xmlValidateQName(XmlChars(name), 0) != 0 || name == "xmlns" || name.starts_with("xmlns:")) {
    throw NotAnAttributeName(name);
  }
  const std::size_t colon = name.find(':');
  if (colon == std::string::npos) return nullptr;
  xmlNs* space = xmlSearchNs(node->doc, node, XmlChars(name.substr(0, colon)));
  if (space == nullptr) {
    throw Error(fmt::format("The prefix of the attribute \"{}\" is not declared in the document.", name));
  }
  return space;
}

// Makes the names of a subtree good in its new place: a prefix that is declared above the old one is declared anew.
void DeclareNamespaces(xmlNode* node) {
  if (xmlReconciliateNs(node->doc, node) < 0) throw std::bad_alloc();
}

void RequireOutside(const xmlNode* child, const xmlNode* parent) {
  for (const xmlNode* above = parent; above != nullptr; above = above->parent) {
    if (above == child) {
      throw Error(fmt::format("The element \"{}\" cannot be placed within itself.", PlainText(child->name)));
    }
  }
}

Error NotAChild(const xmlNode* child, const xmlNode* parent) {
  return Error(
      fmt::format("The element \"{}\" is not a child of \"{}\".", PlainText(child->name), PlainText(parent->name)));
}

}  // namespace

std::string XmlElement::nodeName() const {
  const xmlNode* node = XmlTree::NodeOf(*this);
  return QualifiedName(node->ns, node->name);
}

std::optional<std::string> XmlElement::getAttribute(std::string_view name) const {
  const xmlNode* node = XmlTree::NodeOf(*this);
  const xmlAttr* attribute = FindAttribute(node, name);
  if (attribute == nullptr) return std::nullopt;
  const XmlTextPointer value(xmlNodeListGetString(node->doc, attribute->children, 1));
  return PlainText(value.get());
}

std::string XmlElement::AttributeOr(std::string_view name, std::string_view otherwise) const {
  return getAttribute(name).value_or(std::string(otherwise));
}

void XmlElement::setAttribute(std::string_view name, std::string_view value) {
  xmlNode* node = XmlTree::NodeOf(*this);
  const xmlAttr* present = FindAttribute(node, name);
  const std::string written(name);
  xmlNs* space = present != nullptr ? present->ns : NamespaceFor(node, written);
  RequireXmlText(name, value);
  const std::size_t colon = written.find(':');
  const std::string local = colon == std::string::npos ? written : written.substr(colon + 1);
  if (xmlSetNsProp(node, space, XmlChars(local), XmlChars(std::string(value))) == nullptr) throw std::bad_alloc();
}

void XmlElement::removeAttribute(std::string_view name) {
  xmlNode* node = XmlTree::NodeOf(*this);
  if (xmlAttr* attribute = FindAttribute(node, name)) xmlRemoveProp(attribute);
}

XmlElement XmlElement::selectSingleNode(std::string_view xpath) const {
  const auto found = XmlTree::Select(tree_, XmlTree::NodeOf(*this), xpath, true);
  return found.empty() ? XmlElement() : found.front();
}

std::vector<XmlElement> XmlElement::selectNodes(std::string_view xpath) const {
  return XmlTree::Select(tree_, XmlTree::NodeOf(*this), xpath, false);
}

XmlElement XmlElement::firstChild() const {
  return XmlTree::Handle(tree_, xmlFirstElementChild(XmlTree::NodeOf(*this)));
}

XmlElement XmlElement::nextSibling() const {
  return XmlTree::Handle(tree_, xmlNextElementSibling(XmlTree::NodeOf(*this)));
}

XmlElement XmlElement::parentNode() const {
  xmlNode* parent = XmlTree::NodeOf(*this)->parent;
  return parent != nullptr && parent->type == XML_ELEMENT_NODE ? XmlElement(tree_, parent) : XmlElement();
}

XmlElement XmlElement::appendChild(const XmlElement& child) {
  return insertBefore(child, XmlElement());
}

XmlElement XmlElement::insertBefore(const XmlElement& child, const XmlElement& reference) {
  xmlNode* parent = XmlTree::NodeOf(*this);
  xmlNode* added = tree_->OwnNodeOf(child);
  xmlNode* next = reference ? tree_->OwnNodeOf(reference) : nullptr;
  RequireOutside(added, parent);
  if (next != nullptr && next->parent != parent) throw NotAChild(next, parent);
  if (next == added) return child;
  xmlUnlinkNode(added);
  if (next == nullptr) {
    xmlAddChild(parent, added);
  } else {
    xmlAddPrevSibling(next, added);
  }
  tree_->Attached(added);
  DeclareNamespaces(added);
  return child;
}

void XmlElement::removeChild(const XmlElement& child) {
  const xmlNode* parent = XmlTree::NodeOf(*this);
  xmlNode* removed = tree_->OwnNodeOf(child);
  if (removed->parent != parent) throw NotAChild(removed, parent);
  tree_->Detached(removed);
  xmlUnlinkNode(removed);
  DeclareNamespaces(removed);
}

std::string XmlElement::text() const {
  const XmlTextPointer content(xmlNodeGetContent(XmlTree::NodeOf(*this)));
  return PlainText(content.get());
}

std::string XmlElement::xml() const {
  xmlNode* node = XmlTree::NodeOf(*this);
  const std::unique_ptr<xmlBuffer, decltype(&xmlBufferFree)> buffer(xmlBufferCreate(), &xmlBufferFree);
  if (!buffer || xmlNodeDump(buffer.get(), node->doc, node, 0, 0) < 0) throw std::bad_alloc();
  return PlainText(xmlBufferContent(buffer.get()));
}

}  // namespace qmrules::platform
