#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "host/jobs.h"
#include "pages/frmValuePage.h"

namespace LF2000 {

/// The page of pictures and objects that show a file that the data name. Whether the files are there is
/// looked after by a job, as they may lie on another machine.
class frmDataObject final : public frmValuePage {
 public:
  frmDataObject(Forms::Placement placement, std::shared_ptr<clsPresentation> presentation,
                modSelected::Selected selected);

 protected:
  void ShowAll(const Forms::Control* typing) override;
  void ShowNow() override;

 private:
  /// What the files depend on.
  struct Question {
    Draft First;
    std::int64_t DataVersion = 0;
    friend bool operator==(const Question&, const Question&) = default;
  };
  struct Answer {
    /// The file of the first shape, empty without one.
    std::string Name;
    std::string Path;
    std::string Problem;
    /// Those looked at, which are not all where IsCut.
    std::int64_t Rows = 0;
    bool IsCut = false;
    /// Rows whose file is not there, with the name: "3", "photos\rye.jpg".
    std::vector<std::vector<std::string>> Missing;
    /// With how many of the rows' names each makes a file that is there.
    std::map<std::string, int> Extensions;
  };

  void txtFolder_Change();
  void cmbExtension_Change();
  void cmdBrowse_Click();
  void AskForFiles();
  static void FindFiles(Answer& answer, clsConnection& connection, const Draft& draft,
                        const std::string& presentation, const bool& isCancelled);
  static void FindExtensions(Answer& answer, clsConnection& connection, const Draft& draft,
                             const std::string& presentation, const bool& isCancelled);
  void ShowAnswer(const Answer& answer);
  void ShowExtensions(const std::map<std::string, int>& found);

  Forms::TextBox& txtFolder_;
  Forms::CommandButton& cmdBrowse_;
  Forms::ComboBox& cmbExtension_;
  Forms::Picture& picNow_;
  Forms::Label& lblFile_;
  Forms::Label& lblMissing_;
  Forms::Grid& grdFiles_;
  Question asked_;
  std::shared_ptr<host::RunningJob> looking_;
  int looks_ = 0;
};

}  // namespace LF2000
