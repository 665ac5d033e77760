#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "host/forms.h"
#include "windows/forms/DialogKeys.h"
#include "windows/forms/Layout.h"
#include "windows/forms/Metrics.h"
#include "windows/forms/Modality.h"
#include "windows/forms/Widget.h"

namespace windows::forms {

/// A form as a dialog of the system that does not wait: whoever opens it goes on at once, while the host's
/// windows take no input. It holds its form until it is closed.
class Dialog final : public Surface, public std::enable_shared_from_this<Dialog> {
 public:
  /// `closed` is called once, when the window is gone, however.
  Dialog(std::shared_ptr<Forms::Form> form, std::function<void(Forms::Result)> closed);
  ~Dialog() override;
  Dialog(const Dialog&) = delete;
  Dialog& operator=(const Dialog&) = delete;

  /// Who hears the user while it is there: it alone of the thread's windows, or the others as well.
  enum class Input : std::uint8_t { Own, Shared };
  /// Shows it in the middle of its owner. An error where the system gives no window.
  void open(Input input = Input::Own);
  void changed(const Forms::Changes& changes);
  /// Told once the handler that complains has ended: where a button was clicked, in a message box.
  void complain(const Forms::Control& control);
  void focus(const Forms::Control& control);
  void close(Forms::Result result);

  [[nodiscard]] Forms::Form& form() const { return *form_; }
  [[nodiscard]] HWND window() const { return window_; }

  void raise(const Forms::Control& control, Forms::EventKind kind,
             std::optional<Forms::Value> value) override;
  void drawSoon(const Forms::Control& control) override;
  [[nodiscard]] const Metrics& metrics() const override { return *metrics_; }

 private:
  static INT_PTR CALLBACK receive(HWND window, UINT message, WPARAM first, LPARAM second);
  INT_PTR handle(UINT message, WPARAM first, LPARAM second);
  void begin();
  void command(WPARAM first, LPARAM second);
  INT_PTR colour(HDC context, HWND window) const;
  void useResolution(unsigned dpi, const RECT& place);
  void arrangeAll();
  void setTips(const Arrangement& arrangement);
  void focusFirst();
  [[nodiscard]] std::wstring title() const;
  [[nodiscard]] Widget* widgetOf(const Forms::Control& control) const;
  [[nodiscard]] Widget* widgetOf(HWND window) const;
  void tellComplaint();

  std::shared_ptr<Forms::Form> form_;
  std::function<void(Forms::Result)> closed_;
  HWND window_ = nullptr;
  HWND tips_ = nullptr;
  std::unique_ptr<Metrics> metrics_;
  std::unique_ptr<DialogKeys> keys_;
  std::unique_ptr<Modality> modality_;
  std::vector<std::unique_ptr<Widget>> widgets_;
  std::vector<DialogRow> rows_;
  std::vector<DialogFrame> frames_;
  std::map<HWND, Widget*> byWindow_;
  /// What was complained about first while a button's click was handled.
  const Forms::Control* complaint_ = nullptr;
  Input input_ = Input::Own;
  bool isShown_ = false;
};

}  // namespace windows::forms
