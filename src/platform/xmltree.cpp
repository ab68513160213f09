#include "platform/xmltree.h"

#include <fmt/format.h>
#include <libxml/xpath.h>

#include <cctype>
#include <new>

#include "platform/encoding.h"
#include "platform/error.h"
#include "shell/utf16.h"

namespace qmrules::platform {

namespace {

struct XPathContextDeleter {
  void operator()(xmlXPathContext* context) const { xmlXPathFreeContext(context); }
};
struct XPathObjectDeleter {
  void operator()(xmlXPathObject* object) const { xmlXPathFreeObject(object); }
};

// The library's words without what only its own developers can use: that a routine speaks, and the bytes after.
std::string ForReader(const char* message) {
  std::string_view text(message == nullptr ? "unknown error" : message);
  text = text.substr(0, text.find('\n'));
  if (text.starts_with("xmlParse")) text.remove_prefix(8);
  while (text.ends_with(' ')) text.remove_suffix(1);
  return std::string(text);
}

Error RefusedXPath(std::string_view xpath, const std::optional<XmlErrors::First>& found) {
  if (!found) return Error(fmt::format("The XPath expression \"{}\" does not select elements.", xpath));
  const std::size_t place = std::min(static_cast<std::size_t>(std::max(found->place, 0)), xpath.size());
  return Error(fmt::format("The XPath expression \"{}\" is refused at column {}: {}.", xpath,
                           shell::CharacterCount(xpath.substr(0, place)) + 1, found->reason));
}

}  // namespace

void RequireXmlName(std::string_view name) {
  if (name.find('\0') != std::string_view::npos || MalformedAt(name)) {
    throw Error("A name for XML holds a NUL character or is not valid UTF-8.");
  }
}

XmlTree::XmlTree(XmlDocumentPointer document, std::string encoding)
    : document_(std::move(document)), encoding_(std::move(encoding)) {
  xmlFree(const_cast<xmlChar*>(document_->encoding));
  document_->encoding = xmlCharStrdup("UTF-8");
  if (document_->encoding == nullptr) throw std::bad_alloc();
}

XmlTree::~XmlTree() {
  for (xmlNode* node : detached_) xmlFreeNode(node);
}

XmlElement XmlTree::Handle(const std::shared_ptr<XmlTree>& tree, xmlNode* node) {
  return node == nullptr ? XmlElement() : XmlElement(tree, node);
}

xmlNode* XmlTree::NodeOf(const XmlElement& element) {
  if (!element) throw Error("The XML element that is asked for is not there.");
  return static_cast<xmlNode*>(element.node_);
}

xmlNode* XmlTree::OwnNodeOf(const XmlElement& element) const {
  xmlNode* node = NodeOf(element);
  if (node->doc != document_.get()) {
    throw Error(fmt::format("The element \"{}\" belongs to another document; place a copy made by importNode.",
                            element.nodeName()));
  }
  return node;
}

std::vector<XmlElement> XmlTree::Select(const std::shared_ptr<XmlTree>& tree, xmlNode* context, std::string_view xpath,
                                        bool firstOnly) {
  if (xpath.find('\0') != std::string_view::npos || MalformedAt(xpath)) {
    throw Error("An XPath expression holds a NUL character or is not valid UTF-8.");
  }
  const XmlErrors errors;
  const std::unique_ptr<xmlXPathContext, XPathContextDeleter> run(xmlXPathNewContext(tree->Document()));
  if (!run) throw std::bad_alloc();
  run->node = context;
  const std::unique_ptr<xmlXPathObject, XPathObjectDeleter> selected(
      xmlXPathEvalExpression(XmlChars(std::string(xpath)), run.get()));
  if (errors.Found() || !selected || selected->type != XPATH_NODESET) throw RefusedXPath(xpath, errors.Found());

  std::vector<XmlElement> elements;
  const xmlNodeSet* nodes = selected->nodesetval;
  for (int i = 0; nodes != nullptr && i < nodes->nodeNr; ++i) {
    if (nodes->nodeTab[i]->type != XML_ELEMENT_NODE) continue;
    elements.push_back(Handle(tree, nodes->nodeTab[i]));
    if (firstOnly) break;
  }
  return elements;
}

XmlErrors::XmlErrors()
    : formerHandler_(xmlStructuredError),
      formerContext_(xmlStructuredErrorContext),
      formerPrinter_(xmlGenericError),
      formerPrinterContext_(xmlGenericErrorContext) {
  xmlSetStructuredErrorFunc(this, &XmlErrors::Take);
  xmlSetGenericErrorFunc(nullptr, &XmlErrors::DropPrint);
}

XmlErrors::~XmlErrors() {
  xmlSetStructuredErrorFunc(formerContext_, formerHandler_);
  xmlSetGenericErrorFunc(formerPrinterContext_, formerPrinter_);
}

void XmlErrors::Take(void* errors, xmlError* error) noexcept {
  auto& first = static_cast<XmlErrors*>(errors)->first_;
  if (first || error->level < XML_ERR_ERROR) return;
  first = First{ForReader(error->message), error->line, error->int2, error->int1};
}

}  // namespace qmrules::platform
