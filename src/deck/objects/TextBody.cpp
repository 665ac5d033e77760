// The text of a shape as one string, and paragraphs and runs that keep their formatting when it is set.

#include "deck/objects/TextBody.h"

#include <algorithm>

#include "basic/Strings.h"
#include "opc/Xml.h"

namespace deck {
namespace {

constexpr char Paragraph = '\r';
constexpr char LineBreak = '\v';

bool isRun(pugi::xml_node node) { return opc::xml::isNamed(node, "a:r") || opc::xml::isNamed(node, "a:fld"); }

void appendCharacters(std::string& text, pugi::xml_node element) {
  for (pugi::xml_node child : element.children()) {
    if (child.type() == pugi::node_pcdata || child.type() == pugi::node_cdata) text += child.value();
  }
}

/// The one run that is all a body's text; null when there is more or less.
pugi::xml_node onlyRun(pugi::xml_node body) {
  pugi::xml_node paragraph;
  for (pugi::xml_node child : body.children("a:p")) {
    if (paragraph) return {};
    paragraph = child;
  }
  pugi::xml_node run;
  for (pugi::xml_node child : paragraph.children()) {
    if (opc::xml::isNamed(child, "a:pPr") || opc::xml::isNamed(child, "a:endParaRPr")) continue;
    if (run || !opc::xml::isNamed(child, "a:r")) return {};
    run = child;
  }
  return run;
}

pugi::xml_node firstRun(pugi::xml_node body) {
  for (pugi::xml_node paragraph : body.children("a:p")) {
    if (const pugi::xml_node run = paragraph.find_child(isRun)) return run;
  }
  return {};
}

/// The formatting that a body's new text takes, kept apart while the old text
/// is taken down.
class Formatting {
 public:
  explicit Formatting(pugi::xml_node body) {
    const pugi::xml_node paragraph = body.child("a:p");
    keep("a:pPr", paragraph.child("a:pPr"));
    const pugi::xml_node run = firstRun(body).child("a:rPr");
    const pugi::xml_node end = paragraph.child("a:endParaRPr");
    keep("a:rPr", run ? run : end);
    keep("a:endParaRPr", end);
  }

  void copyTo(pugi::xml_node parent, const char* element) const {
    if (const pugi::xml_node kept = kept_.child(element)) parent.append_copy(kept);
  }

  /// The paragraph's end mark. A paragraph without a run needs one to remember
  /// the formatting by.
  void copyEndTo(pugi::xml_node paragraph, bool isEmpty) const {
    if (isEmpty && !kept_.child("a:endParaRPr") && kept_.child("a:rPr")) {
      paragraph.append_copy(kept_.child("a:rPr")).set_name("a:endParaRPr");
    }
    copyTo(paragraph, "a:endParaRPr");
  }

 private:
  void keep(const char* element, pugi::xml_node original) {
    if (original) kept_.append_copy(original).set_name(element);
  }

  pugi::xml_document kept_;
};

void appendLines(pugi::xml_node paragraph, std::string_view text, const Formatting& formatting) {
  while (true) {
    const std::size_t end = text.find(LineBreak);
    if (const std::string line(text.substr(0, end)); !line.empty()) {
      pugi::xml_node run = paragraph.append_child("a:r");
      formatting.copyTo(run, "a:rPr");
      run.append_child("a:t").append_child(pugi::node_pcdata).set_value(line.c_str());
    }
    if (end == std::string_view::npos) return;
    formatting.copyTo(paragraph.append_child("a:br"), "a:rPr");
    text.remove_prefix(end + 1);
  }
}

void rebuild(pugi::xml_node body, std::string_view text) {
  const Formatting formatting(body);
  while (body.remove_child("a:p")) {
  }
  while (true) {
    const std::size_t end = text.find(Paragraph);
    pugi::xml_node paragraph = body.append_child("a:p");
    formatting.copyTo(paragraph, "a:pPr");
    appendLines(paragraph, text.substr(0, end), formatting);
    formatting.copyEndTo(paragraph, text.substr(0, end).empty());
    if (end == std::string_view::npos) return;
    text.remove_prefix(end + 1);
  }
}

std::string normalized(std::string_view text) {
  // VT is the only control character of the host's text that XML cannot hold.
  std::string result;
  for (std::size_t begin = 0; begin <= text.size();) {
    const std::size_t end = std::min(text.find(LineBreak, begin), text.size());
    result += opc::xml::legalText(text.substr(begin, end - begin));
    if (end < text.size()) result += LineBreak;
    begin = end + 1;
  }
  if (result.find('\n') == std::string::npos) return result;
  result = basic::Replace(result, "\r\n", "\r");
  return basic::Replace(result, "\n", "\r");
}

pugi::xml_node withParagraph(pugi::xml_node body) {
  body.append_child("a:bodyPr");
  body.append_child("a:lstStyle");
  body.append_child("a:p");
  return body;
}

}  // namespace

std::string textOf(pugi::xml_node body) {
  std::string text;
  bool isFirst = true;
  for (pugi::xml_node paragraph : body.children("a:p")) {
    if (!isFirst) text += Paragraph;
    isFirst = false;
    for (pugi::xml_node child : paragraph.children()) {
      if (isRun(child)) {
        appendCharacters(text, child.child("a:t"));
      } else if (opc::xml::isNamed(child, "a:br")) {
        text += LineBreak;
      }
    }
  }
  return text;
}

bool setText(pugi::xml_node body, std::string_view text) {
  const std::string wanted = normalized(text);
  if (textOf(body) == wanted) return false;
  const bool isOneLine = !wanted.empty() && wanted.find_first_of("\r\v") == std::string::npos;
  if (pugi::xml_node run = isOneLine ? onlyRun(body) : pugi::xml_node()) {
    pugi::xml_node characters = run.child("a:t");
    if (characters.first_child() == characters.last_child() && characters.text().set(wanted.c_str()))
      return true;
  }
  rebuild(body, wanted);
  return true;
}

void makeField(pugi::xml_node body, const std::string& type) {
  pugi::xml_node run = onlyRun(body);
  if (!run) return;
  run.set_name("a:fld");
  run.append_attribute("id") = "{00000000-1234-1234-1234-123412341234}";
  run.append_attribute("type") = type.c_str();
}

pugi::xml_node addTextBody(pugi::xml_node shape) {
  pugi::xml_node before = shape.child("p:style");
  if (!before) before = shape.child("p:spPr");
  pugi::xml_node body = shape.insert_child_after("p:txBody", before);
  if (!body) body = shape.append_child("p:txBody");
  return withParagraph(body);
}

pugi::xml_node addCellText(pugi::xml_node cell) { return withParagraph(cell.prepend_child("a:txBody")); }

}  // namespace deck
