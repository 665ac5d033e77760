#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <pugixml.hpp>
#include <string>
#include <string_view>

namespace opc::xml {

/// Parses `text` in place; the document points into it, so it must outlive the
/// document and keep its address. Everything is kept: white space, comments,
/// processing instructions. The namespaces of presentationml, drawingml, its
/// charts and relationships get the prefixes p, a, c and r when they carry others. Throws
/// basic::Error with the reason (line and column) alone; the caller knows the part.
/// Parsing overwrites the text: `reread` gives it once more, to tell the place of a fault.
std::unique_ptr<pugi::xml_document> parse(std::string& text, const std::function<std::string()>& reread);

/// A document type declaration may define entities without end; no part of a package has one.
bool hasDocumentType(const pugi::xml_document& document);

/// A place in a text that is gone through piece by piece.
class Place {
 public:
  /// Behind this piece.
  void pass(std::string_view piece);
  /// Counted from 1, columns in bytes: "line 3, column 14".
  [[nodiscard]] std::string text() const;

 private:
  std::uint64_t line_ = 1;
  std::uint64_t column_ = 1;
};

inline bool isNamed(pugi::xml_node node, std::string_view name) { return node.name() == name; }

std::string serialize(const pugi::xml_document& document);
/// Appends a node with all that is in it.
void append(std::string& to, pugi::xml_node node);

/// The text with what XML 1.0 cannot hold left out (control characters other
/// than TAB, LF and CR, and the two noncharacters), and with U+FFFD for bytes
/// that are no UTF-8.
std::string legalText(std::string_view text);

/// Calls visit(node, depth) for root and everything below it, without recursion,
/// until it answers false.
template <typename Visitor>
void forEachNode(pugi::xml_node root, const Visitor& visit) {
  int depth = 0;
  for (pugi::xml_node node = root; node;) {
    if (!visit(node, depth)) return;
    if (node.first_child()) {
      node = node.first_child();
      ++depth;
      continue;
    }
    for (; node != root && !node.next_sibling(); --depth) node = node.parent();
    if (node == root) return;
    node = node.next_sibling();
  }
}

/// The nodes of a child list with each mc:AlternateContent replaced by the
/// children of its first choice (of its fallback, when it has no choice). For
/// each such node calls visit(node).
template <typename Visitor>
void forEachPreferred(pugi::xml_node parent, const Visitor& visit) {
  for (pugi::xml_node child = parent.first_child(); child; child = child.next_sibling()) {
    if (std::string_view(child.name()) != "mc:AlternateContent") {
      visit(child);
      continue;
    }
    pugi::xml_node chosen = child.child("mc:Choice");
    if (!chosen) chosen = child.child("mc:Fallback");
    for (pugi::xml_node inner = chosen.first_child(); inner; inner = inner.next_sibling()) visit(inner);
  }
}

}  // namespace opc::xml
