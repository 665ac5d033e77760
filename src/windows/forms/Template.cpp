#include "windows/forms/Template.h"

#include <cstdlib>

namespace windows::forms {

namespace {

constexpr unsigned Version = 1;
constexpr unsigned Signature = 0xFFFF;
/// Where the number of windows stands.
constexpr std::size_t CountPlace = 8;

}  // namespace

Template::Template(const std::wstring& title, DWORD style, const LOGFONTW& font, unsigned dpi) {
  word(Version);
  word(Signature);
  doubleWord(0);  // context of help
  doubleWord(0);  // extended style
  doubleWord(style | DS_SHELLFONT);
  for (int i = 0; i < 5; ++i) word(0);  // count and place
  word(0);                              // no menu
  word(0);                              // the class of dialogs
  text(title);
  constexpr int PointsInInch = 72;
  word(static_cast<unsigned>(::MulDiv(std::abs(font.lfHeight), PointsInInch, static_cast<int>(dpi))));
  word(static_cast<unsigned>(font.lfWeight));
  word(static_cast<unsigned>(font.lfItalic) | static_cast<unsigned>(font.lfCharSet) << 8U);
  text(font.lfFaceName);
}

void Template::add(const Part& part, DWORD id) {
  if (words_.size() % 2 != 0) word(0);
  doubleWord(0);  // context of help
  doubleWord(part.extended);
  doubleWord(part.style | WS_CHILD);
  for (int i = 0; i < 4; ++i) word(0);  // place
  doubleWord(id);
  text(part.className);
  text(part.text);
  word(0);  // no data
  ++words_[CountPlace];
}

void Template::doubleWord(DWORD value) {
  word(value & 0xFFFFU);
  word(value >> 16U);
}

void Template::text(std::wstring_view text) {
  words_.insert(words_.end(), text.begin(), text.end());
  word(0);
}

}  // namespace windows::forms
