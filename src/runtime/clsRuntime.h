#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <unordered_set>

#include "addin/support/modDebug.h"
#include "host/powerpoint.h"
#include "model/clsPresentation.h"
#include "model/clsShape.h"
#include "model/clsSlide.h"
#include "model/modOfflineCopy.h"
#include "runtime/FrmRuntimeTimer.h"
#include "runtime/OfflinePages.h"
#include "runtime/RuntimeTables.h"

namespace LF2000 {

/// The engine of one running slide show: builds the model of everything that
/// changes during the show once, hands it to FrmRuntimeTimer and then forwards
/// events to it.
class clsRuntime {
 public:
  clsRuntime() = default;
  ~clsRuntime();
  clsRuntime(const clsRuntime&) = delete;
  clsRuntime& operator=(const clsRuntime&) = delete;

  [[nodiscard]] const std::shared_ptr<PowerPoint::Presentation>& ActivePresentation() const {
    return presentation_;
  }
  void ActivePresentation(const std::shared_ptr<PowerPoint::Presentation>& presentation) {
    presentation_ = presentation;
  }

  /// Who reads the databases of the presentation where nothing may wait for one: the show begins with what
  /// has been read, and takes the rest when it is there. Without anybody they are read as the show begins.
  void ReadBy(std::shared_ptr<clsPresentation> reader) { reader_ = std::move(reader); }

  /// Whether building the model shows the open-presentation meter.
  void ShowProgressMeter(bool show) { showMeter_ = show; }

  /// Builds the model, opens all connections, fills every slide once and starts
  /// the timers. A failure is reported and leaves the runtime inactive; a
  /// connection that does not open is reported and tried again by the timers.
  void StartTimers(const std::shared_ptr<PowerPoint::SlideShowWindow>& window);
  /// Fixed by StartTimers.
  [[nodiscard]] std::int32_t SlideCount() const { return slideCount_; }
  /// The data shapes by slide, as StartTimers found them.
  [[nodiscard]] const SlideShapesTable& ShapesInfo() const { return shapes_; }
  /// Makes the copy of `files.Saved`, a presentation whose shapes hold their author's own (PrepareSave). Each
  /// slide is filled as at the beginning of a show; one that scrolls comes as often as its rows need, and one
  /// that hides without data not at all. What cannot be read or freed of its link is reported and stays as it
  /// is. Raises what kept the copy from being written, and modOfflineCopy::Cancelled. Answers what stays
  /// outside of it (modOfflineCopy::Make).
  std::vector<std::string> CreateOfflinePPT(const modOfflineCopy::Files& files,
                                            const modOfflineCopy::Options& options);
  void SlideShowNextSlide(const std::shared_ptr<PowerPoint::SlideShowWindow>& window);
  /// The end of the show: timers off, model released. It may come while StartTimers waits for data, which
  /// then stops where it is and reports nothing.
  void UnSetLinkedObjects();

  /// Null while the runtime is inactive.
  [[nodiscard]] FrmRuntimeTimer* Form() const { return active_ ? form_.get() : nullptr; }

 private:
  static void Log(modDebug::DebugKind kind, std::string_view text);

  template <typename Step>
  void KeepGoing(const char* procedure, Step&& step);
  void Release();
  void BuildModel();
  void ReadSlide(std::int32_t slide);
  [[nodiscard]] clsSlide ReadSlideProperties(PowerPoint::Slide& slide);
  void NoteScrolling(std::int32_t slide, const clsSlide& properties);
  void AddShape(std::int32_t slide, const clsShape& link);
  void AddDataShape(std::int32_t slide, const clsShape& link);
  /// Takes the source file up for watching: of an object that shows a part of it,
  /// or of every linked object and picture.
  void AddLinkedObject(PowerPoint::Shape& shape, bool everyFile);
  void OpenConnections();
  void OpenConnection(const std::string& suffix, const std::string& value);
  /// Answers whether somebody else reads it.
  [[nodiscard]] bool LeaveToReader(clsConnection& connection) const;
  void NoteRefreshInterval(const clsConnection& connection);
  void HandOver(const std::shared_ptr<PowerPoint::SlideShowWindow>& window);
  void HandTablesOver();
  void SetUpTimers();

  /// A slide of a copy. Those of the presentation count from 1, pages from 0.
  struct OfflineSlide {
    std::int32_t Source = 0;
    std::size_t Page = 0;
    std::size_t PageCount = 0;
    double Milliseconds = 0;
  };
  /// Duplicates slides that scroll, and the rows of the tables with them. By index in the copy, from 1.
  std::vector<OfflineSlide> MultiplySlides();
  [[nodiscard]] std::vector<OfflinePage> PagesOfSlide(std::int32_t slide);
  /// Named shows take every page of their slides.
  void NoteShows(const std::vector<OfflineSlide>& slides);
  void SetOfflineTimes(const std::vector<OfflineSlide>& slides);
  void FillOffline(const std::vector<OfflineSlide>& slides, const modOfflineCopy::Options& options);
  void MakeFields(PowerPoint::Slide& slide, const std::vector<clsRTClockInfo>& clocks);
  /// Slides that hide, and the range of the show with them.
  void TakeOutHidden(const std::vector<OfflineSlide>& slides);
  void RemoveAllTags();
  void BreakLinks();
  /// The films and sounds that stay linked to a file, a sentence each.
  [[nodiscard]] std::vector<std::string> FilmsOutside() const;

  std::shared_ptr<PowerPoint::Presentation> presentation_;
  std::shared_ptr<clsPresentation> reader_;
  std::shared_ptr<FrmRuntimeTimer> form_;
  bool active_ = false;
  bool starting_ = false;
  bool ended_ = false;
  bool showMeter_ = false;
  std::int32_t slideCount_ = 0;

  SlideInfoTable slideInfo_;
  SlideShapesTable shapes_;
  SlideClocksTable clocks_;
  UsedConnectionsTable usedConnections_;
  /// Per connection, the columns that its shapes name.
  std::map<std::string, std::set<std::string>> usedColumns_;
  ConnectionFlags connectionFlags_;
  ConnectionTable connections_;
  LinkedObjectsTable linkedObjects_;
  /// The files of linkedObjects_.
  std::unordered_set<std::string> linkedFiles_;

  static constexpr double NoRefreshInterval = 999999999;
  static constexpr double NoScrollInterval = -1;
  double refreshInterval_ = NoRefreshInterval;
  double scrollInterval_ = NoScrollInterval;
  bool forcesDefaultRefresh_ = false;
  bool clocksPresent_ = false;
};

}  // namespace LF2000
