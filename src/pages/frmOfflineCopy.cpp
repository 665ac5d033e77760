// The name of an off-line copy is looked over, and the copy handed to a job.

#include "pages/frmOfflineCopy.h"

#include <cstdint>
#include <string_view>
#include <utility>

#include "addin/support/modGlobalFunctions.h"
#include "addin/support/modJobs.h"
#include "basic/Error.h"
#include "basic/Strings.h"
#include "host/services.h"
#include "model/modOfflineCopy.h"

namespace LF2000 {

namespace {

constexpr std::string_view Ending = ".pptx";

/// Beside the presentation: "board-offline.pptx".
std::string ProposedName(const std::string& fullName) {
  const std::string name = fullName.substr(fullName.find_last_of("/\\") + 1);
  return name.substr(0, name.rfind('.')) + "-offline" + std::string(Ending);
}

bool IsPresentation(std::string_view name) {
  return name.size() > Ending.size() &&
         basic::EqualsIgnoreCase(name.substr(name.size() - Ending.size()), Ending);
}

bool IsThere(const std::string& file) {
  bool isThere = false;
  modGlobalFunctions::IgnoreErrors([&] {
    static_cast<void>(host::Current().files->FileDateTime(file));
    isThere = true;
  });
  return isThere;
}

/// Raises why no file can be made beside it.
void RequireWritable(const std::string& file) {
  host::Files& files = *host::Current().files;
  files.Kill(files.TempFileName(file.substr(0, file.find_last_of("/\\") + 1), "LFO"));
}

/// Where nothing can show it, it lies in its folder all the same.
void ShowFile(const std::string& file) {
  constexpr std::int32_t SW_SHOW = 5;
  modGlobalFunctions::IgnoreErrors([&] { host::Current().shell->ShellExecute("open", file, SW_SHOW); });
}

}  // namespace

frmOfflineCopy::frmOfflineCopy(std::shared_ptr<clsPresentation> presentation)
    : frmPage("frmOfflineCopy", "Off-line copy", Forms::Placement::Dialog, std::move(presentation)),
      txtFile_(Add<Forms::TextBox>("txtFile")),
      chkReplace_(Add<Forms::CheckBox>("chkReplace", "&Replace the file of that name")),
      chkKeepClocks_(Add<Forms::CheckBox>("chkKeepClocks", "Clocks &go on, as date fields")) {
  AddRow("&File", {&txtFile_});
  AddRow("", {&chkReplace_});
  AddRow("", {&chkKeepClocks_});
  txtFile_.Text(ProposedName(Presentation()->ActivePresentation()->FullName()));
  AddOKCancel();
}

std::string frmOfflineCopy::File() {
  const std::string_view name = basic::Trim(txtFile_.Text());
  const std::string presentation = Presentation()->ActivePresentation()->FullName();
  std::string file = modGlobalFunctions::ResolvePath(name, presentation);
  std::string why;
  if (!IsPresentation(name)) {
    why = "The name of a presentation ends in " + std::string(Ending) + ".";
  } else if (file == presentation) {
    why = "This is the presentation itself.";
  } else if (!chkReplace_.Value() && IsThere(file)) {
    why = "There is a file of that name already.";
  } else {
    try {
      RequireWritable(file);
    } catch (const basic::Error& error) {
      why = error.description;
    }
  }
  if (why.empty()) return file;
  Complain(txtFile_, why);
  return {};
}

void frmOfflineCopy::Start(const std::string& file) {
  const auto isCancelled = std::make_shared<bool>(false);
  modOfflineCopy::Options options;
  options.KeepClocks = chkKeepClocks_.Value();
  options.IsCancelled = [isCancelled] { return *isCancelled; };
  host::Job job;
  job.Caption = "Creating off-line presentation";
  job.Work = [presentation = Presentation(), file, options] {
    if (presentation->CreateOfflinePPT(file, options)) return ShowFile(file);
    // What failed was reported.
    if (options.IsCancelled()) {
      throw basic::Error(basic::AdapterError, "frmOfflineCopy", modOfflineCopy::Cancelled().what());
    }
  };
  job.Cancel = [isCancelled] { *isCancelled = true; };
  modJobs::Start(std::move(job));
}

bool frmOfflineCopy::Apply() {
  const std::string file = File();
  if (file.empty()) return false;
  Start(file);
  return true;
}

}  // namespace LF2000
