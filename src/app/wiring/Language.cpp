#include "app/wiring/Language.h"

#include "platform/UserLocale.h"

namespace app {

std::string unknownLanguage() {
  const std::string name = platform::unknownLocaleName();
  if (name.empty()) return {};
  return "Numbers and days are shown as in English: the language '" + name +
         "' that LC_ALL, LC_NUMERIC, LC_TIME or LANG names is not known.";
}

}  // namespace app
