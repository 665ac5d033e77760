#pragma once

#include <cstdint>
#include <string>

#include "pages/frmShapesPage.h"

namespace LF2000 {

/// The page of charts and tables, which take a connection as a whole. What each column becomes follows from
/// its place or its name and is shown, not chosen.
class frmGraph final : public frmShapesPage {
 public:
  frmGraph(Forms::Placement placement, std::shared_ptr<clsPresentation> presentation,
           modSelected::Selected selected);
  void Reload() override;

 protected:
  void ShowNow() override;
  bool Apply() override;

 private:
  void Read();
  void ShowState();
  void cmbConnection_Change();
  void Write();
  void ShowMapping();
  void ShowChart(clsConnection& connection);
  void ShowTable(clsConnection& connection);

  /// Empty, or Various.
  std::string number_;
  bool areAllLinked_ = false;
  /// What the mapping was shown for.
  std::string mapped_;
  Forms::ComboBox& cmbConnection_;
  Forms::CommandButton& cmdManage_;
  Forms::Grid& grdMapping_;
  Forms::Label& lblWarning_;
  Forms::Label& lblFresh_;
  Forms::CommandButton& cmdLink_;
  Forms::CommandButton& cmdUnlink_;
};

}  // namespace LF2000
