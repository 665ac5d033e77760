// For whom and when a presentation is meant, and how it is sent there.

#include <utility>
#include <vector>

#include "addin/support/TemporaryFile.h"
#include "addin/support/modErrors.h"
#include "addin/support/modGlobalFunctions.h"
#include "addin/support/modJobs.h"
#include "basic/Counted.h"
#include "basic/Error.h"
#include "basic/Strings.h"
#include "host/services.h"
#include "model/OpenedPresentation.h"
#include "model/clsPresentation.h"
#include "model/modDistributionTags.h"
#include "model/modOfflineCopy.h"
#include "model/modOfflineLinks.h"
#include "model/modSample.h"
#include "model/modSending.h"

namespace LF2000 {

namespace {

std::string TextOf(const host::Sent& sent) {
  constexpr std::uint64_t Kilobyte = 1024;
  std::string text = "The presentation was sent.\r\n" + sent.Place + ", " +
                     basic::Counted(sent.Files, "file") + ", " +
                     std::to_string((sent.Bytes + Kilobyte - 1) / Kilobyte) + " kB.";
  for (const std::string& warning : sent.Warnings) text += "\r\n" + warning;
  return text;
}

void TellSent(const host::JobEnd& end, const host::Sent& sent) {
  using Kind = host::JobEnd::Kind;
  if (end.How == Kind::Cancelled) return;
  if (end.How == Kind::Done) {
    host::Current().messageBox->MsgBox(TextOf(sent), host::vbInformation, ProductTitle);
    return;
  }
  modErrors::LastError = {static_cast<double>(end.Number), end.Source, end.Description};
  modErrors::ReportError(modErrors::SendingPresentation);
}

}  // namespace

void clsPresentation::SetDistributionListTags(basic::Date start, basic::Date stop,
                                              std::vector<std::string> computers, std::string days,
                                              std::string hours) try {
  RequireVersionTag();
  modDistributionTags::Audience audience{std::move(computers),
                                         {start, stop, std::move(days), std::move(hours)}};
  modDistributionTags::Write(*presentation_->Tags(), audience);
  audience_ = std::move(audience);
} catch (...) {
  modErrors::CatchError(modErrors::SavingDistributionList);
}

void clsPresentation::SetDistributionList() { ShowPage(modPropertyPages::Page::Distribution); }

void clsPresentation::SendPresentation(const modSending::Options& options) try {
  const modSending::Options how = modSending::Complete(options);
  if (how.Folder.empty()) {
    host::Current().messageBox->MsgBox(modSending::NoFolder, host::vbExclamation, ProductTitle);
    return;
  }
  const auto sent = std::make_shared<host::Sent>();
  host::Job job;
  job.Caption = "Sending presentation";
  job.Work = [self = shared_from_this(), how, sent] { *sent = self->Send(how); };
  job.Done = [sent](const host::JobEnd& end) { TellSent(end, *sent); };
  modJobs::Start(std::move(job));
} catch (...) {
  modErrors::CatchError(modErrors::SendingPresentation);
}

void clsPresentation::WithdrawPresentation(std::function<void()> done) try {
  host::Job job;
  job.Caption = "Taking presentation back";
  job.Work = [how = modSending::Complete({}), name = modSending::NameOf(*presentation_)] {
    modSending::Sender().Withdraw(how.Folder, name, how.KeyFile);
  };
  job.Done = [done = std::move(done)](const host::JobEnd& end) {
    using Kind = host::JobEnd::Kind;
    if (end.How == Kind::Done) {
      host::Current().messageBox->MsgBox("The presentation was taken back from the players.",
                                         host::vbInformation, ProductTitle);
      if (done) done();
    } else if (end.How != Kind::Cancelled) {
      modErrors::LastError = {static_cast<double>(end.Number), end.Source, end.Description};
      modErrors::ReportError();
    }
  };
  modJobs::Start(std::move(job));
} catch (...) {
  modErrors::CatchError();
}

host::Sent clsPresentation::Send(const modSending::Options& options) {
  const modSending::Options how = modSending::Complete(options);
  if (how.Folder.empty()) {
    throw basic::Error(basic::AdapterError, "clsPresentation", std::string(modSending::NoFolder));
  }
  modSample::RequireNone(*this, "The presentation cannot be sent");
  host::Distribution& sender = modSending::Sender();
  SaveForSending();

  host::Parcel parcel;
  parcel.Folder = how.Folder;
  parcel.KeyFile = how.KeyFile;
  parcel.Original = presentation_->FullName();
  parcel.Name = modSending::NameOf(*presentation_);
  parcel.Places = host::EnclosurePlaces(parcel.Original);
  const auto last = how.Way ? std::nullopt : sender.Last(parcel.Folder, parcel.Name);
  parcel.Way = how.Way.value_or(last ? last->Way : host::SendingWay::Live);
  const TemporaryFile saved;
  const TemporaryFile frozen;
  parcel.Presentation = parcel.Way == host::SendingWay::Frozen ? frozen.Name() : saved.Name();
  const std::vector<std::string> outside = MakeCopy(parcel, saved.Name());
  host::Sent sent = sender.Send(parcel);
  sent.Warnings.insert(sent.Warnings.end(), outside.begin(), outside.end());
  return sent;
}

void clsPresentation::SaveForSending() {
  if (presentation_->Saved()) return;
  try {
    presentation_->Save();
  } catch (...) {
    // The live values were taken out for the save.
    FillValues(false);
    throw;
  }
}

std::vector<std::string> clsPresentation::MakeCopy(host::Parcel& parcel, const std::string& saved) {
  // What opens meanwhile is nobody's presentation to edit.
  const modGlobalFunctions::OfflineGeneration generation(parcel.Original);
  const bool isFrozen = parcel.Way == host::SendingWay::Frozen;
  if (isFrozen) modOfflineLinks::DrawSheets(presentation_);
  SaveWithoutValues(saved);
  std::vector<std::string> outside;
  if (isFrozen) outside = modOfflineCopy::Make({saved, parcel.Presentation}, {});
  const OpenedPresentation opened(parcel.Presentation);
  PowerPoint::Presentation& copy = *opened.Presentation();
  if (isFrozen) {
    modDistributionTags::Write(*copy.Tags(), audience_);
  } else {
    parcel.Enclosures = modSending::Redirect(copy, parcel.Way, parcel.Original, parcel.Places);
  }
  copy.Save();
  return outside;
}

}  // namespace LF2000
