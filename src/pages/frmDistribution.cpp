// The dialog of a presentation's distribution: computers, times, the way, and the sending itself.

#include "pages/frmDistribution.h"

#include <algorithm>
#include <utility>

#include "addin/support/modBrowsers.h"
#include "addin/support/modJobs.h"
#include "basic/Conversion.h"
#include "basic/Error.h"
#include "basic/Strings.h"
#include "host/services.h"
#include "model/modLinkEdits.h"
#include "model/modSending.h"
#include "model/modTags.h"

namespace LF2000 {

namespace {

constexpr std::int64_t ComputerLines = 4;

std::string TextOf(basic::Date date) { return date == basic::Date() ? std::string() : basic::CStr(date); }

constexpr std::string_view NothingThere = "Players have nothing of it from the distribution folder.";

/// Asks before a presentation is taken off the players' screens.
class frmWithdrawal final : public frmPage {
 public:
  frmWithdrawal(std::shared_ptr<clsPresentation> presentation, const std::string& folder)
      : frmPage("frmWithdrawal", "Take back from players", Forms::Placement::Dialog, std::move(presentation)),
        lblWhat_(Add<Forms::Label>("lblWhat")) {
    lblWhat_.Text("'" + modSending::NameOf(*Presentation()->ActivePresentation()) +
                      "' goes off the screens of all players that look into " + folder +
                      ", within two seconds. The presentation here stays as it is.",
                  Forms::Severity::Warning);
    AddRow("", {&lblWhat_});
    AddOKCancel();
  }

 private:
  Forms::Label& lblWhat_;
};

bool IsEmpty(const Forms::TextBox& box) { return basic::Trim(box.Text()).empty(); }

}  // namespace

frmDistribution::frmDistribution(std::shared_ptr<clsPresentation> presentation)
    : frmPage("frmDistribution", "Delivery to players", Forms::Placement::Dialog, std::move(presentation)),
      txtComputers_(Add<Forms::TextBox>("txtComputers", ComputerLines)),
      cmdBrowse_(Add<Forms::CommandButton>("cmdBrowse", "&Browse\u2026")),
      txtStart_(Add<Forms::TextBox>("txtStart")),
      txtStop_(Add<Forms::TextBox>("txtStop")),
      txtDays_(Add<Forms::TextBox>("txtDays")),
      txtHours_(Add<Forms::TextBox>("txtHours")),
      lblFolder_(Add<Forms::Label>("lblFolder")),
      optLive_(Add<Forms::OptionButton>("optLive", "&Live: the players read its data themselves", "way")),
      optFiles_(
          Add<Forms::OptionButton>("optFiles", "With its &files: these go along as they are now", "way")),
      optFrozen_(Add<Forms::OptionButton>("optFrozen", "Fro&zen: with the values of this moment", "way")),
      lblLast_(Add<Forms::Label>("lblLast")),
      cmdSend_(Add<Forms::CommandButton>("cmdSend", "S&end now")),
      cmdWithdraw_(Add<Forms::CommandButton>("cmdWithdraw", "Take bac&k\u2026")) {
  AddControls();
  cmdBrowse_.Click = [this] { cmdBrowse_Click(); };
  cmdSend_.Click = [this] { cmdSend_Click(); };
  cmdWithdraw_.Click = [this] { cmdWithdraw_Click(); };
  for (Forms::OptionButton* option : {&optLive_, &optFiles_, &optFrozen_}) {
    option->Change = [this] { isWayChosen_ = true; };
  }
  optLive_.Value(true);
}

void frmDistribution::AddControls() {
  txtComputers_.Hint("One name a line. None: every computer.");
  txtStart_.Placeholder("at once");
  txtStop_.Placeholder("never");
  txtDays_.Placeholder("every day");
  txtDays_.Hint("mon-fri, or sat,sun");
  txtHours_.Placeholder("the whole day");
  txtHours_.Hint("06:00-22:00, by the clock of each computer");
  AddRow("&Computers", {&txtComputers_, &cmdBrowse_});
  AddRow("&Start", {&txtStart_});
  AddRow("S&top", {&txtStop_});
  AddRow("&Days", {&txtDays_});
  AddRow("&Hours", {&txtHours_});
  AddRow("Folder", {&lblFolder_});
  AddRow("", {&optLive_});
  AddRow("", {&optFiles_});
  AddRow("", {&optFrozen_});
  AddRow("", {&lblLast_});
  AddRow("", {&cmdSend_, &cmdWithdraw_});
  AddOKCancel();
}

void frmDistribution::Reload() {
  std::string computers;
  for (const std::string& computer : Presentation()->DistributionList()) computers += computer + "\n";
  txtComputers_.Text(computers);
  const modSchedule::Schedule& schedule = Presentation()->DistributionSchedule();
  txtStart_.Text(TextOf(schedule.start));
  txtStop_.Text(TextOf(schedule.stop));
  txtDays_.Text(schedule.days);
  txtHours_.Text(schedule.hours);
  cmdWithdraw_.Enabled(false, NothingThere);
  ShowFolder();
}

void frmDistribution::ShowFolder() {
  const std::string folder = modSending::ReadSettings().Folder;
  if (folder.empty()) {
    lblFolder_.Text(modSending::NoFolder, Forms::Severity::Warning);
    cmdSend_.Enabled(false, modSending::NoFolder);
    return;
  }
  lblFolder_.Text(folder);
  AskLast();
}

/// The folder may lie on a drive that does not answer.
void frmDistribution::AskLast() {
  const auto last = std::make_shared<std::optional<host::LastSending>>();
  host::Job job;
  job.Caption = "Looking into the distribution folder";
  job.Work = [last, folder = lblFolder_.Text(),
              name = modSending::NameOf(*Presentation()->ActivePresentation())] {
    *last = modSending::Sender().Last(folder, name);
  };
  job.Done = [this, last, weak = weak_from_this()](const host::JobEnd& end) {
    const auto form = weak.lock();
    if (!form) return;
    Update([&] {
      if (end.How == host::JobEnd::Kind::Done) return ShowLast(*last);
      lblLast_.Text(end.Description, Forms::Severity::Warning);
    });
  };
  modJobs::Start(std::move(job));
}

void frmDistribution::ShowLast(const std::optional<host::LastSending>& last) {
  const bool isThere = last && !last->IsWithdrawn;
  cmdWithdraw_.Enabled(isThere, isThere ? "" : NothingThere);
  if (!last) return lblLast_.Text("Not sent yet.");
  lblLast_.Text((last->IsWithdrawn ? "Taken back " : "Sent ") + basic::CStr(last->When) + ".");
  if (std::exchange(isWayChosen_, true)) return;
  optLive_.Value(last->Way == host::SendingWay::Live);
  optFiles_.Value(last->Way == host::SendingWay::Files);
  optFrozen_.Value(last->Way == host::SendingWay::Frozen);
}

void frmDistribution::cmdBrowse_Click() {
  const std::string computer = modBrowsers::BrowseForComputer(0, "Select a computer.");
  if (computer.empty()) {
    txtComputers_.Hint("This system keeps no list of computers: type their names, one a line.");
    return;
  }
  std::string text = txtComputers_.Text();
  if (!text.empty() && text.back() != '\n') text += '\n';
  txtComputers_.Text(text + computer + "\n");
}

std::vector<std::string> frmDistribution::Computers() const {
  std::string text = txtComputers_.Text();
  for (char& each : text) {
    if (each == ',' || each == ';' || each == '\r' || each == modTags::FieldSeparator) each = '\n';
  }
  std::vector<std::string> computers;
  for (const std::string& line : basic::Split(text, '\n')) {
    const std::string_view name = basic::Trim(line);
    const bool isKnown = std::any_of(computers.begin(), computers.end(), [&](const std::string& each) {
      return basic::EqualsIgnoreCase(each, name);
    });
    if (!name.empty() && !isKnown) computers.emplace_back(name);
  }
  return computers;
}

std::optional<basic::Date> frmDistribution::DateIn(Forms::TextBox& box) {
  if (IsEmpty(box)) return basic::Date();
  constexpr double FirstDay = 1;
  std::string complaint;
  try {
    const basic::Date date = basic::CDate(box.Text());
    if (date.serial >= FirstDay) return date;
    complaint = "Give the day as well";
  } catch (const basic::Error&) {
    complaint = "This is no date and time";
  }
  Complain(box, complaint + ", as in " + basic::CStr(host::Current().clock->Now()) + ".");
  return {};
}

std::optional<modSchedule::Schedule> frmDistribution::ScheduleInFields() {
  for (Forms::TextBox* box : {&txtStart_, &txtStop_, &txtDays_, &txtHours_}) Complain(*box, "");
  const auto start = DateIn(txtStart_);
  const auto stop = DateIn(txtStop_);
  modSchedule::Schedule schedule{start.value_or(basic::Date()), stop.value_or(basic::Date()),
                                 std::string(basic::Trim(txtDays_.Text())),
                                 std::string(basic::Trim(txtHours_.Text()))};
  const modSchedule::Complaint complaint = modSchedule::ScheduleComplaint(schedule);
  if (!complaint.times.empty()) Complain(txtStop_, complaint.times);
  if (!complaint.days.empty()) Complain(txtDays_, complaint.days);
  if (!complaint.hours.empty()) Complain(txtHours_, complaint.hours);
  if (!start || !stop || !complaint.IsEmpty()) return {};
  return schedule;
}

bool frmDistribution::Apply() {
  auto schedule = ScheduleInFields();
  if (!schedule) return false;
  std::vector<std::string> computers = Computers();
  if (*schedule == Presentation()->DistributionSchedule() &&
      computers == Presentation()->DistributionList()) {
    return true;
  }
  modLinkEdits::Begin(*Presentation(), "Delivery to players");
  Presentation()->SetDistributionListTags(schedule->start, schedule->stop, std::move(computers),
                                          std::move(schedule->days), std::move(schedule->hours));
  return true;
}

host::SendingWay frmDistribution::Way() const {
  if (optFrozen_.Value()) return host::SendingWay::Frozen;
  return optFiles_.Value() ? host::SendingWay::Files : host::SendingWay::Live;
}

void frmDistribution::cmdSend_Click() {
  if (!Apply()) return;
  const auto presentation = Presentation();
  modSending::Options options;
  options.Way = Way();
  Close(Forms::Result::OK);
  presentation->SendPresentation(options);
}

void frmDistribution::cmdWithdraw_Click() {
  const auto question = std::make_shared<frmWithdrawal>(Presentation(), lblFolder_.Text());
  question->Show(Forms::Placement::Dialog,
                 [presentation = Presentation(), weak = weak_from_this()](Forms::Result answer) {
                   if (answer != Forms::Result::OK) return;
                   presentation->WithdrawPresentation([weak] {
                     if (const auto form = std::static_pointer_cast<frmDistribution>(weak.lock()))
                       form->AskLast();
                   });
                 });
}

}  // namespace LF2000
