#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "addin/support/modDebug.h"
#include "basic/Date.h"
#include "connections/clsConnection.h"
#include "host/jobs.h"
#include "host/powerpoint.h"
#include "model/clsShape.h"
#include "model/clsSlide.h"
#include "model/modDistributionTags.h"
#include "model/modOfflineCopy.h"
#include "model/modPropertyPages.h"
#include "model/modSending.h"

namespace LF2000 {

/// One presentation open in the host, with everything that its tags describe.
/// Errors are reported by every operation itself, not raised.
class clsPresentation : public std::enable_shared_from_this<clsPresentation> {
 public:
  clsPresentation() = default;
  ~clsPresentation();
  clsPresentation(const clsPresentation&) = delete;
  clsPresentation& operator=(const clsPresentation&) = delete;

  using ConnectionList = std::vector<std::shared_ptr<clsConnection>>;

  [[nodiscard]] const std::shared_ptr<PowerPoint::Presentation>& ActivePresentation() const {
    return presentation_;
  }
  /// Loads a linked presentation: its connections (each is opened once), its
  /// display type and distribution settings; then fills the linked shapes. In a host with jobs the
  /// connections are opened behind it, and the shapes of each are filled when it is open.
  void ActivePresentation(const std::shared_ptr<PowerPoint::Presentation>& presentation);

  /// Loads another version of the presentation that `former` stands for, in a host with jobs: connections
  /// that both describe alike are taken over with their data and not opened, and the display type stays
  /// unless the new version brings another.
  void ActivePresentation(const std::shared_ptr<PowerPoint::Presentation>& presentation,
                          const clsPresentation& former);

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
  /// Makes a presentation a linked one that shows values, unless it is linked.
  void RequireVersionTag();
  void SetDisplayType();
  /// Writes all connections, then unlinks the shapes that refer to none of them.
  void SetConnectionTags();
  void SetSlideTags(const clsSlide& slide, std::int32_t slideIndex);
  /// For whom the presentation is meant, and when it is on; see modSchedule.
  void SetDistributionListTags(basic::Date start, basic::Date stop, std::vector<std::string> computers,
                               std::string days = {}, std::string hours = {});

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
  /// Fills one shape of a slide, if it is linked, from what is held now: nothing is opened or waited for.
  /// `scrolledBy`: rows by which it is shown further down the data than its link says.
  void FillShape(PowerPoint::Slide& slide, const std::shared_ptr<PowerPoint::Shape>& shape,
                 double scrolledBy = 0);
  /// The same for all shapes of a connection. What was saved stays so.
  void FillConnection(std::string_view tagNumber);
  /// Brings the slide's clocks up to the present time; those whose text stays are left alone. What was saved
  /// stays so.
  void FillClocks(PowerPoint::Slide& slide);

  // What follows is done by jobs (modJobs), for which the object must be held by a shared pointer; it gives
  // up those that are left when it ends.

  /// Hears how the opening of a connection ended; nothing when the connection or the presentation has gone
  /// before, or another opening has come in its place.
  using Opened = std::function<void(const host::JobEnd&)>;
  /// Opens one of the connections, in place of an opening that has not ended, and fills its shapes. A failure
  /// is reported and noted (clsConnection::Readings); an end by its user is noted.
  void OpenInBackground(const std::shared_ptr<clsConnection>& connection, Opened opened = {});
  /// Reads anew, for today's data while the presentation is edited, what may have changed: files whose date
  /// has, databases whose refresh rate has passed but none oftener than every DatabaseInterval; or
  /// everything, when forced. What could not be read is tried again after RetryInterval. Of a connection's
  /// failures in a row the first is reported. Cheap when nothing is due.
  void RequeryInBackground(bool forced);
  static constexpr std::int64_t DatabaseInterval = 10'000;
  static constexpr std::int64_t RetryInterval = 60'000;
  /// The job that opens a connection or reads it anew, under way or waiting; null without one.
  [[nodiscard]] std::shared_ptr<host::RunningJob> ReadingJob(const clsConnection& connection) const;
  [[nodiscard]] bool IsReading(const clsConnection& connection) const {
    return ReadingJob(connection) != nullptr;
  }
  /// While it is shown, what these jobs read is the show's to fill in.
  void IsShown(bool isShown) { isShown_ = isShown; }

  /// The tags were changed behind this object (an undo, a newer version): takes up what they describe now.
  /// Connections that are described as before keep their object and data; others are opened in the
  /// background; those that are gone are dropped. A display type that the tags had before does not come back.
  /// Fills nothing else.
  void TakeUpTags();

  /// Blanks the live texts and gives pictures and charts what their author put
  /// into them, so that a save stores no live value. FillValues gives shapes whose source does not answer
  /// the texts back.
  void PrepareSave();
  /// Writes a copy that stands alone: with what a show that began now would show, and without a link to its
  /// sources. Whole or not at all, and never over the presentation's own file. A source that cannot be read
  /// is reported, and the copy made without its values. Says when it is done; false when it was not made, be
  /// it cancelled.
  bool CreateOfflinePPT(const std::string& fileName, const modOfflineCopy::Options& options = {});
  /// Opens the page on which both are chosen.
  void SetDistributionList();
  /// Sends it by a job, and says how that ended; the object must be held by a shared pointer.
  void SendPresentation(const modSending::Options& options = {});
  /// The same at once. It is saved first. Raises what kept it from being sent.
  host::Sent Send(const modSending::Options& options);
  /// Takes it back by a job from the folder that the settings name; `done` is called when it is.
  void WithdrawPresentation(std::function<void()> done = {});
  [[nodiscard]] bool SlideHasConnections(PowerPoint::Slide& slide) const;

  /// The presentation's connections, for those who add, change and remove them;
  /// SetConnectionTags stores what was done.
  [[nodiscard]] ConnectionList& Connections() { return connections_; }
  /// Null without a connection of that number.
  [[nodiscard]] std::shared_ptr<clsConnection> FindConnection(std::string_view tagNumber) const;

  [[nodiscard]] basic::Date DistributionStart() const { return audience_.schedule.start; }
  [[nodiscard]] basic::Date DistributionStop() const { return audience_.schedule.stop; }
  [[nodiscard]] const modSchedule::Schedule& DistributionSchedule() const { return audience_.schedule; }
  [[nodiscard]] const std::vector<std::string>& DistributionList() const { return audience_.computers; }

 private:
  static void Log(modDebug::DebugKind kind, std::string_view text);

  /// How a connection is being read.
  struct Reading {
    std::shared_ptr<host::RunningJob> Job;
    /// Of the last job.
    std::uint64_t Number = 0;
    /// When it ended, by Clock::TickCount.
    std::int64_t Ended = 0;
    /// Of the file that it read.
    basic::Date FileDate;
  };
  struct ReadingKind {
    std::string_view Caption;
    /// For what fails.
    std::int32_t ErrorCode;
    /// By somebody, who hears of every failure.
    bool IsAsked;
  };

  void Attach(const std::shared_ptr<PowerPoint::Presentation>& presentation);
  /// False when one could not be opened; the rest is described, not opened.
  bool LoadConnections(bool opens);
  /// `former` may be null.
  void LoadInBackground(const clsPresentation* former);
  void TakeOverReadings(const clsPresentation& former);
  [[nodiscard]] std::shared_ptr<clsConnection> DescribedConnection(const std::string& number,
                                                                   const std::string& tagValue) const;
  /// What the tags describe. Those that cannot be read are left out, and the first of them is reported.
  [[nodiscard]] ConnectionList DescribedConnections() const;
  void OpenConnection(clsConnection& connection);
  void LoadSettings();
  void LoadDisplayType();
  void SaveForSending();
  /// Makes the file that the parcel names, from one that has been made for it, and says what goes with it.
  /// Answers what stays outside of it (modOfflineCopy::Make).
  std::vector<std::string> MakeCopy(host::Parcel& parcel, const std::string& saved);
  /// The tag's value, empty without one.
  [[nodiscard]] std::string DisplayTypeTag() const;
  void CloseMeter();
  /// What PrepareSave took out of shapes, by the indices of their slides and their ids.
  using BlankedTexts = std::map<std::pair<std::int32_t, std::int32_t>, std::string>;

  void Blank(const PowerPoint::Slide& slide, const clsShape& link);
  static void ShowAgain(const BlankedTexts& blanked, const PowerPoint::Slide& slide,
                        PowerPoint::Shape& shape);
  void FillLink(PowerPoint::Slide& slide, const clsShape& link, double scrolledBy = 0);
  static void FillClock(const clsShape& link, std::int32_t displayType);
  /// The connection of that number, if its shapes can be filled; null without.
  [[nodiscard]] std::shared_ptr<clsConnection> ReadyConnection(std::string_view tagNumber) const;
  void OpenAllInBackground(ConnectionList connections);
  void StartReading(const std::shared_ptr<clsConnection>& connection, const ReadingKind& kind,
                    std::function<void()> work, Opened ended);
  /// False for a job in whose place another has come, or whose connection has been dropped.
  bool NoteReadingEnd(const clsConnection& connection, std::uint64_t number, basic::Date fileDate);
  void TakeReading(clsConnection& connection, std::int64_t versionBefore, const ReadingKind& kind,
                   const host::JobEnd& end);
  void GiveUpReading(const clsConnection& connection);
  void DropReadings();
  [[nodiscard]] bool IsDue(const clsConnection& connection) const;
  void FillField(PowerPoint::Slide& slide, const clsShape& link, std::int32_t displayType, double scrolledBy);
  void FillGraph(const clsShape& link);
  void FillTable(const clsShape& link, std::int32_t displayType, double scrolledBy);
  void FillObject(const clsShape& link, std::int32_t displayType, double scrolledBy);
  /// Writes a copy as a save would leave the file.
  void SaveWithoutValues(const std::string& fileName);
  /// Shapes of a deck that an author works on show something, also when it was never said what.
  void RequireDisplayType();
  void ShowPage(modPropertyPages::Page page);

  std::shared_ptr<PowerPoint::Presentation> presentation_;
  ConnectionList connections_;
  std::int32_t displayType_ = 0;
  modDistributionTags::Audience audience_;
  bool meterShown_ = false;
  bool objectFailureTold_ = false;
  /// Connection and column of the values that could not be read.
  std::set<std::pair<std::string, std::string>> toldColumns_;
  BlankedTexts blanked_;
  std::map<const clsConnection*, Reading> readings_;
  bool isShown_ = false;
  std::uint64_t lastReading_ = 0;
  /// The display type as the tag has it, empty without one.
  std::string displayTypeTag_;
};

}  // namespace LF2000
