#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "fakes/FakeServices.h"
#include "windows/com/Text.h"
#include "windows/com/WindowsApi.h"
#include "windows/forms/FormView.h"
#include "windows/platform/MessageLoop.h"

namespace windows::test {

/// A window that plays the host's, and dialogs upon it, driven as a user drives them.
struct Screen {
  Screen();
  ~Screen();
  Screen(const Screen&) = delete;
  Screen& operator=(const Screen&) = delete;

  /// The dialog in front, whatever it is; null without one.
  [[nodiscard]] HWND top() const;
  [[nodiscard]] bool isEmpty() const { return top() == nullptr; }
  /// Handles what has been posted.
  void settle();
  void press(UINT key);
  /// Types into what has the focus.
  void type(const std::string& text);
  /// The visible window of the dialog that begins with that text; null without one.
  [[nodiscard]] HWND find(const std::string& text) const;
  void click(const std::string& text);
  /// What stands behind a row's label; null without such a row.
  [[nodiscard]] HWND field(const std::string& label) const;
  /// Types into it instead of what it holds.
  void fill(const std::string& label, const std::string& text);
  /// Takes the item of its list that begins with that text.
  void choose(const std::string& label, const std::string& text);

  HWND host = nullptr;
  platform::MessageLoop loop;
  forms::FormView view{loop};
};

/// Visible windows within another, in tab order.
[[nodiscard]] std::vector<HWND> visibleWindows(HWND dialog);
[[nodiscard]] std::string textOf(HWND window);
[[nodiscard]] std::wstring classOf(HWND window);
/// In pixels of the dialog.
[[nodiscard]] RECT placeOf(HWND window, HWND dialog);

/// What a window shows, from the top: blue, green, red and nothing for each pixel.
struct Picture {
  int width = 0;
  int height = 0;
  std::vector<std::uint8_t> pixels;
};
[[nodiscard]] Picture pictureOf(HWND window);
[[nodiscard]] bool isRed(const Picture& picture, int x, int y);
/// As a bitmap.
void write(const Picture& picture, const std::filesystem::path& file);
/// Keeps it as a bitmap in the folder that the environment names (LUMENFOLD_PICTURES), for people to look at.
void keep(const Picture& picture, const std::string& name);

}  // namespace windows::test
