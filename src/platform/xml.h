#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace qmrules::platform {

// The nodes behind the handles; lives as long as the last handle to the document or to one of its elements.
class XmlTree;

// What a document may cost. Anything beyond is refused on reading.
struct XmlLimits {
  std::size_t bytes = std::size_t{256} * 1024 * 1024;  // at most 2 GiB - 1
  int depth = 256;                                     // elements within elements, the root counted; at most 2048
};

// An element of an XmlDocument, held by a light handle that keeps the document alive. A default-made handle stands for
// "no element" and tests false; every other call on it throws Error. Text is UTF-8.
//
// No element dies before its document: one that was taken out, or made and never put in, keeps its storage until the
// last handle to the document and its elements is gone. So a handle never dangles.
class XmlElement {
 public:
  XmlElement() = default;
  explicit operator bool() const { return node_ != nullptr; }
  friend bool operator==(const XmlElement& a, const XmlElement& b) { return a.node_ == b.node_; }

  // The name as written, its namespace prefix included.
  std::string nodeName() const;
  std::string tagName() const { return nodeName(); }

  // The attribute's value, or nothing when it is absent.
  std::optional<std::string> getAttribute(std::string_view name) const;
  // The attribute's value, or `otherwise`.
  std::string AttributeOr(std::string_view name, std::string_view otherwise) const;
  // Sets or adds the attribute. Throws Error, naming the attribute and with nothing changed, for a name that XML does
  // not allow and for a text that it cannot hold: malformed UTF-8, U+FFFE and U+FFFF, and codes below 32 except 9, 10
  // and 13. A new attribute comes behind the others.
  void setAttribute(std::string_view name, std::string_view value);
  // An absent attribute is no error.
  void removeAttribute(std::string_view name);

  // The first element that the XPath 1.0 expression selects from here, in document order, or none. Throws Error, with
  // the expression, when it is not one or gives something else than nodes. Nodes that are no elements are passed over.
  // A path from "/" on starts at the document, also for a detached element; where a name follows that "/" and does not
  // begin with a letter of ASCII or "_", it is written "/child::NAME".
  XmlElement selectSingleNode(std::string_view xpath) const;
  std::vector<XmlElement> selectNodes(std::string_view xpath) const;

  // Elements only; text, comments and the rest are passed over.
  XmlElement firstChild() const;
  XmlElement nextSibling() const;
  XmlElement parentNode() const;

  // Put a detached element, or one of the same document from its present place, under this one, and return it. Error,
  // with nothing changed, for an element of another document and for one that is or holds this element.
  XmlElement appendChild(const XmlElement& child);
  // Before `reference`, a child of this element; at the end when `reference` is no element. Error, with nothing
  // changed, for a reference that is not a child.
  XmlElement insertBefore(const XmlElement& child, const XmlElement& reference);
  // Takes the child out; it stays usable, detached. Error for an element that is not a child of this one.
  void removeChild(const XmlElement& child);

  // All character data in the element.
  std::string text() const;
  // The element as XML text, without a declaration.
  std::string xml() const;

 private:
  friend class XmlDocument;
  friend class XmlTree;
  XmlElement(std::shared_ptr<XmlTree> tree, void* node) : tree_(std::move(tree)), node_(node) {}
  std::shared_ptr<XmlTree> tree_;
  void* node_ = nullptr;
};

// A parsed or growing XML document. Copies of the handle share the document. Nothing is fetched from outside the text,
// and a document type declaration that defines entities or default values of attributes is refused. Elements of what a
// document held before a load stay usable, but are no part of it any more.
class XmlDocument {
 public:
  // An empty document, without a root.
  XmlDocument();

  // Parses a UTF-8 text. The encoding in its declaration, any that iconv knows, tells how save() is to write. Throws
  // Error "NAME:LINE:COLUMN: reason" (both from 1), the document then being as before. url() becomes "".
  void loadXML(std::string_view text, std::string_view name = "XML text", const XmlLimits& limits = {});
  // Parses a file whose bytes are in the encoding of its declaration or byte order mark, otherwise in UTF-8. The error
  // names the path; so does the one for a file that cannot be read, without line and column. The path becomes url().
  void load(const std::string& path, const XmlLimits& limits = {});
  // Writes the file whole or not at all (a new file takes the old one's place), in the encoding of the declaration;
  // UTF-8 without one. A character that the encoding lacks goes out as a character reference. The path becomes url().
  // Throws Error, naming the file, when it cannot be written, when there is no root or when the name of an element or
  // attribute does not fit the encoding; the old file then stands.
  void save(const std::string& path);

  // The path last loaded or saved; "" for none.
  const std::string& url() const;
  // The document as UTF-8 text, with a declaration that says so.
  std::string xml() const;

  // The root, or none.
  XmlElement documentElement() const;
  // As for an element, from the document on.
  XmlElement selectSingleNode(std::string_view xpath) const;
  std::vector<XmlElement> selectNodes(std::string_view xpath) const;

  // A detached element of this document. Throws Error for a name that XML does not allow.
  XmlElement createElement(std::string_view name);
  // Makes the detached element the root. Error when there is one.
  XmlElement appendChild(const XmlElement& root);
  // A deep copy of an element of any document, detached, as part of this one.
  XmlElement importNode(const XmlElement& element);

 private:
  struct State;
  std::shared_ptr<State> state_;
};

}  // namespace qmrules::platform
