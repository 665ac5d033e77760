#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/distribution.h"
#include "model/modSchedule.h"
#include "pages/frmPage.h"

namespace LF2000 {

/// For which computers a presentation is meant and when it is on, how it is sent there, and when it was last.
/// The tags are written on OK and before it is sent.
class frmDistribution final : public frmPage {
 public:
  explicit frmDistribution(std::shared_ptr<clsPresentation> presentation);
  void Reload() override;

 protected:
  bool Apply() override;

 private:
  void AddControls();
  void ShowFolder();
  void AskLast();
  void ShowLast(const std::optional<host::LastSending>& last);
  void cmdBrowse_Click();
  void cmdSend_Click();
  /// Asks, and takes it back when that is meant.
  void cmdWithdraw_Click();
  [[nodiscard]] std::vector<std::string> Computers() const;
  /// Nothing, and a complaint, for what is no date.
  [[nodiscard]] std::optional<basic::Date> DateIn(Forms::TextBox& box);
  [[nodiscard]] std::optional<modSchedule::Schedule> ScheduleInFields();
  [[nodiscard]] host::SendingWay Way() const;

  Forms::TextBox& txtComputers_;
  Forms::CommandButton& cmdBrowse_;
  Forms::TextBox& txtStart_;
  Forms::TextBox& txtStop_;
  Forms::TextBox& txtDays_;
  Forms::TextBox& txtHours_;
  Forms::Label& lblFolder_;
  Forms::OptionButton& optLive_;
  Forms::OptionButton& optFiles_;
  Forms::OptionButton& optFrozen_;
  Forms::Label& lblLast_;
  Forms::CommandButton& cmdSend_;
  Forms::CommandButton& cmdWithdraw_;
  bool isWayChosen_ = false;
};

}  // namespace LF2000
