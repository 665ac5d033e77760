#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "model/clsShape.h"
#include "model/modFieldNames.h"
#include "model/modFillRows.h"
#include "pages/frmShapesPage.h"

namespace LF2000 {

/// A page for shapes that show the value of a column and a row each, alone or several at once: what differs
/// among several is "(various)" and stays as it is until it is touched. Rows of several move together, or
/// count up from the first by a step.
class frmValuePage : public frmShapesPage {
 public:
  void Reload() override;

 protected:
  /// A link as it stands, or as it is proposed for a shape without one.
  struct Draft {
    std::shared_ptr<PowerPoint::Shape> Shape;
    bool IsLinked = false;
    std::string Connection;
    std::string Column;
    double Row = 1;
    std::string Folder;
    std::string Extension;
    friend bool operator==(const Draft&, const Draft&) = default;
  };

  frmValuePage(std::string name, std::string caption, Forms::Placement placement,
               std::shared_ptr<clsPresentation> presentation, modSelected::Selected selected,
               SourceType type);

  /// The rows of connection, column and row.
  void AddSourceRows();
  /// The rows of what is shown now, the buttons of a page.
  void AddStateRows();

  [[nodiscard]] std::vector<Draft>& Drafts() { return drafts_; }
  [[nodiscard]] const std::vector<Draft>& Drafts() const { return drafts_; }
  /// What all have in common, "(various)" where they differ.
  [[nodiscard]] std::string Common(std::string Draft::*field) const;

  /// The drafts have been changed by a control: a docked page writes them, once they are complete.
  void Changed(const std::string& label, const Forms::Control& control);
  /// Everything but what somebody types into.
  virtual void ShowAll(const Forms::Control* typing);
  void ShowNow() override;
  /// The value of one shape as it stands, an empty `problem` if there is none.
  [[nodiscard]] std::string ValueOf(const Draft& draft, std::string& problem) const;
  bool Apply() override;

 private:
  void Read();
  void Propose(Draft& draft, std::size_t place);
  void SuggestColumn(Draft& draft) const;

  void cmbConnection_Change();
  void TakeColumn(bool isLeft);
  void cmdNearest_Click();
  void txtRow_Change();
  void txtStep_Change();
  void cmdFill_Click();

  [[nodiscard]] std::string RowText() const;
  [[nodiscard]] std::string StepText() const;
  [[nodiscard]] bool SetRows(Forms::TextBox& box, const std::function<double(std::size_t)>& row);
  void ShowColumns();
  /// Whether the column is missing, and which one is likest to it.
  void ShowNearest();
  /// Rows for shapes that go on below these.
  struct Fill {
    bool IsPossible = false;
    std::int32_t First = 0;
    std::int32_t Last = 0;
    std::int32_t Step = 0;
  };
  [[nodiscard]] Fill FillBelow(std::size_t shapes) const;
  void ShowFill();
  /// The control that lacks something, and why; null when every draft is a whole link.
  [[nodiscard]] const Forms::Control* Incomplete(std::string& why) const;
  void Write(const std::string& label, const std::string& run);

  SourceType type_;
  std::vector<Draft> drafts_;
  std::vector<Draft> stored_;
  std::string nearest_;

  Forms::ComboBox& cmbConnection_;
  Forms::CommandButton& cmdManage_;
  Forms::ComboBox& cmbColumn_;
  Forms::CommandButton& cmdNearest_;
  Forms::TextBox& txtRow_;
  Forms::UpDown& udRow_;
  Forms::TextBox& txtStep_;
  Forms::Label& lblNow_;
  Forms::Label& lblFresh_;
  Forms::Label& lblFill_;
  Forms::CommandButton& cmdFill_;
  Forms::CommandButton& cmdLink_;
  Forms::CommandButton& cmdUnlink_;
};

}  // namespace LF2000
