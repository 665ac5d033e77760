#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "model/clsSlide.h"
#include "pages/ScrollPlay.h"
#include "pages/frmPage.h"

namespace LF2000 {

/// The page of a slide: whether it hides without data and refreshes its linked objects, and how its rows
/// scroll. An entry that is there is changed as its fields are; another number makes a new one by Add.
class frmSlide final : public frmPage {
 public:
  frmSlide(Forms::Placement placement, std::shared_ptr<clsPresentation> presentation,
           std::shared_ptr<PowerPoint::Slide> slide);
  ~frmSlide() override { play_->Ended = {}; }
  frmSlide(const frmSlide&) = delete;
  frmSlide& operator=(const frmSlide&) = delete;
  void Reload() override;

 protected:
  bool Apply() override;
  void Closed() override { play_->Stop(); }

 private:
  struct Entry {
    std::int32_t Number = 0;
    bool IsOn = true;
    std::int32_t Step = 0;
    std::int32_t Time = 0;
  };

  void Read();
  void ShowState();
  void ShowHides();
  void ShowEntries();
  void ShowPlay();
  /// What an entry moves in a show: "shapes of 001", "shape '7'".
  [[nodiscard]] std::string Moves(std::int32_t number) const;

  void lstScroll_Change();
  void EntryField_Change();
  void cmdAdd_Click();
  void cmdRemove_Click();
  void cmdPlay_Click();
  /// What stands in the fields; nothing, and a complaint, for what is none.
  [[nodiscard]] std::optional<Entry> EntryInFields();
  [[nodiscard]] std::optional<std::int32_t> NumberInField(Forms::TextBox& box, std::int32_t least,
                                                          std::int32_t most, const std::string& what);
  void Put(const Entry& entry);
  void Changed();
  void Write(std::string_view run);

  std::shared_ptr<PowerPoint::Slide> slide_;
  clsSlide properties_;
  bool isChanged_ = false;
  std::shared_ptr<ScrollPlay> play_;
  Forms::CheckBox& chkHideWhenNoData_;
  Forms::Label& lblHides_;
  Forms::CheckBox& chkRefreshLinkedObjects_;
  Forms::Label& lblProblems_;
  Forms::Frame& fraScroll_;
  Forms::ListBox& lstScroll_;
  Forms::TextBox& txtEntry_;
  Forms::Label& lblMoves_;
  Forms::CheckBox& chkScroll_;
  Forms::TextBox& txtStep_;
  Forms::TextBox& txtTime_;
  Forms::CommandButton& cmdAdd_;
  Forms::CommandButton& cmdRemove_;
  Forms::CommandButton& cmdPlay_;
};

}  // namespace LF2000
