#include "pages/frmClock.h"

#include <array>
#include <utility>

#include "addin/support/modGlobalFunctions.h"
#include "basic/Strings.h"
#include "model/clsShape.h"
#include "model/modClockFormat.h"

namespace LF2000 {

namespace {

constexpr std::array Formats = {"hh:nn",     "hh:nn:ss",   "h:nn AM/PM", "dddd, d mmmm yyyy",
                                "ddd d mmm", "dd/mm/yyyy", "d mmmm",     "dddd",
                                "Long Date", "Short Date", "c",          "yyyy"};

std::string LookOf(std::string_view format) {
  constexpr std::int32_t Now = 1;
  return modGlobalFunctions::PreviewValue(format, Now);
}

}  // namespace

frmClock::frmClock(Forms::Placement placement, std::shared_ptr<clsPresentation> presentation,
                   modSelected::Selected selected)
    : frmShapesPage("frmClock", "Clock", placement, std::move(presentation), std::move(selected)),
      cmbFormat_(Add<Forms::ComboBox>("cmbFormat", true)),
      lblNow_(Add<Forms::Label>("lblNow")),
      lblHelp_(Add<Forms::Label>("lblHelp")),
      cmdUnlink_(Add<Forms::CommandButton>("cmdUnlink", "&Unlink")) {
  cmbFormat_.Change = [this] { cmbFormat_Change(); };
  cmbFormat_.NotesFirst(true);  // a time is understood before its letters are
  cmbFormat_.DropDown = [this] { ShowFormats(); };
  cmdUnlink_.Click = [this] { Unlink(); };
  lblHelp_.Text(
      "h hour, n minute, s second, AM/PM half of the day; d day, m month, y year: a letter twice pads with "
      "0, "
      "ddd and mmm are short names, dddd and mmmm full ones. Words in quotes stand for themselves.");
  AddLeftOut();
  AddRow("&Format", {&cmbFormat_});
  AddRow("Shows now", {&lblNow_});
  AddRow("", {&lblHelp_});
  AddRow("", {&cmdUnlink_});
  AddOKCancel();
  Read();
  if (!IsDocked() && cmbFormat_.Text().empty()) cmbFormat_.Text(Formats.front());
  Look();
}

void frmClock::Read() {
  clsShape link;
  std::string common;
  for (const auto& shape : Shapes()) {
    link.ShapeItem(shape);
    if (shape == Shapes().front()) common = link.DateFormat();
    if (link.DateFormat() != common) common = Various;
  }
  cmbFormat_.Text(common);
}

void frmClock::Reload() {
  ShowFormats();
  cmdUnlink_.Enabled(AnyLinked(), "Nothing here is linked.");
  if (IsDocked() && cmbFormat_.Problem().empty()) Read();
  ShowNow();
}

void frmClock::ShowFormats() {
  Forms::Items items;
  for (const char* format : Formats) items.push_back({format, LookOf(format)});
  cmbFormat_.Items(std::move(items));
}

void frmClock::ShowNow() {
  const std::string& format = cmbFormat_.Text();
  lblNow_.Text(format == Various ? format : LookOf(format));
}

void frmClock::cmbFormat_Change() {
  const std::string& format = cmbFormat_.Text();
  ShowNow();
  if (format == Various || basic::Trim(format).empty()) return;
  if (!modClockFormat::ShowsTime(format)) {
    return Complain(cmbFormat_, "'" + format + "' holds no sign of a date or a time, such as hh:nn.");
  }
  if (IsDocked()) Write(modLinkEdits::RunOf("cmbFormat", Shapes()));
}

bool frmClock::Apply() {
  const std::string& format = cmbFormat_.Text();
  if (format == Various) return true;
  if (!modClockFormat::ShowsTime(format)) {
    Complain(cmbFormat_, "Choose a format.");
    Focus(cmbFormat_);
    return false;
  }
  Write({});
  return true;
}

void frmClock::Write(std::string_view run) {
  constexpr auto Clock = static_cast<std::int32_t>(SourceType::Clock);
  const std::string format = cmbFormat_.Text();
  const bool isWritten = Relink(
      "Format of " + ShapesName(), run,
      [&](const clsShape& link) { return link.SourceType() != Clock || link.DateFormat() != format; },
      [&](clsShape& link) {
        link.SourceType(Clock);
        link.NewDateFormat(format);
      });
  if (isWritten) cmdUnlink_.Enabled(true);
}

}  // namespace LF2000
