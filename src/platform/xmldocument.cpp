#include <fmt/format.h>
#include <libxml/tree.h>
#include <libxml/xmlsave.h>

#include <new>

#include "platform/diskfile.h"
#include "platform/encoding.h"
#include "platform/error.h"
#include "platform/filefailure.h"
#include "platform/xmltree.h"

namespace qmrules::platform {

// What the copies of a document's handle share.
struct XmlDocument::State {
  std::shared_ptr<XmlTree> tree;
  std::string url;
};

namespace {

std::shared_ptr<XmlTree> EmptyTree() {
  XmlDocumentPointer document(xmlNewDoc(XmlChars("1.0")));
  if (!document) throw std::bad_alloc();
  return std::make_shared<XmlTree>(std::move(document));
}

// The next node of the document in its order, or nullptr.
const xmlNode* NextInOrder(const xmlNode* node) {
  if (node->type == XML_ELEMENT_NODE && node->children != nullptr) return node->children;
  while (node != nullptr && node->next == nullptr) node = node->parent;
  return node == nullptr ? nullptr : node->next;
}

bool IsAscii(const xmlChar* text) {
  for (; *text != 0; ++text) {
    if (*text >= 0x80) return false;
  }
  return true;
}

// A character that the encoding lacks can go out as a reference in a text, but not in a name.
void RequireNamesFit(const xmlDoc* document, const std::string& encoding) {
  for (const xmlNode* node = xmlDocGetRootElement(document); node != nullptr; node = NextInOrder(node)) {
    if (node->type != XML_ELEMENT_NODE) continue;
    if (!IsAscii(node->name)) EncodeText(PlainText(node->name), encoding);
    for (const xmlAttr* attribute = node->properties; attribute != nullptr; attribute = attribute->next) {
      if (!IsAscii(attribute->name)) EncodeText(PlainText(attribute->name), encoding);
    }
  }
}

// The document as UTF-8 text whose declaration names the encoding.
std::string Write(xmlDoc* document, const std::string& encoding) {
  const XmlErrors errors;
  const std::unique_ptr<xmlBuffer, decltype(&xmlBufferFree)> text(xmlBufferCreate(), &xmlBufferFree);
  xmlOutputBuffer* output = text ? xmlOutputBufferCreateBuffer(text.get(), nullptr) : nullptr;
  if (output == nullptr) throw std::bad_alloc();
  const int written = xmlSaveFileTo(output, document, encoding.c_str());  // which also closes the output
  if (errors.Found()) throw Error(errors.Found()->reason);
  if (written < 0) throw std::bad_alloc();
  return {PlainChars(xmlBufferContent(text.get())), static_cast<std::size_t>(xmlBufferLength(text.get()))};
}

}  // namespace

XmlDocument::XmlDocument() : state_(std::make_shared<State>(State{EmptyTree(), ""})) {}

void XmlDocument::loadXML(std::string_view text, std::string_view name, const XmlLimits& limits) {
  ParsedXml parsed = ParseXmlText(text, name, limits);
  state_->tree = std::make_shared<XmlTree>(std::move(parsed.document), std::move(parsed.encoding));
  state_->url.clear();
}

void XmlDocument::load(const std::string& path, const XmlLimits& limits) {
  ParsedXml parsed = ParseXmlBytes(ReadDiskFile(path, limits.bytes), path, limits);
  state_->tree = std::make_shared<XmlTree>(std::move(parsed.document), std::move(parsed.encoding));
  state_->url = path;
}

void XmlDocument::save(const std::string& path) {
  const XmlTree& tree = *state_->tree;
  if (xmlDocGetRootElement(tree.Document()) == nullptr) throw WriteFailure(path, "the document is empty");
  const std::string encoding = tree.Encoding().empty() ? "UTF-8" : tree.Encoding();
  std::string bytes;
  try {
    RequireNamesFit(tree.Document(), encoding);
    bytes = EncodeMarkup(Write(tree.Document(), encoding), encoding);
  } catch (const Error& failure) {
    throw Error(fmt::format("The file \"{}\" cannot be written. {}", path, failure.what()));
  }
  WriteDiskFile(path, bytes);
  state_->url = path;
}

const std::string& XmlDocument::url() const {
  return state_->url;
}

std::string XmlDocument::xml() const {
  return Write(state_->tree->Document(), "UTF-8");
}

XmlElement XmlDocument::documentElement() const {
  return XmlTree::Handle(state_->tree, xmlDocGetRootElement(state_->tree->Document()));
}

XmlElement XmlDocument::selectSingleNode(std::string_view xpath) const {
  const auto found = XmlTree::Select(state_->tree, reinterpret_cast<xmlNode*>(state_->tree->Document()), xpath, true);
  return found.empty() ? XmlElement() : found.front();
}

std::vector<XmlElement> XmlDocument::selectNodes(std::string_view xpath) const {
  return XmlTree::Select(state_->tree, reinterpret_cast<xmlNode*>(state_->tree->Document()), xpath, false);
}

XmlElement XmlDocument::createElement(std::string_view name) {
  const std::string written(name);
  RequireXmlName(written);
  if (xmlValidateNCName(XmlChars(written), 0) != 0) {
    throw Error(fmt::format("\"{}\" is not a name for an XML element.", name));
  }
  xmlNode* node = xmlNewDocNode(state_->tree->Document(), nullptr, XmlChars(written), nullptr);
  if (node == nullptr) throw std::bad_alloc();
  state_->tree->Detached(node);
  return XmlTree::Handle(state_->tree, node);
}

XmlElement XmlDocument::appendChild(const XmlElement& root) {
  xmlNode* node = state_->tree->OwnNodeOf(root);
  if (xmlDocGetRootElement(state_->tree->Document()) != nullptr) {
    throw Error(fmt::format("The document has a root element; \"{}\" cannot be another.", root.nodeName()));
  }
  xmlUnlinkNode(node);
  xmlDocSetRootElement(state_->tree->Document(), node);
  state_->tree->Attached(node);
  if (xmlReconciliateNs(state_->tree->Document(), node) < 0) throw std::bad_alloc();
  return root;
}

XmlElement XmlDocument::importNode(const XmlElement& element) {
  xmlNode* copy = xmlDocCopyNode(XmlTree::NodeOf(element), state_->tree->Document(), 1);
  if (copy == nullptr) throw std::bad_alloc();
  state_->tree->Detached(copy);
  return XmlTree::Handle(state_->tree, copy);
}

}  // namespace qmrules::platform
