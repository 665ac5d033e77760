#include "app/inspect/CollectedErrors.h"

#include <algorithm>

#include "addin/support/modErrors.h"
#include "app/wiring/Output.h"

namespace app {

namespace {

/// A line of a log is date and time, ".", three digits, a blank and the text.
std::string_view withoutTime(std::string_view line) {
  const auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
  for (std::size_t i = 0; i + 4 < line.size(); ++i) {
    if (line[i] == '.' && isDigit(line[i + 1]) && isDigit(line[i + 2]) && isDigit(line[i + 3]) &&
        line[i + 4] == ' ') {
      line.remove_prefix(i + 5);
      break;
    }
  }
  while (line.ends_with('\n') || line.ends_with('\r')) line.remove_suffix(1);
  return line;
}

}  // namespace

CollectedErrors::CollectedErrors() : usual_(host::Current()), files_(*usual_.files) {
  host::Services aside = usual_;
  aside.files = &files_;
  aside.messageBox = &noBoxes_;
  host::Use(aside);
}

CollectedErrors::~CollectedErrors() { host::Use(usual_); }

void CollectedErrors::LogAside::Append(std::string_view path, std::string_view text) {
  if (path != LF2000::modErrors::ErrorLogFile()) {
    files_.Append(path, text);
    return;
  }
  std::string said = joinedLines(std::string(withoutTime(text)));
  if (std::find(texts.begin(), texts.end(), said) == texts.end()) texts.push_back(std::move(said));
}

void CollectedErrors::LogAside::Kill(std::string_view path) {
  const std::string log = LF2000::modErrors::ErrorLogFile();
  if (path != log && path != LF2000::modErrors::OlderLogFile(log)) files_.Kill(path);
}

void CollectedErrors::LogAside::Name(std::string_view path, std::string_view newPath) {
  if (path != LF2000::modErrors::ErrorLogFile()) files_.Name(path, newPath);
}

}  // namespace app
