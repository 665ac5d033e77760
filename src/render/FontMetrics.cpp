#include "render/FontMetrics.h"

#include <fontconfig/fontconfig.h>
#include <ft2build.h>

#include <memory>
#include <unordered_map>
#include <vector>

#include FT_FREETYPE_H

#include "basic/Strings.h"

namespace render {

namespace {

struct Substitute {
  std::string_view typeface;
  std::vector<std::string_view> others;
};

/// Typefaces and the free ones with the same (or nearly the same) widths.
const std::vector<Substitute>& substitutes() {
  static const std::vector<Substitute> table = {
      {"Calibri", {"Carlito"}},
      {"Calibri Light", {"Carlito"}},
      {"Aptos", {"Carlito"}},
      {"Aptos Display", {"Carlito"}},
      {"Cambria", {"Caladea"}},
      {"Arial", {"Liberation Sans", "Arimo"}},
      {"Helvetica", {"Liberation Sans", "Arimo"}},
      {"Arial Narrow", {"Liberation Sans Narrow"}},
      {"Times New Roman", {"Liberation Serif", "Tinos"}},
      {"Times", {"Liberation Serif", "Tinos"}},
      {"Courier New", {"Liberation Mono", "Cousine"}},
      {"Courier", {"Liberation Mono", "Cousine"}},
      {"Consolas", {"Liberation Mono"}},
      {"Georgia", {"Gelasio"}},
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

  /// False when no font of exactly this family is installed; a generic family is
  /// whatever the machine takes for it.
  bool read(const std::string& family, bool isGeneric, FontMetrics& metrics) const {
    if (config_ == nullptr || library_ == nullptr) return false;
    using Pattern = std::unique_ptr<FcPattern, decltype(&FcPatternDestroy)>;
    const Pattern wanted(FcPatternCreate(), FcPatternDestroy);
    FcPatternAddString(wanted.get(), FC_FAMILY, reinterpret_cast<const FcChar8*>(family.c_str()));
    FcPatternAddInteger(wanted.get(), FC_WEIGHT, FC_WEIGHT_REGULAR);
    FcConfigSubstitute(config_, wanted.get(), FcMatchPattern);
    FcDefaultSubstitute(wanted.get());
    FcResult result = FcResultNoMatch;
    const Pattern found(FcFontMatch(config_, wanted.get(), &result), FcPatternDestroy);
    if (!found || (!isGeneric && !isOfFamily(found.get(), family))) return false;
    FcChar8* file = nullptr;
    int index = 0;
    if (FcPatternGetString(found.get(), FC_FILE, 0, &file) != FcResultMatch) return false;
    FcPatternGetInteger(found.get(), FC_INDEX, 0, &index);
    FT_Face face = nullptr;
    if (FT_New_Face(library_, reinterpret_cast<const char*>(file), index, &face) != 0) return false;
    const bool scalable = face->units_per_EM > 0 && face->ascender > 0;
    if (scalable) {
      metrics.ascent = static_cast<double>(face->ascender) / face->units_per_EM;
      metrics.descent = -static_cast<double>(face->descender) / face->units_per_EM;
    }
    FT_Done_Face(face);
    return scalable;
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

FontStack makeStack(std::string_view typeface) {
  static const FontFiles files;
  std::vector<std::string> families;
  if (!typeface.empty()) families.emplace_back(typeface);
  for (const auto& entry : substitutes()) {
    if (basic::EqualsIgnoreCase(entry.typeface, typeface))
      families.insert(families.end(), entry.others.begin(), entry.others.end());
  }
  FontStack stack;
  bool measured = false;
  for (const auto& family : families) {
    stack.css += '\'';
    for (const char c : family) {
      // What would end the string or the attribute has no place in a family's name.
      const bool plain = static_cast<unsigned char>(c) >= 32 && c != '\'' && c != '"' && c != '\\' &&
                         c != '<' && c != '>' && c != '&' && c != ';' && c != '{' && c != '}';
      if (plain) stack.css += c;
    }
    stack.css += "',";
    measured = measured || files.read(family, false, stack.metrics);
  }
  const char* last = generic(typeface);
  if (!measured) files.read(last, true, stack.metrics);
  stack.css += last;
  return stack;
}

}  // namespace

const FontStack& fontStack(std::string_view typeface) {
  static std::unordered_map<std::string, FontStack> stacks;
  const std::string key(typeface);
  const auto known = stacks.find(key);
  if (known != stacks.end()) return known->second;
  return stacks.emplace(key, makeStack(typeface)).first->second;
}

}  // namespace render
