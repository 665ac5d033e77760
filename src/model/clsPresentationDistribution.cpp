// For whom and when a presentation is meant, and how it is sent there.

#include <utility>

#include "addin/support/TemporaryFile.h"
#include "addin/support/modErrors.h"
#include "addin/support/modGlobalFunctions.h"
#include "addin/support/modJobs.h"
#include "basic/Conversion.h"
#include "basic/Counted.h"
#include "basic/Error.h"
#include "basic/Strings.h"
#include "host/services.h"
#include "model/clsPresentation.h"
#include "model/modLinkedSheets.h"
#include "model/modOfflineCopy.h"
#include "model/modSending.h"
#include "model/modTags.h"

namespace LF2000 {

namespace {

/// A copy that is open, as long as this object lives.
class OpenCopy {
 public:
  explicit OpenCopy(const std::string& file) {
    const auto& application = modGlobalFunctions::HostApplication;
    if (!application) {
      throw basic::Error(basic::AdapterError, "clsPresentation", "No host is there to open a copy.");
    }
    presentation_ = application->Presentations()->Open(file);
  }
  ~OpenCopy() {
    modGlobalFunctions::IgnoreErrors([this] { presentation_->Close(); });
  }
  OpenCopy(const OpenCopy&) = delete;
  OpenCopy& operator=(const OpenCopy&) = delete;
  [[nodiscard]] PowerPoint::Presentation& operator*() const { return *presentation_; }

 private:
  std::shared_ptr<PowerPoint::Presentation> presentation_;
};

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

void clsPresentation::LoadDistribution() {
  const auto tags = presentation_->Tags();
  const auto each = [&tags](std::string_view key, const auto& take) {
    modTags::ForEachTag(*tags, key, [&](const std::string&, const std::string& value) { take(value); });
  };
  each(modTags::DistributionStart,
       [this](const std::string& value) { schedule_.start = basic::CDate(value); });
  each(modTags::DistributionStop, [this](const std::string& value) { schedule_.stop = basic::CDate(value); });
  each(modTags::DistributionDays, [this](const std::string& value) { schedule_.days = value; });
  each(modTags::DistributionHours, [this](const std::string& value) { schedule_.hours = value; });
  each(modTags::DistributionComputer, [this](const std::string& value) {
    distributionList_ = basic::Split(value, modTags::FieldSeparator);
    if (!distributionList_.empty()) distributionList_.pop_back();
  });
}

void clsPresentation::SetDistributionListTags(basic::Date start, basic::Date stop,
                                              std::vector<std::string> computers, std::string days,
                                              std::string hours) try {
  RequireVersionTag();
  const modSchedule::Schedule schedule{start, stop, std::move(days), std::move(hours)};
  modSending::WriteTags(*presentation_->Tags(), schedule, computers);
  schedule_ = schedule;
  distributionList_ = std::move(computers);
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

host::Sent clsPresentation::Send(const modSending::Options& options) {
  const modSending::Options how = modSending::Complete(options);
  if (how.Folder.empty()) {
    throw basic::Error(basic::AdapterError, "clsPresentation", std::string(modSending::NoFolder));
  }
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
  MakeCopy(parcel, saved.Name());
  return sender.Send(parcel);
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

void clsPresentation::MakeCopy(host::Parcel& parcel, const std::string& saved) {
  // What opens meanwhile is nobody's presentation to edit.
  const modGlobalFunctions::OfflineGeneration generation(parcel.Original);
  const bool isFrozen = parcel.Way == host::SendingWay::Frozen;
  if (isFrozen) modLinkedSheets::Draw(presentation_);
  SaveWithoutValues(saved);
  if (isFrozen) modOfflineCopy::Make({saved, parcel.Presentation}, {});
  const OpenCopy copy(parcel.Presentation);
  if (isFrozen) {
    modSending::WriteTags(*(*copy).Tags(), schedule_, distributionList_);
  } else {
    parcel.Enclosures = modSending::Redirect(*copy, parcel.Way, parcel.Original, parcel.Places);
  }
  (*copy).Save();
}

}  // namespace LF2000
