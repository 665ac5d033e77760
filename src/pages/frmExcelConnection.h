#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "connections/SheetTable.h"
#include "pages/frmConnection.h"

namespace LF2000 {

/// A range of a worksheet. As soon as the workbook is named its sheets are listed; the range of a new
/// connection follows what the sheet holds, rows to come included, until the author says otherwise.
class frmExcelConnection final : public frmConnection {
 public:
  /// `edited` is null for a new connection, `path` the workbook of a new one as far as it is known.
  frmExcelConnection(const std::shared_ptr<clsPresentation>& presentation,
                     const std::shared_ptr<clsConnection>& edited, std::string_view path, Stored stored);

 private:
  /// What a look found, as far as it came.
  struct Found {
    bool HasSheets = false;
    std::vector<std::string> Sheets;
    std::optional<SheetTable> Table;
  };

  void Describe(clsConnection& connection) const override;
  bool Check() override;
  void Look() override;
  void EndTrials() override { Abandon(look_); }
  bool CheckRange();
  void ShowFound(const TrialResult& result, const Found& found, const clsConnection& looked);
  void ShowSheets(const TrialResult& result, const Found& found, const clsConnection& looked);
  void OfferRange();
  /// The range becomes what was drawn in the preview: columns with all rows to come where only their headers
  /// were. A rectangle without the row of the names has none.
  void TakeDrawn();

  Forms::TextBox& txtFile_;
  Forms::CommandButton& cmdBrowse_;
  Forms::ComboBox& cmbSheet_;
  Forms::TextBox& txtRange_;
  Forms::CommandButton& cmdWholeSheet_;
  Forms::CheckBox& chkFirstRow_;
  Forms::Label& lblFound_;
  std::shared_ptr<ConnectionTrial> look_;
  std::optional<SheetTable> table_;
  /// Where the cells of the preview stand; nothing where that is not known, as of a name. Its first row holds
  /// the column names, or not.
  std::optional<basic::Area> shown_;
  bool showsNames_ = false;
  /// A range that the workbook was found not to have, although it is no reference.
  std::string refusedRange_;
  bool guessesFirstRow_;
  bool guessesRange_;
};

}  // namespace LF2000
