#include "pages/frmLinkByNames.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "basic/Conversion.h"
#include "basic/Strings.h"
#include "model/clsShape.h"

namespace LF2000 {

namespace {

/// How the shape is linked so far: "001 Price 2"; empty when it is not.
std::string LinkedSoFar(const std::shared_ptr<PowerPoint::Shape>& shape) {
  clsShape link;
  link.ShapeItem(shape);
  if (link.SourceType() == 0) return {};
  if (link.ConnectionTagNumber().empty()) return "a clock";
  return link.ConnectionTagNumber() + " " + link.ColumnName() + " " + basic::CStr(link.Row());
}

std::string Told(const modManyLinks::PlannedLink& link) {
  return link.Connection + " " + link.Value.Column + " " + std::to_string(link.Value.Row);
}

/// Whether it would change anything.
bool HasNews(const modManyLinks::Plan& plan) {
  return std::any_of(plan.Links.begin(), plan.Links.end(), [](const modManyLinks::PlannedLink& link) {
    return !basic::EqualsIgnoreCase(LinkedSoFar(link.Shape), Told(link));
  });
}

}  // namespace

frmLinkByNames::frmLinkByNames(std::shared_ptr<clsPresentation> presentation, modSelected::Selected selected)
    : frmShapesPage("frmLinkByNames", "Link by names", Forms::Placement::Dialog, std::move(presentation),
                    std::move(selected)),
      number_(ProposedConnection()),
      isOfSelection_(Shapes().size() > 1 && HasNews(PlanOf(Shapes()))),
      cmbConnection_(Add<Forms::ComboBox>("cmbConnection")),
      lstPlan_(Add<Forms::ListBox>(
          "lstPlan", std::vector<std::string>{"Shape", "Column", "Row", "Shows", "Linked so far"}, true)),
      lblWhy_(Add<Forms::Label>("lblWhy")) {
  Subject(isOfSelection_ ? ShapesName() : "slide " + std::to_string(Slide().SlideIndex()));
  cmbConnection_.Change = [this] {
    number_ = NumberIn(cmbConnection_.Text());
    MakePlan();
  };
  AddRow("&Connection", {&cmbConnection_});
  AddRow("&Links", {&lstPlan_});
  AddRow("", {&lblWhy_});
  AddOKCancel();
}

void frmLinkByNames::Reload() {
  ShowConnections(cmbConnection_);
  cmbConnection_.Text(ConnectionText(number_));
  MakePlan();
}

/// What is linked so already is no news; what is linked to something else is not ticked by itself.
void frmLinkByNames::MakePlan() {
  plan_ = {};
  Forms::Items items;
  Forms::Places ticked;
  std::string why;
  if (Readable(number_, why)) {
    modManyLinks::Plan plan = PlanOf(isOfSelection_ ? Shapes() : modLinkEdits::Shapes());
    for (modManyLinks::PlannedLink& link : plan.Links) {
      const std::string before = LinkedSoFar(link.Shape);
      if (basic::EqualsIgnoreCase(before, Told(link))) continue;
      if (before.empty()) ticked.push_back(static_cast<std::int64_t>(items.size()));
      items.push_back({link.Shape->Name(),
                       "",
                       true,
                       {link.Value.Column, std::to_string(link.Value.Row),
                        PresentValue(number_, link.Value.Column, link.Value.Row), before}});
      plan_.Links.push_back(std::move(link));
    }
    for (const std::string& sentence : plan.Hindrances) why += (why.empty() ? "" : "\n") + sentence;
    if (plan_.Links.empty() && why.empty())
      why = "No further shape has a name such as 'Price 1', of a column and a row.";
  }
  lstPlan_.Items(std::move(items));
  lstPlan_.Selected(std::move(ticked));
  lblWhy_.Text(why, Forms::Severity::Warning);
}

modManyLinks::Plan frmLinkByNames::PlanOf(const modLinkEdits::Shapes& shapes) const {
  modManyLinks::Plan plan;
  std::string why;
  if (Readable(number_, why)) {
    modManyLinks::AddNames(plan, Slide(), modLinkEdits::SourceOf(*Presentation(), number_), shapes);
  }
  return plan;
}

bool frmLinkByNames::Apply() {
  modManyLinks::Plan chosen;
  for (const std::int64_t place : lstPlan_.Selected()) {
    chosen.Links.push_back(plan_.Links[static_cast<std::size_t>(place)]);
  }
  if (chosen.Links.empty()) {
    Complain(lstPlan_, "Tick what is to be linked.");
    return false;
  }
  modLinkEdits::Link(*Presentation(), chosen);
  return true;
}

}  // namespace LF2000
