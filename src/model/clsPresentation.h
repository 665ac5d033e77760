#pragma once

#include <cstdint>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "addin/support/modDebug.h"
#include "basic/Date.h"
#include "connections/clsConnection.h"
#include "host/powerpoint.h"
#include "model/clsShape.h"
#include "model/clsSlide.h"
#include "model/modPropertyPages.h"

namespace LF2000 {

/// One presentation open in the host, with everything that its tags describe.
/// Errors are reported by every operation itself, not raised.
class clsPresentation : public std::enable_shared_from_this<clsPresentation> {
 public:
  using ConnectionList = std::vector<std::shared_ptr<clsConnection>>;

  [[nodiscard]] const std::shared_ptr<PowerPoint::Presentation>& ActivePresentation() const {
    return presentation_;
  }
  /// Loads a linked presentation: its connections (each is opened once), its
  /// display type and distribution settings; then fills the linked shapes.
  void ActivePresentation(const std::shared_ptr<PowerPoint::Presentation>& presentation);

  /// Takes up what the tags describe, and neither opens a connection nor fills a shape: for who changes
  /// the description. Connections whose tag cannot be read are left out.
  void Describe(const std::shared_ptr<PowerPoint::Presentation>& presentation);

  /// Codes 1 to 7, see modGlobalFunctions::CurrentDisplayType; 0 before any was set.
  [[nodiscard]] std::int32_t DisplayType() const { return displayType_; }
  void DisplayType(std::int32_t code);

  /// The largest number in use plus one, "001" without any; empty when one of them
  /// is no number, which is reported.
  [[nodiscard]] std::string NewConnectionTagNumber() const;

  /// Removes every tag of the system from the presentation, slides and shapes.
  void RemoveLumenfold();

  /// The version tag's value, empty when not linked.
  [[nodiscard]] std::string LumenfoldVersion() const;
  void SetVersionTag();
  void SetDisplayType();
  /// Writes all connections, then unlinks the shapes that refer to none of them.
  void SetConnectionTags();
  void SetSlideTags(const clsSlide& slide, std::int32_t slideIndex);
  void SetDistributionListTags(basic::Date start, basic::Date stop, std::vector<std::string> computers);

  // Open the property page of the presentation, of the slide or of the shapes that are selected in the active
  // window (modPropertyPages).
  void ShowSlideShowProperties();
  void ShowSlideProperties();
  void ShowClockProperties();
  void ShowDataFieldProperties();
  void ShowDataObjectProperties();
  void ShowGraphProperties();

  /// Fills all linked shapes of a linked presentation, after a requery of every
  /// connection when asked. A shape that cannot be filled keeps no other from it; of the failures of one
  /// column the first is reported.
  void FillValues(bool requery);
  /// Blanks the live texts and gives pictures and charts what their author put
  /// into them, so that a save stores no live value.
  void PrepareSave();
  [[nodiscard]] bool SlideHasConnections(PowerPoint::Slide& slide) const;

  /// The presentation's connections, for those who add, change and remove them;
  /// SetConnectionTags stores what was done.
  [[nodiscard]] ConnectionList& Connections() { return connections_; }
  /// Null without a connection of that number.
  [[nodiscard]] std::shared_ptr<clsConnection> FindConnection(std::string_view tagNumber) const;

  [[nodiscard]] basic::Date DistributionStart() const { return distributionStart_; }
  [[nodiscard]] basic::Date DistributionStop() const { return distributionStop_; }
  [[nodiscard]] const std::vector<std::string>& DistributionList() const { return distributionList_; }

 private:
  static void Log(modDebug::DebugKind kind, std::string_view text);

  void Attach(const std::shared_ptr<PowerPoint::Presentation>& presentation);
  /// False when one could not be opened; the rest is described, not opened.
  bool LoadConnections(bool opens);
  void OpenConnection(clsConnection& connection);
  void LoadSettings();
  void CloseMeter();
  void FillShape(PowerPoint::Slide& slide, const clsShape& link);
  void FillField(PowerPoint::Slide& slide, const clsShape& link, std::int32_t displayType);
  void FillGraph(const clsShape& link);
  void FillTable(const clsShape& link, std::int32_t displayType);
  void FillObject(const clsShape& link, std::int32_t displayType);
  void RequireVersionTag();
  void ShowPage(modPropertyPages::Page page);

  std::shared_ptr<PowerPoint::Presentation> presentation_;
  ConnectionList connections_;
  std::int32_t displayType_ = 0;
  basic::Date distributionStart_;
  basic::Date distributionStop_;
  std::vector<std::string> distributionList_;
  bool meterShown_ = false;
  bool objectFailureTold_ = false;
  /// Connection and column of the values that could not be read.
  std::set<std::pair<std::string, std::string>> toldColumns_;
};

}  // namespace LF2000
