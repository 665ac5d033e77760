// XML as all parts of a deck are read and written: checked, under the prefixes that the code uses, and whole
// again.

#include "opc/Xml.h"

#include <algorithm>
#include <array>
#include <map>
#include <utility>

#include "basic/Strings.h"
#include "opc/Failure.h"

namespace opc::xml {
namespace {

constexpr unsigned int ParseOptions = pugi::parse_full | pugi::parse_ws_pcdata;

[[noreturn]] void failAt(std::string_view text, std::ptrdiff_t offset, const char* reason) {
  Place place;
  place.pass(text.substr(0, static_cast<std::size_t>(std::max<std::ptrdiff_t>(offset, 0))));
  fail(place.text() + ": " + reason);
}

/// The prefix that this program's code uses for a namespace; empty for others.
/// Strict documents have namespaces of their own for the same elements.
std::string_view canonicalPrefix(std::string_view uri) {
  static constexpr std::array<std::pair<std::string_view, std::string_view>, 9> Known{{
      {"http://schemas.openxmlformats.org/presentationml/2006/main", "p"},
      {"http://purl.oclc.org/ooxml/presentationml/main", "p"},
      {"http://schemas.openxmlformats.org/drawingml/2006/main", "a"},
      {"http://purl.oclc.org/ooxml/drawingml/main", "a"},
      {"http://schemas.openxmlformats.org/drawingml/2006/chart", "c"},
      {"http://purl.oclc.org/ooxml/drawingml/chart", "c"},
      {"http://schemas.openxmlformats.org/officeDocument/2006/relationships", "r"},
      {"http://purl.oclc.org/ooxml/officeDocument/relationships", "r"},
      {"http://schemas.openxmlformats.org/markup-compatibility/2006", "mc"},
  }};
  for (const auto& [known, prefix] : Known) {
    if (uri == known) return prefix;
  }
  return {};
}

// The XML library removes nodes by recursion. No honest part comes near the
// depth, and a part below the size cannot hold enough levels to harm the stack.
constexpr int MaximumDepth = 1000;
constexpr std::size_t HarmlessSize = 64U << 10U;

bool isTooDeep(pugi::xml_node root) {
  bool tooDeep = false;
  forEachNode(root, [&](pugi::xml_node, int depth) {
    tooDeep = depth > MaximumDepth;
    return !tooDeep;
  });
  return tooDeep;
}

using Prefixes = std::map<std::string, std::string, std::less<>>;

/// What the root declares under a prefix that is not the canonical one.
Prefixes foreignPrefixes(pugi::xml_node root) {
  Prefixes renamed;
  for (pugi::xml_attribute attribute : root.attributes()) {
    const std::string_view name = attribute.name();
    if (!name.starts_with("xmlns")) continue;
    const std::string_view canonical = canonicalPrefix(attribute.value());
    const std::string_view prefix = name.size() > 6 ? name.substr(6) : std::string_view();
    if (!canonical.empty() && prefix != canonical) renamed.emplace(prefix, canonical);
  }
  return renamed;
}

template <typename Named>
void rename(Named named, const Prefixes& prefixes, bool isElement) {
  const std::string_view name = named.name();
  const std::size_t colon = name.find(':');
  const bool prefixed = colon != std::string_view::npos;
  if (!prefixed && !isElement) return;  // an attribute without prefix is in no namespace
  const auto found = prefixes.find(prefixed ? name.substr(0, colon) : std::string_view());
  if (found == prefixes.end()) return;
  const std::string renamed = found->second + ":" + std::string(prefixed ? name.substr(colon + 1) : name);
  named.set_name(renamed.c_str());
}

void useCanonicalPrefixes(pugi::xml_node root) {
  const Prefixes prefixes = foreignPrefixes(root);
  if (prefixes.empty()) return;
  for (const auto& [prefix, canonical] : prefixes) {
    const std::string declaration = "xmlns:" + canonical;
    if (root.attribute(declaration.c_str())) continue;
    const std::string old = prefix.empty() ? "xmlns" : "xmlns:" + prefix;
    root.append_attribute(declaration.c_str()) = root.attribute(old.c_str()).value();
  }
  forEachNode(root, [&](pugi::xml_node node, int) {
    if (node.type() != pugi::node_element) return true;
    rename(node, prefixes, true);
    for (pugi::xml_attribute attribute : node.attributes()) {
      if (!std::string_view(attribute.name()).starts_with("xmlns")) rename(attribute, prefixes, false);
    }
    return true;
  });
}

class StringWriter final : public pugi::xml_writer {
 public:
  explicit StringWriter(std::string& to) : to_(to) {}
  void write(const void* data, std::size_t size) override {
    to_.append(static_cast<const char*>(data), size);
  }

 private:
  std::string& to_;
};

/// The length of the well-formed UTF-8 sequence that text begins with, 0 when
/// there is none.
std::size_t sequenceLength(std::string_view text) {
  const auto lead = static_cast<unsigned char>(text.front());
  const std::size_t length = lead < 0x80 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
  if (text.size() < length || !basic::IsValidUtf8(text.substr(0, length))) return 0;
  return length;
}

bool isForbidden(std::string_view character) {
  if (character.size() == 1) {
    const auto c = static_cast<unsigned char>(character.front());
    return c < 0x20 && c != '\t' && c != '\n' && c != '\r';
  }
  return character == "\xEF\xBF\xBE" || character == "\xEF\xBF\xBF";
}

}  // namespace

std::unique_ptr<pugi::xml_document> parse(std::string& text, const std::function<std::string()>& reread) {
  const std::size_t size = text.size();
  auto document = std::make_unique<pugi::xml_document>();
  const pugi::xml_parse_result result = document->load_buffer_inplace(text.data(), size, ParseOptions);
  if (!result) failAt(reread(), result.offset, result.description());
  if (hasDocumentType(*document)) {
    fail("it has a document type declaration, which a presentation may not have");
  }
  const pugi::xml_node root = document->document_element();
  if (size > HarmlessSize && isTooDeep(root)) fail("its elements are nested too deeply");
  useCanonicalPrefixes(root);
  return document;
}

bool hasDocumentType(const pugi::xml_document& document) {
  return static_cast<bool>(
      document.find_child([](pugi::xml_node node) { return node.type() == pugi::node_doctype; }));
}

void Place::pass(std::string_view piece) {
  const std::size_t lineEnd = piece.rfind('\n');
  line_ += static_cast<std::uint64_t>(std::count(piece.begin(), piece.end(), '\n'));
  column_ = lineEnd == std::string_view::npos ? column_ + piece.size() : piece.size() - lineEnd;
}

std::string Place::text() const {
  return "line " + std::to_string(line_) + ", column " + std::to_string(column_);
}

std::string serialize(const pugi::xml_document& document) {
  unsigned int options = pugi::format_raw;
  pugi::xml_node declaration = document.first_child();
  if (declaration.type() != pugi::node_declaration) {
    options |= pugi::format_no_declaration;
  } else if (pugi::xml_attribute encoding = declaration.attribute("encoding")) {
    // Whatever it was read from, it is written as UTF-8.
    if (!basic::EqualsIgnoreCase(encoding.value(), "UTF-8")) encoding = "UTF-8";
  }
  std::string text;
  StringWriter writer(text);
  document.save(writer, "", options, pugi::encoding_utf8);
  return text;
}

void append(std::string& to, pugi::xml_node node) {
  StringWriter writer(to);
  node.print(writer, "", pugi::format_raw, pugi::encoding_utf8);
}

std::string legalText(std::string_view text) {
  const auto isSuspect = [](char c) { return static_cast<unsigned char>(c) < ' ' || c == '\xEF'; };
  if (std::none_of(text.begin(), text.end(), isSuspect) && basic::IsValidUtf8(text)) return std::string(text);

  std::string legal;
  legal.reserve(text.size());
  while (!text.empty()) {
    const std::size_t length = sequenceLength(text);
    const std::string_view character = text.substr(0, std::max<std::size_t>(length, 1));
    if (length == 0) {
      legal += "\xEF\xBF\xBD";
    } else if (!isForbidden(character)) {
      legal += character;
    }
    text.remove_prefix(character.size());
  }
  return legal;
}

}  // namespace opc::xml
