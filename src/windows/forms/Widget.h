#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "host/forms.h"
#include "windows/com/WindowsApi.h"
#include "windows/forms/Metrics.h"
#include "windows/forms/Template.h"

namespace windows::forms {

/// Where widgets stand: what they tell of their user, and what they ask.
class Surface {
 public:
  virtual ~Surface() = default;
  /// Hands it to the form; what the form refuses is drawn back.
  virtual void raise(const Forms::Control& control, Forms::EventKind kind,
                     std::optional<Forms::Value> value) = 0;
  /// Draws the control when the message that is being handled is done.
  virtual void drawSoon(const Forms::Control& control) = 0;
  [[nodiscard]] virtual const Metrics& metrics() const = 0;
};

/// A window and where it is to be, in pixels of the dialog.
struct Placed {
  HWND window;
  RECT place;
};

/// A control of a form as windows of a dialog: the first is the control itself, the last a note below it (a
/// hint, what is wrong with it, why it is not enabled). Sizes are in pixels.
class Widget {
 public:
  Widget(Surface& surface, const Forms::Control& control) : surface_(surface), control_(control) {}
  virtual ~Widget() = default;
  Widget(const Widget&) = delete;
  Widget& operator=(const Widget&) = delete;

  [[nodiscard]] const Forms::Control& control() const { return control_; }
  /// The windows that it consists of, in tab order.
  [[nodiscard]] virtual std::vector<Part> parts() const = 0;
  /// They are there now.
  virtual void created(std::vector<HWND> windows) { windows_ = std::move(windows); }
  [[nodiscard]] const std::vector<HWND>& windows() const { return windows_; }
  [[nodiscard]] HWND main() const { return windows_.front(); }

  /// Shows the control's state.
  virtual void draw();
  [[nodiscard]] virtual bool isVisible() const { return control_.Visible(); }
  /// Of what takes no more room than it needs; 0 of what takes what there is.
  [[nodiscard]] virtual int fixedWidth() const { return 0; }
  /// Of that, what a unit takes behind the field; a spin button stands before it.
  [[nodiscard]] virtual int unitWidth() const { return 0; }
  /// With its note, which may be wider.
  [[nodiscard]] int height(int width, int noteWidth) const;
  /// How far a line of text beside it stands below its top.
  [[nodiscard]] virtual int textTop() const { return surface_.metrics().y(3); }
  [[nodiscard]] virtual bool isTall() const { return false; }
  void place(int left, int top, int width, int noteWidth, std::vector<Placed>& placed) const;

  /// What its windows tell (WM_COMMAND, WM_NOTIFY).
  virtual void command(HWND, unsigned /*code*/) {}
  virtual LRESULT notify(const NMHDR&) { return 0; }
  /// The system's, where it has none of its own.
  [[nodiscard]] virtual std::optional<COLORREF> colour(HWND window) const;
  /// What a mouse that rests over it is told.
  [[nodiscard]] virtual std::string tip() const { return {}; }
  virtual void focus() const {
    ::SendMessageW(::GetParent(main()), WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(main()), TRUE);
  }

 protected:
  /// Of the control itself, without its note.
  [[nodiscard]] virtual int ownHeight(int width) const = 0;
  virtual void placeOwn(const RECT& place, std::vector<Placed>& placed) const {
    placed.push_back({main(), place});
  }
  /// What stands below it.
  [[nodiscard]] virtual std::string note() const;
  [[nodiscard]] virtual bool hasNote() const { return true; }

  template <typename T>
  [[nodiscard]] T get(std::string_view property) const {
    const auto found = control_.Properties().find(property);
    return found == control_.Properties().end() ? T{} : std::get<T>(found->second);
  }
  [[nodiscard]] std::wstring text(std::string_view property) const;
  void raise(Forms::EventKind kind, std::optional<Forms::Value> value = {}) {
    surface_.raise(control_, kind, std::move(value));
  }
  void drawSoon() { surface_.drawSoon(control_); }
  void raiseLeft() {
    if (std::exchange(isTouched_, false)) raise(Forms::EventKind::LostFocus);
  }
  [[nodiscard]] const Metrics& metrics() const { return surface_.metrics(); }

  /// What windows tell while they are drawn comes from no user.
  bool isDrawing_ = false;
  bool isTouched_ = false;

 private:
  Surface& surface_;
  const Forms::Control& control_;
  std::vector<HWND> windows_;
};

/// Of a spin button, in dialog units.
inline constexpr int StepsWidth = 10;

/// What a window shows.
[[nodiscard]] std::wstring windowText(HWND window);
/// Sets it where it is another: the place of the caret stays.
void setWindowText(HWND window, const std::wstring& text);
/// Line ends as windows have them, and back.
[[nodiscard]] std::wstring withLineEnds(std::string_view text);
[[nodiscard]] std::string withoutLineEnds(const std::wstring& text);
/// A line that can be read below a control.
inline constexpr DWORD NoteStyle = SS_LEFT | SS_NOPREFIX | SS_EDITCONTROL;

/// Null for what is drawn with another (frames).
[[nodiscard]] std::unique_ptr<Widget> widgetFor(Surface& surface, const Forms::Form& form,
                                                const Forms::Control& control);
[[nodiscard]] std::unique_ptr<Widget> listFor(Surface& surface, const Forms::Control& control);
[[nodiscard]] std::unique_ptr<Widget> gridFor(Surface& surface, const Forms::Control& control);
[[nodiscard]] std::unique_ptr<Widget> comboFor(Surface& surface, const Forms::Control& control);
[[nodiscard]] std::unique_ptr<Widget> pictureFor(Surface& surface, const Forms::Control& control);

}  // namespace windows::forms
