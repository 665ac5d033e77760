#include "windows/forms/Screen.h"

#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>

namespace windows::test {

namespace {

BOOL CALLBACK lookForDialog(HWND window, LPARAM found) {
  if (classOf(window) != L"#32770" || !::IsWindowVisible(window) || !::IsWindowEnabled(window)) return TRUE;
  *reinterpret_cast<HWND*>(found) = window;
  return FALSE;
}

}  // namespace

Screen::Screen() {
  host = ::CreateWindowExW(0, L"STATIC", L"Host", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 60, 40, 1100, 900,
                           nullptr, nullptr, nullptr, nullptr);
  ::SetActiveWindow(host);
}

Screen::~Screen() { ::DestroyWindow(host); }

HWND Screen::top() const {
  HWND found = nullptr;
  ::EnumThreadWindows(::GetCurrentThreadId(), &lookForDialog, reinterpret_cast<LPARAM>(&found));
  return found;
}

void Screen::settle() {
  bool isDone = false;
  // Behind everything that waits already; twice, as that may post more.
  for (int i = 0; i < 2; ++i) {
    loop.post([&] { isDone = true; });
    while (!isDone) loop.DoEvents();
    isDone = false;
  }
}

void Screen::press(UINT key) {
  ::PostMessageW(::GetFocus(), WM_KEYDOWN, key, 0);
  ::PostMessageW(::GetFocus(), WM_KEYUP, key, 0);
  settle();
}

void Screen::type(const std::string& text) {
  for (const wchar_t each : com::wide(text)) ::PostMessageW(::GetFocus(), WM_CHAR, each, 0);
  settle();
}

HWND Screen::find(const std::string& text) const {
  for (const HWND each : visibleWindows(top())) {
    if (textOf(each).starts_with(text)) return each;
  }
  return nullptr;
}

void Screen::click(const std::string& text) {
  ::PostMessageW(find(text), BM_CLICK, 0, 0);
  settle();
}

HWND Screen::field(const std::string& label) const {
  const HWND found = find(label);
  return found == nullptr ? nullptr : ::GetWindow(found, GW_HWNDNEXT);
}

void Screen::fill(const std::string& label, const std::string& text) {
  ::SetFocus(field(label));
  ::SendMessageW(::GetFocus(), EM_SETSEL, 0, -1);
  type(text);
}

void Screen::choose(const std::string& label, const std::string& text) {
  const HWND list = field(label);
  const std::wstring wanted = com::wide(text);
  if (::SendMessageW(list, CB_SELECTSTRING, static_cast<WPARAM>(-1),
                     reinterpret_cast<LPARAM>(wanted.c_str())) == CB_ERR)
    return;
  ::PostMessageW(top(), WM_COMMAND, MAKEWPARAM(::GetDlgCtrlID(list), CBN_SELCHANGE),
                 reinterpret_cast<LPARAM>(list));
  settle();
}

std::vector<HWND> visibleWindows(HWND dialog) {
  std::vector<HWND> windows;
  for (HWND each = ::GetWindow(dialog, GW_CHILD); each != nullptr; each = ::GetWindow(each, GW_HWNDNEXT)) {
    const RECT place = placeOf(each, dialog);
    if (::IsWindowVisible(each) && place.bottom > place.top) windows.push_back(each);
  }
  return windows;
}

std::string textOf(HWND window) {
  std::wstring text(2000, L'\0');
  text.resize(static_cast<std::size_t>(::GetWindowTextW(window, text.data(), 2000)));
  return com::narrow(text);
}

std::wstring classOf(HWND window) {
  wchar_t name[64] = {};
  ::GetClassNameW(window, name, 64);
  return name;
}

RECT placeOf(HWND window, HWND dialog) {
  RECT place{};
  ::GetWindowRect(window, &place);
  ::MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&place), 2);
  return place;
}

Picture pictureOf(HWND window) {
  ::RedrawWindow(window, nullptr, nullptr,
                 RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_UPDATENOW | RDW_ALLCHILDREN);
  RECT place{};
  ::GetWindowRect(window, &place);
  Picture picture{place.right - place.left, place.bottom - place.top, {}};
  BITMAPINFO info{};
  info.bmiHeader.biSize = sizeof info.bmiHeader;
  info.bmiHeader.biWidth = picture.width;
  info.bmiHeader.biHeight = -picture.height;
  info.bmiHeader.biPlanes = 1;
  info.bmiHeader.biBitCount = 32;
  const HDC screen = ::GetWindowDC(window);
  const HDC memory = ::CreateCompatibleDC(screen);
  void* pixels = nullptr;
  const HBITMAP bitmap = ::CreateDIBSection(screen, &info, DIB_RGB_COLORS, &pixels, nullptr, 0);
  ::SelectObject(memory, bitmap);
  ::BitBlt(memory, 0, 0, picture.width, picture.height, screen, 0, 0, SRCCOPY);
  ::GdiFlush();
  picture.pixels.resize(static_cast<std::size_t>(picture.width * picture.height * 4));
  std::memcpy(picture.pixels.data(), pixels, picture.pixels.size());
  for (std::size_t i = 3; i < picture.pixels.size(); i += 4) picture.pixels[i] = 255;  // opaque
  ::DeleteDC(memory);
  ::DeleteObject(bitmap);
  ::ReleaseDC(window, screen);
  return picture;
}

bool isRed(const Picture& picture, int x, int y) {
  const std::uint8_t* pixel = picture.pixels.data() + (y * picture.width + x) * 4;
  return pixel[0] < 64 && pixel[1] < 64 && pixel[2] > 192;
}

void keep(const Picture& picture, const std::string& name) {
  const char* const folder = std::getenv("LUMENFOLD_PICTURES");
  if (folder != nullptr) write(picture, std::filesystem::path(folder) / (name + ".bmp"));
}

void write(const Picture& picture, const std::filesystem::path& path) {
  BITMAPFILEHEADER file{};
  BITMAPINFOHEADER info{};
  file.bfType = 0x4D42;
  file.bfOffBits = sizeof file + sizeof info;
  file.bfSize = static_cast<DWORD>(file.bfOffBits + picture.pixels.size());
  info.biSize = sizeof info;
  info.biWidth = picture.width;
  info.biHeight = -picture.height;
  info.biPlanes = 1;
  info.biBitCount = 32;
  std::ofstream out(path, std::ios::binary);
  out.write(reinterpret_cast<const char*>(&file), sizeof file);
  out.write(reinterpret_cast<const char*>(&info), sizeof info);
  out.write(reinterpret_cast<const char*>(picture.pixels.data()),
            static_cast<std::streamsize>(picture.pixels.size()));
}

}  // namespace windows::test
