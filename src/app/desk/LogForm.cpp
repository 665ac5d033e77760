#include "app/desk/LogForm.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <fstream>
#include <string>
#include <string_view>

#include "addin/support/modErrors.h"
#include "app/wiring/LogLine.h"
#include "basic/ConnectionString.h"

namespace app {

namespace {

/// Drivers' words stand before and behind settings.
bool mayHoldSecret(std::string_view text) {
  std::string words(text);
  std::replace(words.begin(), words.end(), ' ', ';');
  return basic::MayHoldSecret(text) || basic::MayHoldSecret(words);
}

/// The last lines, of at most that many bytes. Of an entry that could hold a password the time alone.
std::string endOfLog(const std::string& path, std::size_t most) {
  std::ifstream file(path, std::ios::binary | std::ios::ate);
  if (!file) return {};
  const auto size = static_cast<std::size_t>(file.tellg());
  const std::size_t from = size > most ? size - most : 0;
  file.seekg(static_cast<std::streamoff>(from));
  std::string line;
  if (from > 0) std::getline(file, line);
  std::string text;
  // What goes on from before.
  bool isLeftOut = from > 0;
  while (std::getline(file, line)) {
    const LogLine entry(line);
    const bool goesOn = entry.time.empty();
    if (mayHoldSecret(entry.text)) {
      if (!(goesOn && isLeftOut)) {
        text.append(entry.time).append(" (left out here, as it could hold a password)\n");
      }
      isLeftOut = true;
    } else if (!(goesOn && isLeftOut)) {
      isLeftOut = false;
      text.append(line).append("\n");
    }
  }
  return text;
}

}  // namespace

LogForm::LogForm() : Form("frmErrorsLog", "Errors log", Forms::Width::Wide) {
  constexpr std::size_t most = std::size_t{64} << 10U;
  constexpr std::int64_t lines = 20;
  const std::string path = LF2000::modErrors::ErrorLogFile();
  const std::string log = endOfLog(path, most);
  auto& lblFile = Add<Forms::Label>("lblFile");
  lblFile.Text(path);
  auto& txtLog = Add<Forms::TextBox>("txtLog", lines);
  txtLog.Text(log.empty() ? "Nothing was logged yet." : log);
  txtLog.Enabled(false, "The program alone writes it.");
  auto& cmdOK = Add<Forms::CommandButton>("cmdOK", "OK");
  cmdOK.Click = [this] { Close(Forms::Result::OK); };
  AddRow("File", {&lblFile});
  AddRow("&Last entries", {&txtLog});
  AddButtons({&cmdOK});
  DefaultButton(cmdOK);
  CancelButton(cmdOK);
}

void LogForm::CatchError() { LF2000::modErrors::CatchError(); }

}  // namespace app
