#include "windows/conformance/AutomationPassage.h"

#include <utility>

#include "addin/Connect.h"
#include "windows/automation/Classes.h"
#include "windows/automation/SlideShow.h"
#include "windows/strict/Classes.h"
#include "windows/strict/ProgramClasses.h"

namespace conformance {
namespace {

namespace automation = windows::automation;

/// The port of the same object.
template <typename Port, typename Fake>
std::shared_ptr<Port> as(const std::shared_ptr<Fake>& fake) {
  return fake;
}

}  // namespace

AutomationPassage::AutomationPassage()
    : known_(std::make_shared<automation::KnownPresentations>()),
      connections_(L"ADODB.Connection", strict::AdoConnection,
                   [this] { return strict::of(ado_->CreateConnection()); }),
      recordsets_(L"ADODB.Recordset", strict::AdoRecordset,
                  [this] { return strict::of(ado_->CreateRecordset()); }),
      excelPrograms_(L"Excel.Application", strict::ExcelProgram,
                     [this] { return strict::of(excel_->CreateApplication()); }) {}

std::shared_ptr<AddInDesigner::IDTExtensibility2> AutomationPassage::newEntry() {
  return std::make_shared<LF2000::Connect>();
}

std::shared_ptr<PowerPoint::Application> AutomationPassage::hand(
    const std::shared_ptr<fakes::Application>& application) {
  auto handed = std::make_shared<automation::Application>(
      strict::of(as<PowerPoint::Application>(application)), [](const std::string&) {});
  application_ = application;
  handed_ = handed;
  return handed;
}

std::shared_ptr<PowerPoint::Presentation> AutomationPassage::hand(
    const std::shared_ptr<fakes::Presentation>& presentation) {
  if (!presentation) return nullptr;
  const auto application = application_.lock();
  const auto handed = handed_.lock();
  if (!application || !handed) return known_->of(strict::of(as<PowerPoint::Presentation>(presentation)));
  // By way of a window: the application alone knows its objects.
  const auto before = std::exchange(application->window, std::make_shared<fakes::EditWindow>(presentation));
  auto known = handed->ActiveWindow()->Presentation();
  application->window = before;
  return known;
}

std::shared_ptr<PowerPoint::SlideShowWindow> AutomationPassage::hand(
    const std::shared_ptr<fakes::Window>& window) {
  if (!window) return nullptr;
  return std::make_shared<automation::SlideShowWindow>(
      windows::com::Object(strict::of(as<PowerPoint::SlideShowWindow>(window)),
                           automation::classes::SlideShowWindow),
      known_);
}

std::shared_ptr<AddInDesigner::AddIn> AutomationPassage::hand(const std::shared_ptr<fakes::AddIn>& addIn) {
  return std::make_shared<automation::AddIn>(strict::of(as<AddInDesigner::AddIn>(addIn)));
}

ADODB::Factory* AutomationPassage::hand(ADODB::Factory* factory) {
  ado_ = factory;
  return factory == nullptr ? nullptr : &dataObjects_;
}

Excel::Factory* AutomationPassage::hand(Excel::Factory* factory) {
  excel_ = factory;
  return factory == nullptr ? nullptr : &excelFactory_;
}

}  // namespace conformance
