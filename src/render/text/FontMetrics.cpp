#include "render/text/FontMetrics.h"

#include <fontconfig/fontconfig.h>
#include <ft2build.h>

#include <array>
#include <cmath>
#include <memory>
#include <unordered_map>
#include <utility>
#include <vector>

#include FT_FREETYPE_H
#include FT_ADVANCES_H

#include "basic/Strings.h"
#include "basic/Utf8.h"
#include "render/text/GlyphOutline.h"

// The fonts of this machine: which stand for a typeface, how wide text runs in them, and its outlines.

namespace render {

namespace {

struct Substitute {
  std::string_view typeface;
  std::vector<std::string_view> others;
};

/// Typefaces and the free ones with the same widths or, failing that, the nearest.
const std::vector<Substitute>& substitutes() {
  static const std::vector<Substitute> table = {
      {"Calibri", {"Carlito"}},
      {"Calibri Light", {"Carlito"}},
      {"Aptos", {"Carlito"}},
      {"Aptos Display", {"Carlito"}},
      {"Candara", {"Carlito"}},
      {"Corbel", {"Carlito"}},
      {"Franklin Gothic Book", {"Carlito"}},
      {"Gill Sans MT", {"Carlito"}},
      {"Cambria", {"Caladea"}},
      {"Cambria Math", {"Caladea"}},
      {"Constantia", {"Caladea"}},
      {"Arial", {"Liberation Sans", "Arimo"}},
      {"Helvetica", {"Liberation Sans", "Arimo"}},
      {"Helvetica Neue", {"Liberation Sans", "Arimo"}},
      {"Roboto", {"Liberation Sans", "Arimo"}},
      {"Segoe UI", {"Liberation Sans", "Arimo"}},
      {"Trebuchet MS", {"Liberation Sans", "Arimo"}},
      {"Arial Narrow", {"Liberation Sans Narrow"}},
      {"Times New Roman", {"Liberation Serif", "Tinos"}},
      {"Times", {"Liberation Serif", "Tinos"}},
      {"Garamond", {"Liberation Serif", "Tinos"}},
      {"Georgia", {"Gelasio", "DejaVu Serif Condensed"}},
      {"Book Antiqua", {"DejaVu Serif Condensed"}},
      {"Palatino Linotype", {"DejaVu Serif Condensed"}},
      {"Century Schoolbook", {"DejaVu Serif Condensed"}},
      {"Courier New", {"Liberation Mono", "Cousine"}},
      {"Courier", {"Liberation Mono", "Cousine"}},
      {"Consolas", {"Liberation Mono"}},
      {"Lucida Console", {"Liberation Mono"}},
      {"Verdana", {"DejaVu Sans"}},
      {"Lucida Sans Unicode", {"DejaVu Sans"}},
      {"Lucida Sans", {"DejaVu Sans"}},
      {"Lucida Grande", {"DejaVu Sans"}},
      {"Tahoma", {"DejaVu Sans Condensed"}},
  };
  return table;
}

/// The generic family that a typeface's name suggests.
const char* generic(std::string_view typeface) {
  static constexpr std::string_view serifs[] = {
      "times", "serif", "georgia",    "garamond", "cambria",     "book",     "palatino", "century", "bodoni",
      "didot", "roman", "constantia", "minion",   "baskerville", "perpetua", "rockwell", "goudy",   "caslon"};
  static constexpr std::string_view monos[] = {"courier", "mono", "consol", "typewriter", "menlo", "code"};
  std::string key;
  for (const char c : typeface) key += static_cast<char>(c >= 'A' && c <= 'Z' ? c + 32 : c);
  if (key.find("sans") != std::string::npos) return "sans-serif";
  for (const auto word : monos) {
    if (key.find(word) != std::string::npos) return "monospace";
  }
  for (const auto word : serifs) {
    if (key.find(word) != std::string::npos) return "serif";
  }
  return "sans-serif";
}

/// The machine's fonts. Without any, every typeface has the usual ones.
class FontFiles {
 public:
  FontFiles() : config_(FcInitLoadConfigAndFonts()) {
    if (FT_Init_FreeType(&library_) != 0) library_ = nullptr;
  }
  ~FontFiles() {
    if (library_ != nullptr) FT_Done_FreeType(library_);
    if (config_ != nullptr) FcConfigDestroy(config_);
  }
  FontFiles(const FontFiles&) = delete;
  FontFiles& operator=(const FontFiles&) = delete;

  /// Null when no font of exactly this family is installed; a generic family is whatever the machine takes
  /// for it. To be given back with FT_Done_Face.
  [[nodiscard]] FT_Face open(const std::string& family, bool isGeneric, bool bold, bool italic) const {
    if (config_ == nullptr || library_ == nullptr) return nullptr;
    using Pattern = std::unique_ptr<FcPattern, decltype(&FcPatternDestroy)>;
    const Pattern wanted(FcPatternCreate(), FcPatternDestroy);
    FcPatternAddString(wanted.get(), FC_FAMILY, reinterpret_cast<const FcChar8*>(family.c_str()));
    FcPatternAddInteger(wanted.get(), FC_WEIGHT, bold ? FC_WEIGHT_BOLD : FC_WEIGHT_REGULAR);
    FcPatternAddInteger(wanted.get(), FC_SLANT, italic ? FC_SLANT_ITALIC : FC_SLANT_ROMAN);
    FcConfigSubstitute(config_, wanted.get(), FcMatchPattern);
    FcDefaultSubstitute(wanted.get());
    FcResult result = FcResultNoMatch;
    const Pattern found(FcFontMatch(config_, wanted.get(), &result), FcPatternDestroy);
    if (!found || (!isGeneric && !isOfFamily(found.get(), family))) return nullptr;
    FcChar8* file = nullptr;
    int index = 0;
    if (FcPatternGetString(found.get(), FC_FILE, 0, &file) != FcResultMatch) return nullptr;
    FcPatternGetInteger(found.get(), FC_INDEX, 0, &index);
    FT_Face face = nullptr;
    if (FT_New_Face(library_, reinterpret_cast<const char*>(file), index, &face) != 0) return nullptr;
    if (face->units_per_EM > 0 && face->ascender > 0) return face;
    FT_Done_Face(face);
    return nullptr;
  }

 private:
  static bool isOfFamily(FcPattern* font, const std::string& family) {
    FcChar8* name = nullptr;
    for (int i = 0; FcPatternGetString(font, FC_FAMILY, i, &name) == FcResultMatch; ++i) {
      if (basic::EqualsIgnoreCase(reinterpret_cast<const char*>(name), family)) return true;
    }
    return false;
  }

  FcConfig* config_;
  FT_Library library_ = nullptr;
};

const FontFiles& fontFiles() {
  static const FontFiles files;
  return files;
}

/// A typeface and those that stand in for it.
std::vector<std::string> familiesOf(std::string_view typeface) {
  std::vector<std::string> families;
  if (!typeface.empty()) families.emplace_back(typeface);
  for (const auto& entry : substitutes()) {
    if (basic::EqualsIgnoreCase(entry.typeface, typeface))
      families.insert(families.end(), entry.others.begin(), entry.others.end());
  }
  return families;
}

struct FirstFace {
  FT_Face face = nullptr;
  std::string family;
  /// None of the named families is here.
  bool isGeneric = false;
};

/// The first face of a typeface's stack that this machine has; null without any font.
FirstFace openFirst(std::string_view typeface, bool bold, bool italic) {
  for (const auto& family : familiesOf(typeface)) {
    if (FT_Face face = fontFiles().open(family, false, bold, italic)) return {face, family, false};
  }
  FT_Face face = fontFiles().open(generic(typeface), true, bold, italic);
  return {face, face != nullptr && face->family_name != nullptr ? face->family_name : "", true};
}

void appendFamily(std::string& css, std::string_view family) {
  if (!basic::IsValidUtf8(family)) return;
  css += '\'';
  for (const char c : family) {
    // What would end the string or the attribute has no place in a family's name.
    const bool plain = static_cast<unsigned char>(c) >= 32 && c != '\'' && c != '"' && c != '\\' &&
                       c != '<' && c != '>' && c != '&' && c != ';' && c != '{' && c != '}';
    if (plain) css += c;
  }
  css += "',";
}

FontStack makeStack(std::string_view typeface) {
  FontStack stack;
  stack.typeface = typeface;
  for (const auto& family : familiesOf(typeface)) appendFamily(stack.css, family);
  if (const auto first = openFirst(typeface, false, false); first.face != nullptr) {
    // Browsers have generic families of their own; text is measured and set in the machine's.
    if (first.isGeneric) appendFamily(stack.css, first.family);
    stack.family = first.family;
    stack.metrics.ascent = static_cast<double>(first.face->ascender) / first.face->units_per_EM;
    stack.metrics.descent = -static_cast<double>(first.face->descender) / first.face->units_per_EM;
    FT_Done_Face(first.face);
  }
  stack.css += generic(typeface);
  return stack;
}

/// Widths of a face's characters, looked up in the font once each.
class FaceWidths {
 public:
  explicit FaceWidths(FT_Face face) : face_(face) { common_.fill(Unknown); }

  void outline(char32_t c, double x, std::vector<std::vector<Point>>& out) const {
    const FT_UInt glyph = face_ != nullptr ? FT_Get_Char_Index(face_, c) : 0;
    if (glyph == 0 || FT_Load_Glyph(face_, glyph, FT_LOAD_NO_SCALE) != 0) return;
    if (face_->glyph->format == FT_GLYPH_FORMAT_OUTLINE)
      GlyphOutline(out, 1.0 / face_->units_per_EM).add(face_->glyph->outline, x);
  }

  double of(char32_t c) {
    if (c < common_.size()) {
      auto& known = common_[c];
      if (known == Unknown) known = lookUp(c);
      return known;
    }
    const auto known = rare_.find(c);
    return known != rare_.end() ? known->second : rare_.emplace(c, lookUp(c)).first->second;
  }

 private:
  static constexpr float Unknown = -1;

  [[nodiscard]] float lookUp(char32_t c) const {
    if (c < 0x20) return 0;
    const FT_UInt glyph = face_ != nullptr ? FT_Get_Char_Index(face_, c) : 0;
    FT_Fixed advance = 0;
    if (glyph != 0 && FT_Get_Advance(face_, glyph, FT_LOAD_NO_SCALE, &advance) == 0)
      return static_cast<float>(advance) / static_cast<float>(face_->units_per_EM);
    return c >= 0x1100 ? 1.0F : 0.55F;
  }

  FT_Face face_;
  std::array<float, 0x250> common_;
  std::unordered_map<char32_t, float> rare_;
};

FaceWidths& widthsOf(const FaceName& face) {
  static std::unordered_map<std::string, FaceWidths> known;
  thread_local std::string key;
  key.assign(face.typeface);
  key += face.bold ? 'b' : 'r';
  key += face.italic ? 'i' : 'r';
  const auto found = known.find(key);
  if (found != known.end()) return found->second;
  return known.emplace(key, FaceWidths(openFirst(face.typeface, face.bold, face.italic).face)).first->second;
}

}  // namespace

const FontStack& fontStack(std::string_view typeface) {
  static std::unordered_map<std::string, FontStack> stacks;
  const std::string key(typeface);
  const auto known = stacks.find(key);
  if (known != stacks.end()) return known->second;
  return stacks.emplace(key, makeStack(typeface)).first->second;
}

double textWidth(const FaceName& face, std::string_view text) {
  auto& widths = widthsOf(face);
  double width = 0;
  for (std::size_t at = 0; at < text.size();) width += widths.of(basic::DecodeUtf8(text, at));
  return width;
}

std::vector<std::vector<Point>> textOutline(const FaceName& face, std::string_view text) {
  auto& widths = widthsOf(face);
  std::vector<std::vector<Point>> polygons;
  double x = 0;
  for (std::size_t at = 0; at < text.size();) {
    const char32_t c = basic::DecodeUtf8(text, at);
    widths.outline(c, x, polygons);
    x += widths.of(c);
  }
  return polygons;
}

}  // namespace render
