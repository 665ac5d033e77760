#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "model/modConnections.h"
#include "pages/ConnectionTrial.h"
#include "pages/frmPage.h"

namespace LF2000 {

/// What belongs to the presentation as a whole: its connections, with what an author does to them, and its
/// display type. Everything applies at once.
class frmSlideShow final : public frmPage {
 public:
  explicit frmSlideShow(std::shared_ptr<clsPresentation> presentation);
  /// Shows it.
  void OpenAndWatch();
  void Reload() override;

 private:
  void AddControls();
  void SetHandlers();
  [[nodiscard]] std::shared_ptr<clsConnection> Selected() const;
  [[nodiscard]] std::string SelectedNumber() const;
  void Select(const std::string& number);
  [[nodiscard]] Forms::Item ItemOf(const clsConnection& connection) const;
  [[nodiscard]] std::string StateOf(const clsConnection& connection) const;
  void ShowItems();
  void ShowEnabled();
  void Stored(const std::string& number);

  void AddConnection();
  void EditConnection();
  void Duplicate();
  void ShowUses();
  void DisplayTypeChosen();

  // frmSlideShowChanges.cpp.
  void Test(const clsConnection& connection);
  void TestAll();
  void EndTrials();
  void AskRemove();
  void Remove();
  void AskReplace();
  void ReplacementChosen();
  void Compare(const std::string& number, const clsConnection& other);
  void Replace();
  void HideQuestions();

  Forms::ListBox& lstConnections_;
  Forms::ComboBox& cmbKind_;
  Forms::CommandButton& cmdAdd_;
  Forms::CommandButton& cmdEdit_;
  Forms::CommandButton& cmdTest_;
  Forms::CommandButton& cmdTestAll_;
  Forms::CommandButton& cmdDuplicate_;
  Forms::CommandButton& cmdReplace_;
  Forms::CommandButton& cmdRemove_;
  Forms::CommandButton& cmdShowUses_;
  Forms::Label& lblResult_;
  Forms::ListBox& lstUses_;
  Forms::Label& lblRemove_;
  Forms::CommandButton& cmdRemoveNow_;
  Forms::CommandButton& cmdKeep_;
  Forms::ComboBox& cmbReplacement_;
  Forms::Label& lblComparison_;
  Forms::CommandButton& cmdUse_;
  Forms::CommandButton& cmdLeave_;
  Forms::ComboBox& cmbDisplayType_;
  Forms::CommandButton& cmdClose_;

  std::map<std::string, modConnections::Uses> uses_;
  std::map<std::string, std::shared_ptr<ConnectionTrial>> trials_;
  /// What the last test of each said.
  std::map<std::string, std::string> results_;
  std::shared_ptr<ConnectionTrial> comparison_;
  std::unique_ptr<host::Timer> tmrState_;
};

}  // namespace LF2000
