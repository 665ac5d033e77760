#include "render/text/TextReader.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <optional>

#include "render/geometry/XmlValues.h"
#include "render/text/DateField.h"

// Paragraphs, runs, fields and bullets with all that they inherit.

namespace render {

namespace {

/// Of a level of text without a margin anywhere; of a list, as the program has it that writes such decks.
constexpr double DefaultIndent = 48;  // px
constexpr double DefaultHanging = 216000.0 / EmuPerPx;

/// Numbers paragraphs as they come: a level goes on counting until a shallower
/// paragraph, or one of its own level that is numbered otherwise, comes between.
class Numbering {
 public:
  int next(std::size_t level, const Bullet& bullet) {
    auto& count = counts_[level];
    if (!count || count->scheme != bullet.numbering || count->startAt != bullet.startAt) {
      count = Count{bullet.numbering, bullet.startAt, bullet.startAt - 1};
    }
    forget(level + 1);
    return ++count->number;
  }
  void interrupt(std::size_t level) { forget(level); }

 private:
  struct Count {
    std::string scheme;
    int startAt;
    int number;
  };
  void forget(std::size_t from) {
    for (auto level = from; level < counts_.size(); ++level) counts_[level].reset();
  }
  std::array<std::optional<Count>, 9> counts_;
};

/// Text without what XML or a page could trip over. A vertical tab is a line break.
void addText(Paragraph& paragraph, std::string_view text, const RunStyle& style) {
  std::string clean;
  const auto flush = [&] {
    if (clean.empty()) return;
    paragraph.runs.push_back({Run::Kind::Text, std::move(clean), style});
    clean.clear();
  };
  for (std::size_t i = 0; i < text.size(); ++i) {
    const auto c = static_cast<unsigned char>(text[i]);
    const bool writtenVerticalTab = c == '_' && text.substr(i, 7) == "_x000B_";
    if (c == '\v' || writtenVerticalTab) {
      flush();
      paragraph.runs.push_back({Run::Kind::Break, {}, style});
      if (writtenVerticalTab) i += 6;
    } else if (c == '\n' || c == '\r') {
      clean += ' ';
    } else if ((c >= 0x20 || c == '\t') && c != 0x7F) {
      clean += static_cast<char>(c);
    }
  }
  flush();
}

RunStyle runStyle(const RunStyle& base, pugi::xml_node rPr, const TextContext& context) {
  RunStyle style = base;
  if (!rPr) return style;
  if (rPr.child("a:hlinkClick").attribute("r:id")) {
    const auto link = readColor(rPr.child("a:hlinkClick"), context.paint.colors);
    const auto& colors = context.paint.colors;
    if (!link && colors.scheme != nullptr && colors.map != nullptr) {
      if (const auto slot = colors.map->resolve("hlink"))
        style.fill = (*colors.scheme)[static_cast<std::size_t>(*slot)];
    }
    style.underline = Underline::Single;
    const auto linked = style.fill;
    style.apply(rPr, context.paint);
    style.fill = linked;
    return style;
  }
  style.apply(rPr, context.paint);
  return style;
}

/// Into the last paragraph.
void addField(TextBody& body, pugi::xml_node fld, const RunStyle& style, const Fields& fields) {
  std::string text = fld.child_value("a:t");
  const std::string_view type = fld.attribute("type").value();
  if (type == "slidenum") {
    if (!fields.slideNumber.empty()) text = fields.slideNumber;
  } else if (fields.now && type.starts_with("datetime")) {
    if (auto date = dateField(type, fields.now(), basic::UserLocale())) {
      text = std::move(date->text);
      body.timeShown = std::max(body.timeShown, date->shown);
    }
  }
  addText(body.paragraphs.back(), text, style);
}

}  // namespace

TextBody readText(pugi::xml_node txBody, const ListStyle& inherited, const BodyProperties& properties,
                  const TextContext& context) {
  TextBody body;
  body.properties = properties;
  const auto own = txBody.child("a:lstStyle");
  std::optional<ListStyle> overridden;
  if (own && own.first_child()) {
    overridden = inherited;
    overridden->apply(own, context.paint);
  }
  const ListStyle& styles = overridden ? *overridden : inherited;

  Numbering numbering;
  for (const auto p : txBody.children("a:p")) {
    auto& paragraph = body.paragraphs.emplace_back();
    const auto pPr = p.child("a:pPr");
    const auto level = static_cast<std::size_t>(wholeOf(pPr.attribute("lvl"), 0, 0, 8));
    paragraph.style = styles.levels[level];
    paragraph.style.apply(pPr, context.paint);
    const RunStyle base = paragraph.style.run;

    for (const auto child : p.children()) {
      const char* name = child.name();
      if (!std::strcmp(name, "a:r")) {
        addText(paragraph, child.child_value("a:t"), runStyle(base, child.child("a:rPr"), context));
      } else if (!std::strcmp(name, "a:br")) {
        paragraph.runs.push_back({Run::Kind::Break, {}, runStyle(base, child.child("a:rPr"), context)});
      } else if (!std::strcmp(name, "a:fld")) {
        addField(body, child, runStyle(base, child.child("a:rPr"), context), context.fields);
      }
    }
    if (const auto end = p.child("a:endParaRPr")) paragraph.style.run.apply(end, context.paint);

    const auto& bullet = paragraph.style.bullet;
    const auto kind = bullet.kind.value_or(Bullet::Kind::None);
    if (!paragraph.style.marginLeft) {
      // A deck that never states margins leaves them to the program; lists hang in all of them.
      const bool hangs = kind != Bullet::Kind::None && !paragraph.style.indent;
      paragraph.style.marginLeft = hangs ? DefaultHanging * static_cast<double>(level + 1)
                                         : DefaultIndent * static_cast<double>(level);
      if (hangs) paragraph.style.indent = -DefaultHanging;
    }
    const bool hasText = std::any_of(paragraph.runs.begin(), paragraph.runs.end(),
                                     [](const Run& run) { return run.kind == Run::Kind::Text; });
    if (!hasText) continue;
    if (kind == Bullet::Kind::Number) {
      paragraph.bullet = autoNumber(bullet.numbering, numbering.next(level, bullet));
      continue;
    }
    numbering.interrupt(level);
    if (kind == Bullet::Kind::Character) {
      paragraph.bullet = fromSymbolFont(bullet.typeface.value_or(""), bullet.character);
    } else if (kind == Bullet::Kind::Picture) {
      opc::Part* const picture = bullet.picture;
      paragraph.bulletPicture = picture != nullptr ? context.paint.assets->add(*picture) : nullptr;
      // Without its picture it is still an item of a list.
      paragraph.bullet = "\u2022";
    }
  }
  return body;
}

}  // namespace render
