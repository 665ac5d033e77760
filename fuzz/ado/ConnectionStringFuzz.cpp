// Any text as a connection string, whole and with a password put into it: it is
// read, resolved, translated and masked. Nothing but Error may come out, the driver finds
// no setting that could do harm, and the password is in nothing that is shown.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "addin/support/modGlobalFunctions.h"
#include "ado/ConnectionString.h"
#include "ado/Providers.h"
#include "basic/ConnectionString.h"
#include "basic/Error.h"
#include "basic/Strings.h"
#include "fakes/FakeServices.h"
#include "host/services.h"

namespace {

constexpr std::string_view Secret = "hUsH-hUsH";
constexpr std::string_view Base = "/decks/a;b/show.pptx";

void require(bool promise) {
  if (!promise) std::abort();
}

void requireHidden(std::string_view text) { require(text.find(Secret) == std::string_view::npos); }

/// A setting with another value reads as that value, its neighbours as before.
void replaceValues(std::string_view text, std::string_view value) {
  const auto settings = basic::ReadConnectionString(text);
  for (std::size_t i = 0; i < settings.size(); ++i) {
    require(settings[i].valueAt + settings[i].valueSize <= text.size());
    if (!settings[i].fault.empty()) continue;
    const auto changed = basic::ReadConnectionString(basic::WithConnectionValue(text, settings[i], value));
    require(changed.size() == settings.size());
    for (std::size_t k = 0; k < settings.size(); ++k) {
      require(changed[k].key == settings[k].key && changed[k].fault == settings[k].fault);
      require(changed[k].value == (k == i ? value : std::string_view(settings[k].value)));
    }
  }
}

/// Where a driver that reads braces in this way takes the value to end.
std::size_t endOfValue(std::string_view text, std::size_t at, ado::Braces braces) {
  if (braces != ado::Braces::None && at < text.size() && text[at] == '{') {
    for (++at; at < text.size(); ++at) {
      if (text[at] != '}') continue;
      if (braces == ado::Braces::Single || at + 1 == text.size() || text[at + 1] != '}') break;
      ++at;
    }
  }
  return std::min(text.find(';', at), text.size());
}

/// Reads the text as drivers do, by its own rules where they are known.
void requireHarmless(std::string_view text) {
  static constexpr std::string_view Harmful[] = {"LOADEXT",     "TRACEFILE",    "SAVEFILE", "FILEDSN",
                                                 "JOURNALMODE", "DUMPFILE",     "INITSTMT", "PLUGIN_DIR",
                                                 "LOGDIR",      "CONNSETTINGS", "PQOPT",    "DMCONNATTR"};
  const bool doubles = text.starts_with("Driver={PostgreSQL") || text.starts_with("Driver={MariaDB");
  const auto braces = doubles                                ? ado::Braces::Doubled
                      : text.starts_with("Driver={FreeTDS}") ? ado::Braces::Single
                                                             : ado::Braces::None;
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t equals = text.find('=', at);
    require(equals != std::string_view::npos);
    const std::string key = basic::UCase(text.substr(at, equals - at));
    for (const std::string_view each : Harmful) require(key != each);
    // The driver manager reads the driver's name, and knows doubled braces.
    at = endOfValue(text, equals + 1, key == "DRIVER" ? ado::Braces::Doubled : braces) + 1;
  }
}

void translate(std::string_view text) {
  const auto settings = basic::ReadConnectionString(text);
  const bool readable =
      std::all_of(settings.begin(), settings.end(), [](const auto& each) { return each.fault.empty(); });
  try {
    const ado::Target target =
        ado::targetOf(text, [](std::string_view path) { return "/local" + std::string(path); });
    require(readable);
    requireHidden(target.shown);
    requireHarmless(target.odbcText);
  } catch (const basic::Error& error) {
    requireHidden(error.description);
  }
}

void examine(std::string_view text) {
  requireHidden(basic::MaskedConnectionString(text));
  const std::string resolved = LF2000::modGlobalFunctions::ResolveConnectionString(text, Base);
  require(basic::ReadConnectionString(resolved).size() == basic::ReadConnectionString(text).size());
  requireHidden(basic::MaskedConnectionString(resolved));
  translate(resolved);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static fakes::Module module;
  static fakes::Settings settings;
  host::Services services;
  services.module = &module;
  services.settings = &settings;
  host::Use(services);
  if (size < 2) return 0;

  const std::string_view text(reinterpret_cast<const char*>(data + 1), size - 1);
  if (text.find(Secret) != std::string_view::npos) return 0;
  examine(text);
  const std::size_t half = text.size() / 2;
  replaceValues(text.substr(0, half), text.substr(half));

  static constexpr std::string_view Keys[] = {"PWD=", "Password = ", "jet oledb:database password=", "Pass='",
                                              "ACCESSTOKEN={"};
  const std::size_t at = data[0] % (text.size() + 1);
  const std::string secret = std::string(Keys[data[0] % std::size(Keys)]) + std::string(Secret);
  examine(std::string(text.substr(0, at)) + ";" + secret + ";" + std::string(text.substr(at)));
  return 0;
}
