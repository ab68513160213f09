#pragma once

#include <libxml/tree.h>
#include <libxml/xmlerror.h>

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "platform/xml.h"

// What xml.h keeps behind its handles. Included by the xml*.cpp files only: libxml2 shows nowhere else.

namespace qmrules::platform {

struct XmlDocumentDeleter {
  void operator()(xmlDoc* document) const { xmlFreeDoc(document); }
};
struct XmlTextDeleter {
  void operator()(xmlChar* text) const { xmlFree(text); }
};
using XmlDocumentPointer = std::unique_ptr<xmlDoc, XmlDocumentDeleter>;
using XmlTextPointer = std::unique_ptr<xmlChar, XmlTextDeleter>;

// The library's strings are of unsigned characters.
inline const xmlChar* XmlChars(const std::string& text) {
  return reinterpret_cast<const xmlChar*>(text.c_str());
}
inline const char* PlainChars(const xmlChar* text) {
  return reinterpret_cast<const char*>(text);
}
inline std::string PlainText(const xmlChar* text) {
  return text == nullptr ? std::string() : PlainChars(text);
}

// A document's nodes, those in it and those outside it. The library's own note of the encoding is always UTF-8, which
// keeps it from writing attributes with character references; the one to save in stands here.
class XmlTree {
 public:
  explicit XmlTree(XmlDocumentPointer document, std::string encoding = "");
  XmlTree(const XmlTree&) = delete;
  XmlTree& operator=(const XmlTree&) = delete;
  ~XmlTree();

  xmlDoc* Document() const { return document_.get(); }
  const std::string& Encoding() const { return encoding_; }  // "" for none

  // Called for each node that is outside the document from now on, or is again within it.
  void Detached(xmlNode* node) { detached_.insert(node); }
  void Attached(xmlNode* node) { detached_.erase(node); }

  // A handle; no element for nullptr.
  static XmlElement Handle(const std::shared_ptr<XmlTree>& tree, xmlNode* node);
  // The node of a handle; throws Error for no element.
  static xmlNode* NodeOf(const XmlElement& element);
  // The node of a handle that is to be placed in this tree; throws Error for an element of another.
  xmlNode* OwnNodeOf(const XmlElement& element) const;

  // Elements that the expression selects from `context`, in document order; at most one when `firstOnly`.
  static std::vector<XmlElement> Select(const std::shared_ptr<XmlTree>& tree, xmlNode* context, std::string_view xpath,
                                        bool firstOnly);

 private:
  XmlDocumentPointer document_;
  std::string encoding_;
  std::unordered_set<xmlNode*> detached_;
};

// Takes the library's errors while it lives, so that nothing goes to the error output; the first one is kept.
class XmlErrors {
 public:
  struct First {
    std::string reason;  // one line, for the reader
    int line = 0;        // from 1; 0 for none
    int column = 0;      // from 1; 0 for none
    int place = 0;       // bytes of an XPath expression before the error
  };
  XmlErrors();
  XmlErrors(const XmlErrors&) = delete;
  XmlErrors& operator=(const XmlErrors&) = delete;
  ~XmlErrors();
  const std::optional<First>& Found() const { return first_; }

 private:
  static void Take(void* errors, xmlError* error) noexcept;
  // Some errors are printed besides being handed over: those lines tell nothing more.
  static void DropPrint(void*, const char*, ...) noexcept {}
  std::optional<First> first_;
  xmlStructuredErrorFunc formerHandler_;
  void* formerContext_;
  xmlGenericErrorFunc formerPrinter_;
  void* formerPrinterContext_;
};

// Throws Error for a name that the library cannot be given as it is: one that holds a NUL or is not valid UTF-8.
void RequireXmlName(std::string_view name);

// What parsing came to.
struct ParsedXml {
  XmlDocumentPointer document;
  std::string encoding;  // of the declaration; "" for none
};
// UTF-8 text, whatever its declaration says. Throws Error "NAME:LINE:COLUMN: reason".
ParsedXml ParseXmlText(std::string_view text, std::string_view name, const XmlLimits& limits);
// Bytes in the encoding that they themselves tell.
ParsedXml ParseXmlBytes(std::string_view bytes, std::string_view name, const XmlLimits& limits);

}  // namespace qmrules::platform
