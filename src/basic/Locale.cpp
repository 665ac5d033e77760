#include "basic/Locale.h"

#include <utility>

namespace basic {
namespace {

Locale& inForce() {
  static Locale locale;
  return locale;
}

}  // namespace

const Locale& UserLocale() { return inForce(); }

void SetUserLocale(Locale locale) { inForce() = std::move(locale); }

}  // namespace basic
