#include "workbench/codemodel/modelbuilder.h"

#include <fmt/format.h>

#include <algorithm>
#include <limits>
#include <stdexcept>
#include <utility>

namespace qmrules::workbench::codemodel {

namespace {
constexpr std::size_t kMostFiles = std::numeric_limits<std::uint16_t>::max();
// Nodes for tokens in programs with many operands, and room for the shortest program.
constexpr std::size_t kUsualNodes = 5, kUsualTokens = 8, kLeastRoom = 64;  // nodes
}  // namespace

ModelBuilder::ModelBuilder(const ExpandedText& text, Diagnostics& diagnostics)
    : text_(text), tokens_(static_cast<std::uint32_t>(text.tokens.size())), diagnostics_(diagnostics) {
  if (text.tokens.empty() || text.files.empty() || text.inclusions.empty()) {
    throw std::logic_error("A model is built from a text that has a file and is ended by a token.");
  }
  data_.nodes.emplace_back();
  if (text.files.size() > kMostFiles) {
    diagnostics_.Add({Severity::Gap, text.files[0]->Name(), 0, 0,
                      fmt::format("The program has more than {} files. What stands in the others is shown at the COPY "
                                  "that leads to it.",
                                  kMostFiles)});
  }
}

// Room for the nodes of all tokens from this one on: at first for what a program usually has, which it nearly always
// stays below, since moving the nodes costs more than memory that is never touched; later for what is seen.
void ModelBuilder::MakeRoom(std::uint32_t token) {
  const std::size_t nodes = data_.nodes.size();
  const std::size_t rest = tokens_ - token;
  std::size_t room = rest * kUsualNodes / kUsualTokens + kLeastRoom;
  if (nodes > 1) {
    const std::size_t begin = data_.nodes[1].order;
    const std::size_t used = token > begin ? token - begin : 1;
    room = nodes + std::clamp(rest * nodes / used, nodes / 2, nodes / 2 + rest);
  }
  data_.nodes.reserve(room);
}

NodeId ModelBuilder::Add(Entity entity, std::uint32_t firstToken) {
  if (data_.nodes.size() == data_.nodes.capacity()) MakeRoom(Existing(firstToken));
  const auto node = static_cast<NodeId>(data_.nodes.size());
  NodeRecord& record = data_.nodes.emplace_back();
  record.entity = entity;
  record.parent = Current();
  record.last = node;
  record.order = Existing(firstToken);
  return node;
}

NodeId ModelBuilder::Open(Entity entity, std::uint32_t firstToken) {
  const NodeId node = Add(entity, firstToken);
  open_.push_back(node);
  return node;
}

void ModelBuilder::Close(NodeId node, std::uint32_t lastToken) {
  if (Current() != node || node == 0) throw std::logic_error("Only the innermost open node can be closed.");
  open_.pop_back();
  NodeRecord& record = data_.nodes[node];
  record.last = LastNode();
  SetPlace(record, lastToken);
}

NodeId ModelBuilder::Leaf(Entity entity, std::uint32_t firstToken, std::uint32_t lastToken) {
  const NodeId node = Add(entity, firstToken);
  SetPlace(data_.nodes[node], lastToken);
  return node;
}

void ModelBuilder::SetPlace(NodeRecord& node, std::uint32_t lastToken) const {
  const Token& first = text_.tokens[node.order];
  const Token& last = text_.tokens[std::max(Existing(lastToken), node.order)];
  Place begin = PlaceOf(first);
  Place end = PlaceOf(last);
  if (begin.inclusion != end.inclusion) LiftToCommon(begin, end);
  while (text_.inclusions[begin.inclusion].file >= kMostFiles) {
    LiftToParent(begin);
    LiftToParent(end);
  }
  const std::uint32_t fileIndex = text_.inclusions[begin.inclusion].file;
  const SourceFile& file = *text_.files[fileIndex];
  node.file = static_cast<std::uint16_t>(fileIndex);
  node.firstRow = begin.firstRow;
  node.lastRow = std::max(begin.firstRow, end.lastRow);
  node.position = file.Character(begin.offset, begin.firstRow);
  node.endPosition = std::max(node.position, file.Character(end.end, end.lastRow));
}

ModelBuilder::Place ModelBuilder::PlaceOf(const Token& token) const {
  Place place{token.inclusion, token.offset, token.offset + token.length, token.row, token.row};
  // Only a token that is not written in one piece can reach into another row.
  if ((token.flags & (kComposed | kReplaced)) != 0 && token.length != 0) {
    place.lastRow = text_.File(token).RowOf(place.end - 1);
  }
  return place;
}

// To the innermost inclusion that holds both.
void ModelBuilder::LiftToCommon(Place& first, Place& last) const {
  while (first.inclusion != last.inclusion) {
    const std::uint32_t firstDepth = text_.inclusions[first.inclusion].depth;
    const std::uint32_t lastDepth = text_.inclusions[last.inclusion].depth;
    if (firstDepth >= lastDepth) LiftToParent(first);
    if (lastDepth >= firstDepth) LiftToParent(last);
  }
}

void ModelBuilder::LiftToParent(Place& place) const {
  const Inclusion& inclusion = text_.inclusions[place.inclusion];
  place = {inclusion.parent, inclusion.offset, inclusion.end, inclusion.row, inclusion.endRow};
}

TextId ModelBuilder::SymbolText(std::uint32_t symbol, std::string_view text) {
  if (symbol >= symbolTexts_.size()) symbolTexts_.resize(std::max<std::size_t>(symbol + 1, symbolTexts_.size() * 2));
  TextId& known = symbolTexts_[symbol];
  if (known == 0) known = texts_.Add(text);
  return known;
}

DeclRecord& ModelBuilder::AddDecl(NodeId node) {
  data_.nodes[node].detail = static_cast<std::uint32_t>(data_.decls.size());
  DeclRecord& decl = data_.decls.emplace_back();
  decl.node = node;
  return decl;
}

FileRecord& ModelBuilder::AddFile(NodeId node) {
  data_.nodes[node].detail = static_cast<std::uint32_t>(data_.fileRecords.size());
  FileRecord& file = data_.fileRecords.emplace_back();
  file.node = node;
  return file;
}

void ModelBuilder::Report(Severity severity, std::uint32_t token, std::string text) {
  const Token& place = text_.tokens[Existing(token)];
  const SourceFile& file = text_.File(place);
  diagnostics_.Add({severity, file.Name(), place.row, file.Column(place.offset), std::move(text)});
  if (severity != Severity::Gap) return;
  const auto statement = std::find_if(open_.rbegin(), open_.rend(),
                                      [this](NodeId node) { return IsKindOf(data_.nodes[node].entity, Entity::Stat); });
  if (statement != open_.rend()) data_.nodes[*statement].flags |= kGap;
}

ModelData ModelBuilder::Take(std::string language) {
  if (!open_.empty()) throw std::logic_error("A model is taken once all its nodes are closed.");
  // What was set aside for the rest of the text is given back: there may be many programs in it.
  if (data_.nodes.capacity() > data_.nodes.size() * 2) data_.nodes.shrink_to_fit();
  data_.language = std::move(language);
  // A program that is one of many in its file has far fewer nodes than the rest of the file seemed to have.
  if (data_.nodes.capacity() / 2 > data_.nodes.size()) data_.nodes.shrink_to_fit();
  data_.texts = texts_.Take();
  data_.diagnostics = diagnostics_.Take();
  data_.dependencies = text_.dependencies;
  data_.rows = text_.files[0]->Rows();
  data_.files.reserve(text_.files.size());
  for (std::size_t index = 0; index < text_.files.size(); ++index) {
    FileEntry& entry = data_.files.emplace_back(FileEntry{text_.files[index]->Name(), {}});
    if (index < text_.hashes.size()) std::ranges::copy(text_.hashes[index], entry.hash);
  }
  return std::exchange(data_, {});
}

}  // namespace qmrules::workbench::codemodel
