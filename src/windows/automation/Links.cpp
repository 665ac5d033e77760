// Linked shapes, and pictures that show files.

#include "windows/automation/Links.h"

#include <string>
#include <string_view>
#include <utility>

#include "basic/Error.h"
#include "windows/automation/Classes.h"
#include "windows/automation/TriState.h"

namespace windows::automation {
namespace {

/// The object model changes what a shape is linked to, so the author's own source is kept aside.
class LinkFormat final : public PowerPoint::LinkFormat {
 public:
  LinkFormat(com::Object link, std::shared_ptr<AuthorsOwn> own, AuthorsOwn::Place key)
      : link_(std::move(link)), own_(std::move(own)), key_(key) {}
  [[nodiscard]] std::string SourceFullName() const override { return link_.text(L"SourceFullName"); }
  void SourceFullName(std::string_view path) override {
    auto& pictures = own_->pictures;
    const auto found = pictures.find(key_);
    if (!path.empty()) {
      if (found == pictures.end()) pictures.emplace(key_, SourceFullName());
      link_.put(L"SourceFullName", path);
    } else if (found != pictures.end()) {
      link_.put(L"SourceFullName", found->second);
      pictures.erase(found);
    }
  }
  void Update() override { link_.call(L"Update"); }
  void BreakLink() override {
    link_.call(L"BreakLink");
    own_->pictures.erase(key_);
  }

 private:
  com::Object link_;
  std::shared_ptr<AuthorsOwn> own_;
  AuthorsOwn::Place key_;
};

/// The object model cannot replace an embedded picture: a linked one is laid over it, where it stood, and the
/// author's is hidden meanwhile.
class EmbeddedPicture final : public PowerPoint::LinkFormat {
 public:
  EmbeddedPicture(com::Object shape, std::shared_ptr<AuthorsOwn> own, AuthorsOwn::Place place)
      : shape_(std::move(shape)), own_(std::move(own)), place_(place) {}
  [[nodiscard]] std::string SourceFullName() const override {
    const auto cover = own_->covers.find(place_);
    if (cover == own_->covers.end()) return {};
    return cover->second.object(classes::LinkFormat, L"LinkFormat").text(L"SourceFullName");
  }
  void SourceFullName(std::string_view path) override { path_ = path; }
  void Update() override {
    const auto cover = own_->covers.find(place_);
    const bool isCovered = cover != own_->covers.end();
    if (path_.empty()) {
      if (isCovered) uncover();
    } else if (!isCovered || !changed(cover->second)) {
      if (isCovered) uncover();
      coverWith(path_);
    }
  }
  void BreakLink() override {
    const auto cover = own_->covers.find(place_);
    if (cover == own_->covers.end()) {
      throw basic::Error(basic::AdapterError, basic::DefaultSource, "The picture is not linked.");
    }
    cover->second.object(classes::LinkFormat, L"LinkFormat").call(L"BreakLink");
    own_->covers.erase(cover);
  }

 private:
  /// False where the author has deleted it.
  [[nodiscard]] bool changed(const com::Object& cover) const {
    com::Object link;
    try {
      link = cover.object(classes::LinkFormat, L"LinkFormat");
    } catch (const basic::Error&) {
      return false;
    }
    link.put(L"SourceFullName", path_);
    link.call(L"Update");
    return true;
  }
  void coverWith(const std::string& path) {
    const com::Object shapes = shape_.object(classes::Slide, L"Parent").object(classes::Shapes, L"Shapes");
    // FileName, LinkToFile, SaveWithDocument, then the frame
    com::Object cover = shapes.object(classes::Shape, L"AddPicture", path, triState(true), triState(false),
                                      shape_.real(L"Left"), shape_.real(L"Top"), shape_.real(L"Width"),
                                      shape_.real(L"Height"));
    own_->covers[place_] = cover;
    constexpr std::int32_t SendBackward = 3;  // msoSendBackward
    const std::int32_t steps = cover.number(L"ZOrderPosition") - shape_.number(L"ZOrderPosition") - 1;
    for (std::int32_t i = 0; i < steps; ++i) cover.call(L"ZOrder", SendBackward);
    cover.put(L"Rotation", shape_.real(L"Rotation"));
    shape_.put(L"Visible", triState(false));
  }
  void uncover() {
    const com::Object cover = own_->covers[place_];
    own_->covers.erase(place_);
    shape_.put(L"Visible", triState(true));
    try {
      cover.call(L"Delete");
    } catch (const basic::Error&) {  // NOLINT(bugprone-empty-catch): the author has deleted it
    }
  }

  com::Object shape_;
  std::shared_ptr<AuthorsOwn> own_;
  AuthorsOwn::Place place_;
  std::string path_;
};

}  // namespace

std::shared_ptr<PowerPoint::LinkFormat> linkFormat(const com::Object& shape, std::shared_ptr<AuthorsOwn> own,
                                                   AuthorsOwn::Place place) {
  try {
    return std::make_shared<LinkFormat>(shape.object(classes::LinkFormat, L"LinkFormat"), own, place);
  } catch (const basic::Error&) {
    constexpr auto Picture = static_cast<std::int32_t>(PowerPoint::ShapeType::Picture);
    if (shape.number(L"Type") != Picture) throw;
    return std::make_shared<EmbeddedPicture>(shape, std::move(own), place);
  }
}

}  // namespace windows::automation
