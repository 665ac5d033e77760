// How a slide behaves in a show: its two switches, and the scroll entries as a list with fields below it.

#include "pages/frmSlide.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "addin/support/modGlobalFunctions.h"
#include "basic/Conversion.h"
#include "basic/Strings.h"
#include "model/clsShape.h"
#include "model/modLinkEdits.h"
#include "model/modSlideRows.h"
#include "model/modSlides.h"

namespace LF2000 {

namespace {

std::string Key(std::int32_t number) { return std::to_string(number); }

/// Whether the runtime takes the shape's name for this entry's number.
bool IsNamed(const PowerPoint::Shape& shape, std::int32_t number) {
  bool isNamed = false;
  modGlobalFunctions::IgnoreErrors([&] { isNamed = basic::CLng(shape.Name()) == number; });
  return isNamed;
}

}  // namespace

frmSlide::frmSlide(Forms::Placement placement, std::shared_ptr<clsPresentation> presentation,
                   std::shared_ptr<PowerPoint::Slide> slide)
    : frmPage("frmSlide", "Slide", placement, std::move(presentation)),
      slide_(std::move(slide)),
      play_(std::make_shared<ScrollPlay>(Presentation(), slide_)),
      chkHideWhenNoData_(Add<Forms::CheckBox>("chkHideWhenNoData", "&Hide when no data")),
      lblHides_(Add<Forms::Label>("lblHides")),
      chkRefreshLinkedObjects_(Add<Forms::CheckBox>("chkRefreshLinkedObjects", "&Refresh linked objects")),
      lblProblems_(Add<Forms::Label>("lblProblems")),
      fraScroll_(Add<Forms::Frame>("fraScroll", "Rows that scroll")),
      lstScroll_(Add<Forms::ListBox>(
          "lstScroll", std::vector<std::string>{"Entry", "Moves", "Rows", "Milliseconds", "On"})),
      txtEntry_(Add<Forms::TextBox>("txtEntry")),
      lblMoves_(Add<Forms::Label>("lblMoves")),
      chkScroll_(Add<Forms::CheckBox>("chkScroll", "S&crolls")),
      txtStep_(Add<Forms::TextBox>("txtStep")),
      txtTime_(Add<Forms::TextBox>("txtTime")),
      cmdAdd_(Add<Forms::CommandButton>("cmdAdd", "&Add")),
      cmdRemove_(Add<Forms::CommandButton>("cmdRemove", "Re&move")),
      cmdPlay_(Add<Forms::CommandButton>("cmdPlay", "&Play")) {
  Subject(std::to_string(slide_->SlideIndex()));
  txtStep_.Unit("rows");
  txtTime_.Unit("ms");
  chkHideWhenNoData_.Change = [this] {
    properties_.HideWhenNoData(chkHideWhenNoData_.Value());
    Changed();
  };
  chkRefreshLinkedObjects_.Change = [this] {
    properties_.RefreshLinkedObjects(chkRefreshLinkedObjects_.Value());
    Changed();
  };
  lstScroll_.Change = [this] { lstScroll_Change(); };
  txtEntry_.Change = [this] { ShowEntries(); };
  for (Forms::Control* field : std::initializer_list<Forms::Control*>{&chkScroll_, &txtStep_, &txtTime_}) {
    field->Change = [this] { EntryField_Change(); };
  }
  cmdAdd_.Click = [this] { cmdAdd_Click(); };
  cmdRemove_.Click = [this] { cmdRemove_Click(); };
  cmdPlay_.Click = [this] { cmdPlay_Click(); };
  play_->Ended = [this] { Update([this] { ShowPlay(); }); };
  cmdPlay_.Hint("The slide scrolls as in a show, no page for more than 2 s.");

  AddRow("", {&chkHideWhenNoData_});
  AddRow("", {&lblHides_});
  AddRow("", {&chkRefreshLinkedObjects_});
  AddRow("", {&lblProblems_});
  AddRow("", {&lstScroll_}, &fraScroll_);
  AddRow("&Entry", {&txtEntry_, &lblMoves_}, &fraScroll_);
  AddRow("", {&chkScroll_}, &fraScroll_);
  AddRow("&Step", {&txtStep_}, &fraScroll_);
  AddRow("&Time", {&txtTime_}, &fraScroll_);
  AddRow("", {&cmdAdd_, &cmdRemove_, &cmdPlay_}, &fraScroll_);
  AddOKCancel();
  Read();
  chkScroll_.Value(true);
}

void frmSlide::Read() {
  properties_ = clsSlide();
  std::string problems;
  for (const std::string& problem : properties_.ReadTags(*slide_->Tags())) {
    problems += (problems.empty() ? "" : "\n") + problem + " A change on this page drops it.";
  }
  lblProblems_.Text(problems, Forms::Severity::Warning);
  lblProblems_.Visible(!problems.empty());
}

void frmSlide::Reload() {
  if (IsDocked()) Read();
  ShowState();
}

void frmSlide::ShowState() {
  chkHideWhenNoData_.Value(properties_.HideWhenNoData());
  chkRefreshLinkedObjects_.Value(properties_.RefreshLinkedObjects());
  ShowHides();
  ShowEntries();
  play_->TakeUp(properties_);
  ShowPlay();
}

void frmSlide::ShowPlay() {
  cmdPlay_.Caption(play_->IsPlaying() ? "Sto&p" : "&Play");
  cmdPlay_.Enabled(play_->PageCount() > 1, play_->Scrolls() ? "The data have no further rows to scroll to."
                                                            : "Nothing on this slide scrolls.");
}

void frmSlide::ShowHides() {
  const auto connections = modSlideRows::RowsOf(*Presentation(), modSlideRows::ShownOn(*slide_));
  if (connections.empty())
    return lblHides_.Text("Nothing on this slide is linked to data, so it never hides.");
  std::size_t withRows = 0;
  std::string unknown;
  for (const auto& connection : connections) {
    if (!connection.Rows) {
      unknown += (unknown.empty() ? "" : ", ") + connection.Number;
    } else if (*connection.Rows > 0) {
      ++withRows;
    }
  }
  const bool hides = modSlideRows::Hides(properties_, connections);
  lblHides_.Text("now: " + std::to_string(withRows) + " of " + std::to_string(connections.size()) +
                     " connection" + (connections.size() == 1 ? " has" : "s have") + " rows" +
                     (hides && withRows > 0 ? ", but none with a value that a shape shows" : "") +
                     ", the slide " + (hides ? "hides" : "shows") +
                     (unknown.empty() ? "" : " (no answer yet: " + unknown + ")"),
                 hides ? Forms::Severity::Warning : Forms::Severity::Plain);
}

std::string frmSlide::Moves(std::int32_t number) const {
  const std::string connection = modGlobalFunctions::Format000(number);
  std::size_t count = 0;
  bool isNamed = false;
  clsShape link;
  modSlides::ForEachShape(*slide_, [&](const std::shared_ptr<PowerPoint::Shape>& shape) {
    link.ShapeItem(shape);
    const bool showsRows =
        !link.ConnectionTagNumber().empty() &&
        (link.SourceType() != static_cast<std::int32_t>(SourceType::Graph) || shape->HasTable());
    if (!showsRows) return;
    isNamed = isNamed || IsNamed(*shape, number);
    if (link.ConnectionTagNumber() == connection) ++count;
  });
  if (isNamed) return "shape '" + Key(number) + "'";
  if (count == 0) return "nothing yet";
  return (count == 1 ? "the shape of " : "the " + std::to_string(count) + " shapes of ") + connection;
}

void frmSlide::ShowEntries() {
  const std::vector<std::int32_t> numbers = properties_.ScrollEntryNumbers();
  Forms::Items items;
  Forms::Places selected;
  for (const std::int32_t number : numbers) {
    const std::string key = Key(number);
    if (basic::Trim(txtEntry_.Text()) == key) selected.push_back(static_cast<std::int64_t>(items.size()));
    items.push_back(
        {key,
         "",
         true,
         {Moves(number), basic::CStr(properties_.ScrollStep(key)), basic::CStr(properties_.ScrollTime(key)),
          properties_.ScrollEnabled(key) ? "yes" : "no"}});
  }
  const bool isThere = !selected.empty();
  lstScroll_.Items(std::move(items));
  lstScroll_.Selected(std::move(selected));
  cmdAdd_.Enabled(!isThere, "The entry is there already; its fields change it.");
  cmdRemove_.Enabled(isThere, "Choose an entry first.");
  bool isNumber = false;
  modGlobalFunctions::IgnoreErrors([&] {
    lblMoves_.Text("moves " + Moves(basic::CLng(txtEntry_.Text())));
    isNumber = true;
  });
  if (!isNumber) lblMoves_.Text("the number of a connection, or the shape's name if it is a number");
}

void frmSlide::lstScroll_Change() {
  const std::int64_t place = lstScroll_.ListIndex();
  if (place < 0) return;
  const std::int32_t number = properties_.ScrollEntryNumbers().at(static_cast<std::size_t>(place));
  const std::string key = Key(number);
  for (Forms::TextBox* box : {&txtEntry_, &txtStep_, &txtTime_}) Complain(*box, "");
  txtEntry_.Text(key);
  chkScroll_.Value(properties_.ScrollEnabled(key));
  txtStep_.Text(basic::CStr(properties_.ScrollStep(key)));
  txtTime_.Text(basic::CStr(properties_.ScrollTime(key)));
  ShowEntries();
}

std::optional<std::int32_t> frmSlide::NumberInField(Forms::TextBox& box, std::int32_t least,
                                                    std::int32_t most, const std::string& what) {
  const auto number = WholeNumber(box.Text());
  if (number && *number >= least && *number <= most) return static_cast<std::int32_t>(*number);
  Complain(box, what + " " + Key(least) + " to " + Key(most) + ".");
  return {};
}

std::optional<frmSlide::Entry> frmSlide::EntryInFields() {
  constexpr auto LastEntry = static_cast<std::int32_t>(clsSlide::ScrollEntries) - 1;
  const auto number = NumberInField(txtEntry_, 1, LastEntry, "Entries run from");
  const auto step = NumberInField(txtStep_, -clsSlide::MostScrollRows, clsSlide::MostScrollRows,
                                  "Rows to move by, below 0 backwards, from");
  const auto time = NumberInField(txtTime_, clsSlide::LeastScrollTime, clsSlide::MostScrollTime,
                                  "Milliseconds from one step to the next, from");
  if (step == 0) Complain(txtStep_, "A step of 0 rows is no scrolling.");
  if (!number || !step || *step == 0 || !time) return {};
  return Entry{*number, chkScroll_.Value(), *step, *time};
}

void frmSlide::EntryField_Change() {
  if (cmdAdd_.Enabled()) return;
  if (const auto entry = EntryInFields()) Put(*entry);
}

void frmSlide::cmdAdd_Click() {
  if (const auto entry = EntryInFields()) Put(*entry);
}

void frmSlide::Put(const Entry& entry) {
  const std::string key = Key(entry.Number);
  properties_.SetScrollEnabled(key, entry.IsOn);
  properties_.SetScrollStep(key, entry.Step);
  properties_.SetScrollTime(key, entry.Time);
  Changed();
}

void frmSlide::cmdRemove_Click() {
  const std::string key(basic::Trim(txtEntry_.Text()));
  // An entry without a time is not stored.
  properties_.SetScrollTime(key, 0);
  properties_.SetScrollEnabled(key, false);
  Changed();
}

void frmSlide::cmdPlay_Click() {
  if (play_->IsPlaying()) {
    play_->Stop();
  } else {
    play_->Start();
  }
  ShowPlay();
}

void frmSlide::Changed() {
  play_->Stop();
  isChanged_ = true;
  if (IsDocked()) Write("frmSlide " + std::to_string(slide_->SlideID()) + " " + txtEntry_.Text());
  ShowState();
}

bool frmSlide::Apply() {
  // What was typed for another entry is meant to be one.
  if (cmdAdd_.Enabled() && !basic::Trim(txtEntry_.Text()).empty()) {
    const auto entry = EntryInFields();
    if (!entry) return false;
    Put(*entry);
  }
  if (isChanged_) Write({});
  return true;
}

void frmSlide::Write(std::string_view run) {
  modLinkEdits::Begin(*Presentation(), "Slide properties", run);
  Presentation()->SetSlideTags(properties_, slide_->SlideIndex());
}

}  // namespace LF2000
