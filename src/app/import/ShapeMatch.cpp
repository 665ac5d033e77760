// Finds the shapes of an old slide again on the slide that was made of it.

#include "app/import/ShapeMatch.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <string>
#include <string_view>

#include "basic/Measure.h"
#include "opc/Xml.h"
#include "presentationml/Placeholders.h"
#include "presentationml/ShapeNode.h"

namespace app {

namespace {

using Kind = ppt::Shape::Kind;

/// A larger table would take too long; no author has so many shapes on a slide.
constexpr std::size_t LargestTable = 4'000'000;

/// The beginning of a text, without what is written in another way: fields, blanks and breaks.
std::string core(std::string_view text) {
  constexpr std::size_t Enough = 200;
  std::string kept;
  for (const char c : text) {
    if (static_cast<unsigned char>(c) > ' ' && c != '*') kept += c;
    if (kept.size() == Enough) break;
  }
  return kept;
}

struct Old {
  explicit Old(const ppt::Shape& its) : shape(&its), text(core(its.text)) {}
  const ppt::Shape* shape;
  std::string text;
};

struct Made {
  explicit Made(const NewShape& its)
      : shape(&its),
        text(core(its.text)),
        name(presentationml::shapeName(its.node)),
        placeholder(presentationml::placeholder(its.node)) {}
  const NewShape* shape;
  std::string text;
  std::string_view name;
  pugi::xml_node placeholder;
};

int scoreOfTexts(std::string_view old, std::string_view made) {
  if (old.empty() && made.empty()) return 0;
  if (old == made) return 6;
  if (old.empty() || made.empty()) return -2;
  return old.starts_with(made) || made.starts_with(old) ? 2 : -6;
}

/// By middle and size: shapes that are turned keep the former alone.
int scoreOfFrames(const ppt::Frame& a, const ppt::Frame& b) {
  constexpr double Near = 3 * basic::EmuPerPoint;
  constexpr double Far = 20 * basic::EmuPerPoint;
  const double away = std::max(std::abs(a.left + a.width / 2 - b.left - b.width / 2),
                               std::abs(a.top + a.height / 2 - b.top - b.height / 2));
  const double other = std::max(std::abs(a.width - b.width), std::abs(a.height - b.height));
  if (away < Near && other < Near) return 6;
  return away < Far ? 2 : -4;
}

bool canBecome(Kind kind, pugi::xml_node node) {
  const std::string_view element = node.name();
  switch (kind) {
    case Kind::Group:
      return element == "p:grpSp";
    case Kind::Table:
      return element == "p:grpSp" || element == "p:graphicFrame";
    case Kind::Object:
    case Kind::Picture:
      return element == "p:graphicFrame" || element == "p:pic" || element == "p:sp";
    case Kind::Line:
    case Kind::Shape:
      break;
  }
  return element == "p:sp" || element == "p:cxnSp" || element == "p:pic";
}

/// How much alike they are; below 0 they are not the same.
int likeness(const Old& old, const Made& made) {
  constexpr int Never = -100;
  if (!canBecome(old.shape->kind, made.shape->node)) return Never;
  int sum = 2 + scoreOfTexts(old.text, made.text) + scoreOfFrames(old.shape->frame, made.shape->frame);
  if (!old.shape->name.empty() && old.shape->name == made.name) sum += 6;
  if ((old.shape->placeholder != 0) == static_cast<bool>(made.placeholder)) ++sum;
  return sum;
}

struct Footer {
  std::string_view type;
  std::uint32_t old;  // [MS-PPT] 2.13.22
};
constexpr std::array<Footer, 3> Footers{{{"dt", 7}, {"sldNum", 8}, {"ftr", 9}}};

/// Without the date, footer and number that stood on the old master alone.
std::vector<Made> withoutAdded(const std::vector<Old>& old, const std::vector<NewShape>& made) {
  std::vector<Made> kept(made.begin(), made.end());
  for (const Footer& footer : Footers) {
    auto own = std::count_if(old.begin(), old.end(),
                             [&](const Old& each) { return each.shape->placeholder == footer.old; });
    std::erase_if(kept, [&](const Made& each) {
      return each.placeholder && presentationml::placeholderType(each.placeholder) == footer.type &&
             own-- <= 0;
    });
  }
  return kept;
}

class Matcher {
 public:
  void match(const std::vector<ppt::Shape>& shapes, const std::vector<NewShape>& newShapes) {
    const std::vector<Old> old(shapes.begin(), shapes.end());
    const std::vector<Made> made = withoutAdded(old, newShapes);
    const auto isPlausible = [](const Old& a, const Made& b) { return likeness(a, b) >= 0; };
    if (std::equal(old.begin(), old.end(), made.begin(), made.end(), isPlausible)) {
      for (std::size_t i = 0; i < old.size(); ++i) take(*old[i].shape, *made[i].shape);
    } else {
      align(old, made);
    }
  }

  ShapeMatch result;

 private:
  void take(const ppt::Shape& old, const NewShape& made) {
    result.pairs.push_back({&old, &made});
    if (old.members.empty()) return;
    if (opc::xml::isNamed(made.node, "p:grpSp")) {
      match(old.members, made.members);
    } else {
      loseMembers(old);
    }
  }

  void lose(const ppt::Shape& old) {
    result.lost.push_back(&old);
    loseMembers(old);
  }
  void loseMembers(const ppt::Shape& old) {
    for (const ppt::Shape& member : old.members) lose(member);
  }

  /// The pairs in drawing order that are the most alike in all (Needleman and Wunsch).
  void align(const std::vector<Old>& old, const std::vector<Made>& made) {
    const std::size_t width = made.size() + 1;
    if (old.size() * width > LargestTable) {
      for (const Old& each : old) lose(*each.shape);
      return;
    }
    const auto alike = [&](std::size_t i, std::size_t j) { return likeness(old[i], made[j]); };
    // best[i, j]: of the shapes from i and from j on.
    std::vector<int> best((old.size() + 1) * width);
    for (std::size_t i = old.size(); i-- > 0;) {
      for (std::size_t j = made.size(); j-- > 0;) {
        const int without = std::max(best[(i + 1) * width + j], best[i * width + j + 1]);
        const int with = alike(i, j) > 0 ? alike(i, j) + best[(i + 1) * width + j + 1] : 0;
        best[i * width + j] = std::max(without, with);
      }
    }
    std::vector<std::optional<std::size_t>> found(old.size());
    for (std::size_t i = 0, j = 0; i < old.size() && j < made.size();) {
      if (alike(i, j) > 0 && best[i * width + j] == alike(i, j) + best[(i + 1) * width + j + 1]) {
        found[i++] = j++;
      } else if (best[i * width + j] == best[(i + 1) * width + j]) {
        ++i;
      } else {
        ++j;
      }
    }
    const std::vector<std::optional<std::size_t>> all = found;
    for (std::size_t i = 0; i < old.size(); ++i) {
      if (all[i]) continue;
      // One of a few that look the same is gone: nobody can tell which.
      for (std::size_t k = 0; k < old.size(); ++k) {
        if (all[k] && alike(i, *all[k]) >= alike(k, *all[k])) found[k].reset();
      }
    }
    for (std::size_t i = 0; i < old.size(); ++i) {
      if (found[i]) {
        take(*old[i].shape, *made[*found[i]].shape);
      } else {
        lose(*old[i].shape);
      }
    }
  }
};

}  // namespace

ShapeMatch matchShapes(const std::vector<ppt::Shape>& old, const std::vector<NewShape>& made) {
  Matcher matcher;
  matcher.match(old, made);
  return std::move(matcher.result);
}

}  // namespace app
