// How an off-line copy of a presentation is asked for, and what its author hears of it.

#include <string>
#include <vector>

#include "addin/support/TemporaryFile.h"
#include "addin/support/modErrors.h"
#include "addin/support/modGlobalFunctions.h"
#include "basic/Error.h"
#include "host/services.h"
#include "model/clsPresentation.h"
#include "model/modOfflineCopy.h"
#include "model/modOfflineLinks.h"
#include "model/modSample.h"
#include "model/modTags.h"

namespace LF2000 {

namespace {

void RequireOtherFile(const std::string& fileName, const std::string& presentation) {
  const host::Files& files = *host::Current().files;
  if (files.LocalPath(fileName) != files.LocalPath(presentation)) return;
  throw basic::Error(basic::AdapterError, basic::DefaultSource,
                     fileName + " is the presentation itself. Write the copy under another name.");
}

}  // namespace

bool clsPresentation::CreateOfflinePPT(const std::string& fileName,
                                       const modOfflineCopy::Options& options) try {
  RequireOtherFile(fileName, presentation_->FullName());
  modSample::RequireNone(*this, "An off-line copy cannot be made");
  std::vector<std::string> outside;
  {
    const modGlobalFunctions::OfflineGeneration generation(presentation_->FullName());
    modOfflineLinks::DrawSheets(presentation_);
    const TemporaryFile saved;
    SaveWithoutValues(saved.Name());
    outside = modOfflineCopy::Make({saved.Name(), fileName}, options);
  }
  host::MessageBox& messageBox = *host::Current().messageBox;
  for (const std::string& each : outside) messageBox.MsgBox(each, host::vbInformation, ProductTitle);
  if (modGlobalFunctions::InfoSetting("HideMsgBoxOfflineGeneration") != "1") {
    messageBox.MsgBox("Off-line presentation is ready.", host::vbInformation, ProductTitle);
  }
  return true;
} catch (const modOfflineCopy::Cancelled&) {
  return false;
} catch (...) {
  modErrors::CatchError(modErrors::CreatingOfflinePresentation);
  return false;
}

void clsPresentation::SaveWithoutValues(const std::string& fileName) {
  const bool wasSaved = presentation_->Saved();
  PrepareSave();
  const auto putBack = [&] {
    FillValues(false);
    presentation_->Saved(wasSaved);
  };
  try {
    presentation_->SaveCopyAs(fileName);
  } catch (...) {
    putBack();
    throw;
  }
  putBack();
}

}  // namespace LF2000
