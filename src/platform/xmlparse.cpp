#include <fmt/format.h>
#include <libxml/SAX2.h>
#include <libxml/parser.h>
#include <libxml/parserInternals.h>

#include <algorithm>
#include <climits>
#include <new>

#include "platform/encoding.h"
#include "platform/error.h"
#include "platform/xmltree.h"

namespace qmrules::platform {

namespace {

struct ParserDeleter {
  void operator()(xmlParserCtxt* parser) const {
    if (parser->myDoc != nullptr) xmlFreeDoc(parser->myDoc);
    xmlFreeParserCtxt(parser);
  }
};
using ParserPointer = std::unique_ptr<xmlParserCtxt, ParserDeleter>;

// What the reader itself refuses, beside what is not well-formed.
struct Watch {
  int depthLimit = 0;
  std::string refusal;  // "" for none
  int line = 0;
  int column = 0;
};

xmlParserCtxt* ParserOf(void* context) {
  return static_cast<xmlParserCtxt*>(context);
}

void Refuse(xmlParserCtxt* parser, std::string reason) {
  auto& watch = *static_cast<Watch*>(parser->_private);
  if (!watch.refusal.empty()) return;
  watch.refusal = std::move(reason);
  watch.line = parser->input->line;
  watch.column = parser->input->col;
  xmlStopParser(parser);
}

// The parser calls these; no exception may pass through it.

void OnElement(void* context, const xmlChar* name, const xmlChar* prefix, const xmlChar* uri, int namespaceCount,
               const xmlChar** namespaces, int attributeCount, int defaultCount, const xmlChar** attributes) noexcept {
  xmlParserCtxt* parser = ParserOf(context);
  const int limit = static_cast<const Watch*>(parser->_private)->depthLimit;
  if (parser->nodeNr >= limit) {
    Refuse(parser, fmt::format("Elements are nested more than {} deep", limit));
    return;
  }
  xmlSAX2StartElementNs(context, name, prefix, uri, namespaceCount, namespaces, attributeCount, defaultCount,
                        attributes);
}

void OnEntity(void* context, const xmlChar* name, int, const xmlChar*, const xmlChar*, xmlChar*) noexcept {
  Refuse(ParserOf(context),
         fmt::format("The document defines the entity \"{}\"; entities are not taken", PlainText(name)));
}

void OnUnparsedEntity(void* context, const xmlChar* name, const xmlChar*, const xmlChar*, const xmlChar*) noexcept {
  OnEntity(context, name, 0, nullptr, nullptr, nullptr);
}

void OnAttribute(void* context, const xmlChar* element, const xmlChar* name, int type, int defaultKind,
                 const xmlChar* defaultValue, xmlEnumeration* values) noexcept {
  if (defaultValue != nullptr) {
    xmlFreeEnumeration(values);
    Refuse(ParserOf(context),
           fmt::format("The document gives the attribute \"{}\" a default value; such are not taken", PlainText(name)));
    return;
  }
  xmlSAX2AttributeDecl(context, element, name, type, defaultKind, defaultValue, values);
}

ParserPointer NewParser(Watch& watch) {
  xmlInitParser();  // which does nothing when called again
  ParserPointer parser(xmlNewParserCtxt());
  if (!parser) throw std::bad_alloc();
  parser->_private = &watch;
  parser->sax->startElementNs = &OnElement;
  parser->sax->entityDecl = &OnEntity;
  parser->sax->unparsedEntityDecl = &OnUnparsedEntity;
  parser->sax->attributeDecl = &OnAttribute;
  return parser;
}

Error At(std::string_view name, int line, int column, std::string_view reason) {
  return Error(fmt::format("{}:{}:{}: {}", name, std::max(line, 1), std::max(column, 1), reason));
}

XmlDocumentPointer Parse(std::string_view bytes, std::string_view name, const XmlLimits& limits, const char* encoding,
                         int options) {
  const std::size_t limit = std::min(limits.bytes, static_cast<std::size_t>(INT_MAX));
  if (bytes.size() > limit) {
    throw Error(fmt::format("{}: the document has {} bytes, and at most {} are read", name, bytes.size(), limit));
  }
  if (bytes.empty()) throw At(name, 1, 1, "Document is empty");
  Watch watch;
  watch.depthLimit = limits.depth;
  const XmlErrors errors;
  const ParserPointer parser = NewParser(watch);
  // The library's own limits are lifted: the bytes and the depth are bounded here, and no entity multiplies them.
  XmlDocumentPointer document(xmlCtxtReadMemory(parser.get(), bytes.data(), static_cast<int>(bytes.size()), nullptr,
                                                encoding,
                                                options | XML_PARSE_NONET | XML_PARSE_NOCDATA | XML_PARSE_HUGE));
  if (!watch.refusal.empty()) throw At(name, watch.line, watch.column, watch.refusal);
  if (errors.Found()) throw At(name, errors.Found()->line, errors.Found()->column, errors.Found()->reason);
  if (!document) throw At(name, 1, 1, "The document cannot be read");
  // The library takes a NUL behind the root for the end.
  const xmlParserInput* input = parser->input;
  if (input != nullptr && input->cur < input->end)
    throw At(name, input->line, input->col, "A NUL character stands behind the root element");
  return document;
}

// The encoding that the declaration at the front of a document names, as a part of the text; "" for none.
std::string_view DeclaredEncoding(std::string_view text) {
  if (text.starts_with("\xEF\xBB\xBF")) text.remove_prefix(3);
  if (!text.starts_with("<?xml") || text.size() < 6 || std::string_view(" \t\r\n").find(text[5]) == text.npos)
    return {};
  text = text.substr(0, text.find("?>"));
  std::size_t at = text.find("encoding");
  if (at == std::string_view::npos) return {};
  const std::size_t open = text.find_first_of("\"'", at);
  const std::size_t close = open == std::string_view::npos ? open : text.find(text[open], open + 1);
  return close == std::string_view::npos ? std::string_view() : text.substr(open + 1, close - open - 1);
}

}  // namespace

ParsedXml ParseXmlText(std::string_view text, std::string_view name, const XmlLimits& limits) {
  ParsedXml parsed{Parse(text, name, limits, "UTF-8", XML_PARSE_IGNORE_ENC), ""};
  const std::string_view encoding = DeclaredEncoding(text);
  if (!IsKnownEncoding(encoding)) {
    const std::string_view before = text.substr(0, static_cast<std::size_t>(encoding.data() - text.data()));
    const auto line = static_cast<int>(std::ranges::count(before, '\n')) + 1;
    const auto column = static_cast<int>(before.size() - (before.rfind('\n') + 1)) + 1;
    throw At(name, line, column, fmt::format("The encoding \"{}\" is not known", encoding));
  }
  parsed.encoding = std::string(encoding);
  return parsed;
}

ParsedXml ParseXmlBytes(std::string_view bytes, std::string_view name, const XmlLimits& limits) {
  // Where the declaration can be read as it stands, its name means here what it means to all text files.
  const std::string declared(DeclaredEncoding(bytes));
  const std::string meant = IconvName(declared);
  if (meant != declared) return {Parse(bytes, name, limits, meant.c_str(), XML_PARSE_IGNORE_ENC), declared};
  ParsedXml parsed{Parse(bytes, name, limits, nullptr, 0), ""};
  parsed.encoding = PlainText(parsed.document->encoding);
  return parsed;
}

}  // namespace qmrules::platform
