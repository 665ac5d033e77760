#include "deck/objects/Application.h"

#include <algorithm>
#include <filesystem>

#include "host/drives.h"
#include "opc/PackageFile.h"

namespace deck {
namespace {

class OpenPresentations final : public PowerPoint::Presentations {
 public:
  explicit OpenPresentations(std::shared_ptr<Application> application)
      : application_(std::move(application)) {}
  [[nodiscard]] std::int32_t Count() const override {
    return static_cast<std::int32_t>(application_->openPresentations().size());
  }
  std::shared_ptr<PowerPoint::Presentation> Open(std::string_view fileName) override {
    return application_->open(std::string(fileName));
  }

 private:
  std::shared_ptr<Application> application_;
};

}  // namespace

Application::~Application() {
  for (const auto& presentation : open_) presentation->attach(nullptr);
}

std::shared_ptr<PowerPoint::Presentations> Application::Presentations() {
  return std::make_shared<OpenPresentations>(shared_from_this());
}

std::shared_ptr<Presentation> Application::open(const std::string& path, Damaged damaged) {
  const std::string full = std::filesystem::absolute(path).lexically_normal().string();
  for (const auto& presentation : open_) {
    if (presentation->FullName() == full) return presentation;
  }
  opc::FileContent content =
      host::OnDrive(full, [full](const auto& gettingOn) { return opc::readPackageFile(full, gettingOn); });
  auto package = opc::Package::fromBytes(std::move(content.bytes), full);
  std::vector<Damage> damages;
  if (damaged == Damaged::Repaired) damages = repair(*package);
  return announce(
      std::make_shared<Presentation>(std::move(package), full, content.state, std::move(damages)));
}

std::shared_ptr<Presentation> Application::open(std::unique_ptr<opc::Package> package,
                                                const opc::FileState& state) {
  const std::string path = package->name();
  return announce(std::make_shared<Presentation>(std::move(package), path, state));
}

std::shared_ptr<Presentation> Application::announce(std::shared_ptr<Presentation> opened) {
  auto presentation = keep(std::move(opened));
  presentation->loadLinkedPictures();
  raise<PowerPoint::Presentation>(&PowerPoint::ApplicationEvents::PresentationOpen, presentation);
  return presentation;
}

std::shared_ptr<Presentation> Application::add(std::unique_ptr<opc::Package> package) {
  auto presentation = keep(std::make_shared<Presentation>(std::move(package), std::string(), std::nullopt));
  raise<PowerPoint::Presentation>(&PowerPoint::ApplicationEvents::NewPresentation, presentation);
  return presentation;
}

std::shared_ptr<Presentation> Application::keep(std::shared_ptr<Presentation> presentation) {
  presentation->attach(this);
  return open_.emplace_back(std::move(presentation));
}

void Application::activate(const std::shared_ptr<DocumentWindow>& window) {
  if (window_ == window) return;
  window_ = window;
  if (window_ && sink_ != nullptr) sink_->WindowActivate(window_->Presentation(), window_);
}

void Application::select(DocumentWindow& window, std::int32_t slide, std::vector<std::uint32_t> shapes) {
  const std::pair before(window.slide(), window.shapes());
  window.select(slide, std::move(shapes));
  if (before == std::pair(window.slide(), window.shapes())) return;
  raise<PowerPoint::Selection>(&PowerPoint::ApplicationEvents::WindowSelectionChange, window.Selection());
}

void Application::close(const std::shared_ptr<PowerPoint::Presentation>& presentation) {
  const auto find = [&] { return std::find(open_.begin(), open_.end(), presentation); };
  if (find() == open_.end()) return;
  raise(&PowerPoint::ApplicationEvents::PresentationClose, presentation);
  const auto found = find();
  if (found == open_.end()) return;
  (*found)->attach(nullptr);
  open_.erase(found);
}

}  // namespace deck
