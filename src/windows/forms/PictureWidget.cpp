#include <string>

#include "windows/forms/PictureFile.h"
#include "windows/forms/Widget.h"
// It needs the headers above.
#include <commctrl.h>

namespace windows::forms {

namespace {

/// A picture in its proportions, in a box.
class PictureWidget final : public Widget {
 public:
  using Widget::Widget;
  ~PictureWidget() override { ::DeleteObject(bitmap_); }
  PictureWidget(const PictureWidget&) = delete;
  PictureWidget& operator=(const PictureWidget&) = delete;

  [[nodiscard]] std::vector<Part> parts() const override {
    return {{WC_STATICW, SS_BITMAP | SS_CENTERIMAGE | WS_BORDER}, {WC_STATICW, NoteStyle}};
  }
  [[nodiscard]] bool isVisible() const override {
    return control().Visible() && !get<std::string>("File").empty();
  }
  [[nodiscard]] bool isTall() const override { return true; }
  void draw() override {
    const auto file = get<std::string>("File");
    if (file != file_ || metrics().dpi() != dpi_) {
      file_ = file;
      dpi_ = metrics().dpi();
      const HBITMAP made =
          file.empty() ? nullptr : pictureFile(file, metrics().x(Wide - 2), metrics().y(High - 2));
      ::SendMessageW(main(), STM_SETIMAGE, IMAGE_BITMAP, reinterpret_cast<LPARAM>(made));
      ::DeleteObject(bitmap_);
      bitmap_ = made;
    }
    Widget::draw();
  }

 protected:
  [[nodiscard]] int ownHeight(int) const override { return metrics().y(High); }
  void placeOwn(const RECT& place, std::vector<Placed>& placed) const override {
    placed.push_back({main(), {place.left, place.top, place.left + metrics().x(Wide), place.bottom}});
  }
  [[nodiscard]] std::string note() const override {
    return bitmap_ == nullptr && !file_.empty() ? "The picture cannot be shown here." : Widget::note();
  }

 private:
  static constexpr int Wide = 120;
  static constexpr int High = 68;
  std::string file_;
  /// What the bitmap was made for.
  unsigned dpi_ = 0;
  HBITMAP bitmap_ = nullptr;
};

}  // namespace

std::unique_ptr<Widget> pictureFor(Surface& surface, const Forms::Control& control) {
  return std::make_unique<PictureWidget>(surface, control);
}

}  // namespace windows::forms
