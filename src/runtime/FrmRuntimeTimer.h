#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "addin/support/modDebug.h"
#include "basic/Date.h"
#include "host/file_watch.h"
#include "host/powerpoint.h"
#include "host/services.h"
#include "runtime/EarlyLooks.h"
#include "runtime/ErrorGate.h"
#include "runtime/RuntimeTables.h"

namespace LF2000 {

/// The hidden form that drives a running show: it holds the runtime's tables and
/// four timers. `tmrData` requeries and refreshes the slide on show and the next
/// one, `tmrClock` the clocks, `tmrConnections` requeries on schedule while a
/// slide scrolls and re-examines hidden slides, `tmrRefreshLinkedObjects` watches
/// the source files of linked objects.
///
/// Beside their intervals, where the host watches files, a change of one that the slides in
/// sight show brings the next look at the data forward (EarlyLooks.h).
///
/// An error ends the tick or the refresh in which it happens and is reported; a slide then stands
/// as it is, as a whole. The same error is not reported again until its source has recovered, which
/// is a line in the errors log as well.
class FrmRuntimeTimer : public std::enable_shared_from_this<FrmRuntimeTimer> {
 public:
  /// A form with its four timers. A running tick keeps the form alive.
  [[nodiscard]] static std::shared_ptr<FrmRuntimeTimer> Create();
  FrmRuntimeTimer(const FrmRuntimeTimer&) = delete;
  FrmRuntimeTimer& operator=(const FrmRuntimeTimer&) = delete;

  void ActivePresentation(const std::shared_ptr<PowerPoint::Presentation>& presentation);
  /// The window of the show; its view tells the slide on show.
  void Window(const std::shared_ptr<PowerPoint::SlideShowWindow>& window) { window_ = window; }

  void SlideInfo(SlideInfoTable table) { slideInfo_ = std::move(table); }
  /// When true, the data tick does not requery.
  void Scrolling(bool scrolling) { scrolling_ = scrolling; }
  void SlideInfoShapes(SlideShapesTable table) { shapes_ = std::move(table); }
  void SlideInfoClocks(SlideClocksTable table) { clocks_ = std::move(table); }
  void SlideInfoUsedConnections(UsedConnectionsTable table) { usedConnections_ = std::move(table); }
  /// The connections that `tmrConnections` requeries.
  void SlideInfoConnections(const ConnectionFlags& flags);
  void Connections(ConnectionTable table) { connections_ = std::move(table); }
  void LinkedOLEObjects(LinkedObjectsTable table) { linkedObjects_ = std::move(table); }

  /// Slides that somebody looks at wherever the show stands: they are kept fresh as the
  /// slide on show is.
  void WatchedSlides(std::set<std::int32_t> slides) { watchedSlides_ = std::move(slides); }

  [[nodiscard]] const ConnectionTable& Connections() const { return connections_; }
  /// Whether the slides that are kept fresh need the connection of that number.
  [[nodiscard]] bool Requeries(std::size_t connection) const { return connectionsToRequery_[connection]; }
  /// Whether a scroll entry of the slide moves the shape through the rows.
  [[nodiscard]] bool Scrolls(std::int32_t slide, std::string_view shapeName) const;
  /// False for a text that is blank because its data hold no value: Null, or no such row.
  [[nodiscard]] bool HasValue(std::int32_t slide, std::string_view shapeName) const;
  /// A slide whose last refresh failed: it shows what it showed before.
  struct StandingSlide {
    /// Milliseconds of the clock's TickCount.
    std::int64_t Since = 0;
    /// Without passwords.
    std::string Error;
  };
  /// By their indices.
  [[nodiscard]] const std::map<std::int32_t, StandingSlide>& StandingSlides() const { return standing_; }
  /// Milliseconds between two rounds of looks at connections.
  [[nodiscard]] double RequeryInterval() const;
  /// Milliseconds between two looks at a connection.
  [[nodiscard]] double RequeryInterval(const clsConnection& connection) const;

  /// The show moved: takes the slide from the show's view and starts the new
  /// slide's scroll times anew, with the data and connections timers off.
  void CurrentSlide(std::int32_t position);
  /// Switch `tmrConnections` and `tmrData` together.
  void EnableTimer();
  void DisableTimer();
  /// Requeries the connections of the slides from the one on show to the next, by
  /// their indices, and of those that the show passes over because they have no data.
  /// These are examined anew: one whose data have returned is shown again.
  void RefreshData();
  /// Recomputes every data shape of the slide and its no-data state.
  void RefreshSlide(std::int16_t slide);
  /// The same by a slide's index. One that RefreshSlide's number cannot hold is reported, once a show.
  void RefreshSlideAt(std::int32_t index);
  /// The refresh of the slide on show alone.
  void OLD_RefreshCurrentScreen();
  /// Starts the time anew that a slide's scrolling shapes have accumulated towards
  /// their next step. The rows they have come to stay.
  void RefreshRange(std::int32_t slide);
  /// Hides the slide when it has no data, shows it otherwise, if it is set to hide.
  void HideUnhideSlides(std::int32_t slide);
  /// Whether the slide hides because it had no data when it was refreshed last.
  [[nodiscard]] bool HidesWithoutData(std::int32_t slide) const {
    const clsRTSlideInfo& info = slideInfo_[static_cast<std::size_t>(slide)];
    return info.HideWhenNoData && info.NoData;
  }
  void RefreshClocks(PowerPoint::Slide& slide, std::int32_t index, basic::Date now);

  /// The form's timers, for the engine that sets them up.
  [[nodiscard]] host::Timer& tmrData() { return *tmrData_; }
  [[nodiscard]] host::Timer& tmrClock() { return *tmrClock_; }
  [[nodiscard]] host::Timer& tmrConnections() { return *tmrConnections_; }
  [[nodiscard]] host::Timer& tmrRefreshLinkedObjects() { return *tmrRefreshLinkedObjects_; }
  /// Ends the form's work: every timer off, and a tick that is waiting for data
  /// stops where it is.
  void Unload();

 private:
  static void Log(modDebug::DebugKind kind, std::string_view text);
  static std::string SlideSource(std::int32_t slide);
  static void LogValue(const clsRTShapeInfo& shape, double row, const std::string& value);

  /// Work that an early look has to wait for, under way as long as this lives.
  class Passing {
   public:
    Passing(FrmRuntimeTimer& form, bool& flag) : form_(form), flag_(flag) { flag_ = true; }
    ~Passing() {
      flag_ = false;
      form_.TakeUpEarlyLook();
    }
    Passing(const Passing&) = delete;
    Passing& operator=(const Passing&) = delete;

   private:
    FrmRuntimeTimer& form_;
    bool& flag_;
  };

  /// What one shape is about to show.
  struct Reading {
    bool NoValue = true;
    /// False where the source says nothing about its data.
    bool IsJudged = true;
    /// Empty where the shape shows it already.
    std::function<void()> Write = {};
  };

  FrmRuntimeTimer() = default;
  void CreateTimers();
  [[nodiscard]] std::unique_ptr<host::Timer> CreateTimer(void (FrmRuntimeTimer::*tick)(),
                                                         std::int32_t interval);
  void tmrData_Timer();
  void tmrClock_Timer();
  void tmrConnections_Timer();
  void tmrRefreshLinkedObjects_Timer();
  void tmrChangedFiles_Timer();

  [[nodiscard]] std::int32_t ShownPosition() const;
  [[nodiscard]] std::int32_t NextSlide(std::int32_t slide) const;
  [[nodiscard]] bool IsHidden(std::int32_t slide) const;
  /// The slides that the show passes over because they had no data.
  [[nodiscard]] std::vector<std::int32_t> PassedOverWithoutData() const;
  [[nodiscard]] std::vector<std::int32_t> SlidesToRequery() const;
  /// The watched slides but for those two.
  [[nodiscard]] std::vector<std::int32_t> WatchedBesides(std::int32_t current, std::int32_t next) const;
  /// Nothing while one is under way: a connection is read by one at a time.
  void RequeryConnections(const ConnectionFlags& flags);
  void RequeryConnection(std::size_t number);
  [[nodiscard]] std::set<std::string> FilesInSight() const;
  void WatchFiles();
  void FileChanged(const std::string& path);
  /// The early look that waited for the work under way.
  void TakeUpEarlyLook();
  void RefreshShapes(std::int32_t slide);
  void CalcScrollIndexes(std::int32_t slide);
  /// The first shape of that name that shows data; null without one.
  [[nodiscard]] const clsRTShapeInfo* Find(std::int32_t slide, std::string_view shapeName) const;
  /// The row that the shape shows now.
  [[nodiscard]] double RowOf(const PowerPoint::Slide& slide, const clsRTShapeInfo& shape) const;
  /// Of all shapes, before the first is written. The slide stands as it is when one of them fails.
  [[nodiscard]] std::vector<Reading> ReadShapes(PowerPoint::Slide& slide,
                                                std::vector<clsRTShapeInfo>& shapes);
  [[nodiscard]] Reading ReadShape(PowerPoint::Slide& slide, clsRTShapeInfo& shape);
  [[nodiscard]] Reading ReadText(PowerPoint::Slide& slide, clsRTShapeInfo& shape, clsConnection& connection);
  /// Of a chart or a table.
  [[nodiscard]] Reading ReadWhole(PowerPoint::Slide& slide, clsRTShapeInfo& shape, clsConnection& connection);
  [[nodiscard]] Reading ReadObject(PowerPoint::Slide& slide, clsRTShapeInfo& shape,
                                   clsConnection& connection);
  template <typename Step>
  void KeepPicture(const std::string& source, const Step& step);
  void RefreshNext(std::int32_t next);
  [[nodiscard]] clsConnection& Connection(std::string_view key) const;
  /// Ends the repetitions of what was reported of `what`, with a line in the errors log.
  void NoteSuccess(std::string_view what);
  /// In a handler: reports the error being handled unless it is a repetition.
  void Report(std::string_view what, std::string_view procedure, std::optional<std::int32_t> code = {});

  std::shared_ptr<PowerPoint::Presentation> presentation_;
  std::shared_ptr<PowerPoint::Slides> slides_;
  std::shared_ptr<PowerPoint::SlideShowWindow> window_;
  SlideInfoTable slideInfo_;
  SlideShapesTable shapes_;
  SlideClocksTable clocks_;
  UsedConnectionsTable usedConnections_;
  ConnectionFlags slideInfoConnections_;
  ConnectionFlags connectionsToRequery_;
  ConnectionTable connections_;
  LinkedObjectsTable linkedObjects_;
  std::set<std::int32_t> watchedSlides_;
  bool scrolling_ = false;
  bool unloaded_ = false;
  bool requerying_ = false;
  bool refreshing_ = false;
  double currentSlide_ = 0;
  double slideCount_ = 0;
  basic::Date lastClockUpdate_;
  ErrorGate errors_;
  std::map<std::int32_t, StandingSlide> standing_;
  EarlyLooks earlyLooks_;
  bool isEarlyLookPutOff_ = false;
  /// Null where the host watches none.
  std::shared_ptr<host::FileWatch> watch_;

  std::unique_ptr<host::Timer> tmrData_;
  std::unique_ptr<host::Timer> tmrClock_;
  std::unique_ptr<host::Timer> tmrConnections_;
  std::unique_ptr<host::Timer> tmrRefreshLinkedObjects_;
  /// Fires once, soon after a file has changed.
  std::unique_ptr<host::Timer> tmrChangedFiles_;
};

}  // namespace LF2000
