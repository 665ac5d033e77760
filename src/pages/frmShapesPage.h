#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "host/services.h"
#include "model/clsShape.h"
#include "model/modLinkEdits.h"
#include "pages/frmPage.h"
#include "pages/modSelected.h"

namespace LF2000 {

/// A page about shapes of one slide. Once a second it shows anew what changes by itself. A page asks no
/// source and waits for none: it shows what the connections hold.
class frmShapesPage : public frmPage {
 protected:
  frmShapesPage(std::string name, std::string caption, Forms::Placement placement,
                std::shared_ptr<clsPresentation> presentation, modSelected::Selected selected);

  [[nodiscard]] const modLinkEdits::Shapes& Shapes() const { return selected_.Shapes; }
  [[nodiscard]] PowerPoint::Slide& Slide() const { return *selected_.Slide; }
  [[nodiscard]] std::string ShapesName() const { return modLinkEdits::NameOf(Shapes()); }
  [[nodiscard]] bool AnyLinked() const;

  /// What is shown of the data and of the time.
  virtual void ShowNow() = 0;

  /// Begins the looks once a second; called last by the constructor of a page.
  void Look();

  /// A row that says which selected shapes the page is not about, when there are some.
  void AddLeftOut();

  // The list of the presentation's connections, "001 Today".
  void ShowConnections(Forms::ComboBox& cmbConnection) const;
  /// What the list shows for a connection's number, be it there or not.
  [[nodiscard]] std::string ConnectionText(std::string_view number) const;
  /// And back; empty for "(various)" and the empty text.
  [[nodiscard]] static std::string NumberIn(std::string_view text);
  /// In lblFresh: when the connection was read, and what ails it.
  void ShowFreshness(Forms::Label& lblFresh, const std::string& number) const;
  /// What a row of a column holds now; the empty text where that cannot be told.
  [[nodiscard]] std::string PresentValue(const std::string& number, const std::string& column,
                                         double row) const;
  /// The connection to propose where nothing is linked yet: the one used last, else the first.
  [[nodiscard]] std::string ProposedConnection() const;
  /// The connection, if it can be read now; otherwise `why` says why not.
  [[nodiscard]] std::shared_ptr<clsConnection> Readable(const std::string& number, std::string& why) const;
  /// Opens the page of all connections.
  void Manage();

  void Unlink();

  /// Has `link` say what each shape shows from now on, of those that differ from it, as one step to undo.
  /// Whether any did.
  bool Relink(std::string_view label, std::string_view run,
              const std::function<bool(const clsShape&)>& differs,
              const std::function<void(clsShape&)>& link);

  static constexpr std::string_view Various = "(various)";

 private:
  modSelected::Selected selected_;
  std::unique_ptr<host::Timer> tmrNow_;
};

}  // namespace LF2000
