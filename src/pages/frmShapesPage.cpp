// What pages about shapes have in common: connections as a list, their freshness, the look once a second.

#include "pages/frmShapesPage.h"

#include <utility>

#include "addin/support/modGlobalFunctions.h"
#include "basic/Counted.h"
#include "basic/Format.h"
#include "connections/DisplayTypes.h"
#include "model/modPropertyPages.h"
#include "pages/modLastUsed.h"

namespace LF2000 {

frmShapesPage::frmShapesPage(std::string name, std::string caption, Forms::Placement placement,
                             std::shared_ptr<clsPresentation> presentation, modSelected::Selected selected)
    : frmPage(std::move(name), std::move(caption), placement, std::move(presentation)),
      selected_(std::move(selected)) {
  Subject(selected_.LeftOut.empty()
              ? ShapesName()
              : std::to_string(Shapes().size()) + " of " + std::to_string(selected_.Count) + " shapes");
}

void frmShapesPage::Look() {
  constexpr std::int32_t Second = 1000;
  tmrNow_ = host::Current().loop->CreateTimer([this] {
    if (!IsShown()) return tmrNow_->Enabled(false);
    Update([this] {
      try {
        ShowNow();
      } catch (...) {
        tmrNow_->Enabled(false);
        CatchError();
      }
    });
  });
  tmrNow_->Interval(Second);
  tmrNow_->Enabled(true);
}

bool frmShapesPage::AnyLinked() const {
  clsShape link;
  for (const auto& shape : Shapes()) {
    link.ShapeItem(shape);
    if (link.LumenfoldEnabled()) return true;
  }
  return false;
}

void frmShapesPage::AddLeftOut() {
  if (selected_.LeftOut.empty()) return;
  auto& lblLeftOut = Add<Forms::Label>("lblLeftOut");
  lblLeftOut.Text(selected_.LeftOut, Forms::Severity::Warning);
  AddRow("", {&lblLeftOut});
}

void frmShapesPage::ShowConnections(Forms::ComboBox& cmbConnection) const {
  Forms::Items items;
  for (const auto& connection : Presentation()->Connections()) {
    std::string note;
    if (connection->Readings().IsFailing) {
      note = "no answer";
    } else if (!connection->RecordsetReady()) {
      note = "not read yet";
    } else {
      const auto rows = static_cast<std::int64_t>(connection->RecordCount());
      note = basic::Counted(rows, "row");
    }
    items.push_back({ConnectionText(connection->ConnectionTagNumber()), std::move(note)});
  }
  cmbConnection.Hint(items.empty() ? "Connect data first." : "");
  cmbConnection.Items(std::move(items));
}

std::string frmShapesPage::ConnectionText(std::string_view number) const {
  if (number.empty()) return {};
  const auto connection = Presentation()->FindConnection(number);
  return std::string(number) + " " + (connection ? connection->ConnectionDescription() : "(not there)");
}

std::string frmShapesPage::NumberIn(std::string_view text) {
  return text == Various ? std::string() : std::string(text.substr(0, text.find(' ')));
}

void frmShapesPage::ShowFreshness(Forms::Label& lblFresh, const std::string& number) const {
  const auto connection = Presentation()->FindConnection(number);
  if (!connection) return lblFresh.Text("");
  const clsConnection::ReadingRecord& readings = connection->Readings();
  const std::string read =
      readings.Deliveries == 0 ? "" : "read " + basic::Format(readings.LastDelivery, "hh:nn:ss");
  if (readings.IsFailing) {
    lblFresh.Text("No answer: " + readings.LastError + (read.empty() ? "" : " (" + read + ")"),
                  Forms::Severity::Warning);
  } else if (read.empty()) {
    lblFresh.Text("Not read yet");
  } else {
    lblFresh.Text("R" + read.substr(1) + ", fresh", Forms::Severity::Ok);
  }
}

std::string frmShapesPage::PresentValue(const std::string& number, const std::string& column,
                                        double row) const {
  std::string why;
  std::string text;
  const auto connection = Readable(number, why);
  if (!connection) return text;
  modGlobalFunctions::IgnoreErrors([&] {
    bool noValue = true;
    text = connection->GetValueDatabase(row, column, DisplayValue, /*showMarkers=*/true, noValue);
  });
  return text;
}

std::string frmShapesPage::ProposedConnection() const {
  if (Presentation()->FindConnection(modLastUsed::Connection)) return modLastUsed::Connection;
  const auto& connections = Presentation()->Connections();
  return connections.empty() ? std::string() : connections.front()->ConnectionTagNumber();
}

std::shared_ptr<clsConnection> frmShapesPage::Readable(const std::string& number, std::string& why) const {
  if (number.empty()) {
    why = "Choose a connection.";
    return nullptr;
  }
  auto connection = Presentation()->FindConnection(number);
  if (!connection) {
    why = "Connection " + number + " is not there.";
  } else if (!connection->RecordsetReady()) {
    why = connection->Readings().IsFailing ? "No answer: " + connection->Readings().LastError
                                           : "Connection " + number + " has not been read yet.";
    connection = nullptr;
  }
  return connection;
}

void frmShapesPage::Manage() { modPropertyPages::Open(modPropertyPages::Page::SlideShow, Presentation()); }

void frmShapesPage::Unlink() {
  modLinkEdits::Unlink(*Presentation(), Shapes());
  if (IsDocked()) {
    Reload();
  } else {
    Close(Forms::Result::OK);
  }
}

bool frmShapesPage::Relink(std::string_view label, std::string_view run,
                           const std::function<bool(const clsShape&)>& differs,
                           const std::function<void(clsShape&)>& link) {
  clsShape each;
  modLinkEdits::Shapes changed;
  for (const auto& shape : Shapes()) {
    each.ShapeItem(shape);
    if (differs(each)) changed.push_back(shape);
  }
  if (changed.empty()) return false;
  modLinkEdits::Begin(*Presentation(), label, run);
  for (const auto& shape : changed) {
    each.ShapeItem(shape);
    each.KeepCurrent();
    link(each);
    each.SetShapeTags();
  }
  modLinkEdits::Show(*Presentation(), Slide(), changed);
  return true;
}

}  // namespace LF2000
