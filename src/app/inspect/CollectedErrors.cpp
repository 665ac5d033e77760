#include "app/inspect/CollectedErrors.h"

#include <algorithm>

#include "addin/support/modErrors.h"
#include "app/wiring/LogLine.h"
#include "app/wiring/Output.h"

namespace app {

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
  std::string said = joinedLines(std::string(LogLine(text).text));
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
