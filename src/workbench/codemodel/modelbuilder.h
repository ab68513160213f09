#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "workbench/codemodel/diagnostics.h"
#include "workbench/codemodel/expandedtext.h"
#include "workbench/codemodel/records.h"
#include "workbench/codemodel/textpool.h"

namespace qmrules::workbench::codemodel {

// Makes the nodes of a model in the order of the tree while a front end walks through the tokens of a program.
//
// Places of nodes are runs of tokens, told by index in ExpandedText::tokens. A node that begins in one file and ends in
// another, because a COPY lies in between, is given the place in the innermost file that holds both ends, the COPY
// statement standing there for what was copied:
//
//   10  IF A = 1                 from the program's own file
//   20      COPY BRANCH.         brings MOVE 1 TO B ELSE MOVE 2 TO B END-IF
//                                rows of the IF: 10 to 20 of the program's file
class ModelBuilder {
 public:
  // The text outlives the builder.
  ModelBuilder(const ExpandedText& text, Diagnostics& diagnostics);

  // Opens a node below the innermost open one. It begins with the token.
  NodeId Open(Entity entity, std::uint32_t firstToken);
  // Closes the innermost open node, which must be this one, with its last token (inclusive; not before its first one).
  void Close(NodeId node, std::uint32_t lastToken);
  // A node without children, open for nobody.
  NodeId Leaf(Entity entity, std::uint32_t firstToken, std::uint32_t lastToken);
  // The innermost open node, or 0.
  NodeId Current() const { return open_.empty() ? 0 : open_.back(); }

  // A node that was made. References are valid until the next one is made.
  NodeRecord& Node(NodeId node) { return data_.nodes[node]; }
  const NodeRecord& Node(NodeId node) const { return data_.nodes[node]; }
  NodeId LastNode() const { return static_cast<NodeId>(data_.nodes.size() - 1); }
  // The token with which a node begins, also before it is closed.
  std::uint32_t FirstToken(NodeId node) const { return data_.nodes[node].order; }

  // The number of a text in the pool: equal texts share one.
  TextId Text(std::string_view text) { return texts_.Add(text); }
  // The same for a word of the symbol table, quicker: `symbol` is remembered with its first text, so that a name is
  // spelled in one way all over a model.
  TextId SymbolText(std::uint32_t symbol, std::string_view text);
  // Valid until the next text is added.
  std::string_view TextOf(TextId text) const { return texts_.Get(text); }

  // Enters the record and ties its node to it. The reference is valid until the next one is added.
  DeclRecord& AddDecl(NodeId node);
  FileRecord& AddFile(NodeId node);
  DeclRecord& Decl(NodeId node) { return data_.decls[data_.nodes[node].detail]; }
  const DeclRecord& Decl(NodeId node) const { return data_.decls[data_.nodes[node].detail]; }
  std::span<const DeclRecord> Decls() const { return data_.decls; }
  FileRecord& File(NodeId node) { return data_.fileRecords[data_.nodes[node].detail]; }
  std::vector<UnitRecord>& Units() { return data_.units; }

  // A diagnostic with the physical place of the token. For a gap, the innermost open statement is marked as well.
  void Report(Severity severity, std::uint32_t token, std::string text);

  // Ends the building; nothing may be open. Diagnostics, files and dependencies are taken from the text.
  ModelData Take(std::string language);

  const ExpandedText& Source() const { return text_; }

 private:
  // A piece of the text of one inclusion, by bytes.
  struct Place {
    std::uint32_t inclusion = 0;
    std::uint32_t offset = 0, end = 0;
    std::uint32_t firstRow = 0, lastRow = 0;
  };
  void MakeRoom(std::uint32_t token);
  NodeId Add(Entity entity, std::uint32_t firstToken);
  void SetPlace(NodeRecord& node, std::uint32_t lastToken) const;
  Place PlaceOf(const Token& token) const;
  void LiftToCommon(Place& first, Place& last) const;
  void LiftToParent(Place& place) const;
  std::uint32_t Existing(std::uint32_t token) const { return token < tokens_ ? token : tokens_ - 1; }

  const ExpandedText& text_;
  const std::uint32_t tokens_;
  Diagnostics& diagnostics_;
  ModelData data_;
  TextPool texts_;
  std::vector<NodeId> open_;
  std::vector<TextId> symbolTexts_;  // by symbol; 0 for not yet
};

}  // namespace qmrules::workbench::codemodel
