// The shell's calls for wide characters.

#include "windows/platform/Shell.h"

#include <array>
#include <filesystem>
#include <string>

#include "windows/com/Text.h"
#include "windows/com/WindowsApi.h"
#include "windows/platform/Library.h"
#include "windows/platform/MessageBox.h"
#include "windows/platform/Module.h"
#include "windows/platform/OwnerWindow.h"
// They need the headers above.
#include <shellapi.h>
#include <shlobj.h>
#undef ShellExecute
#undef BrowseForFolder

namespace windows::platform {

namespace {

HWND window(std::int64_t owner) {
  return owner == 0 ? ownerWindow() : reinterpret_cast<HWND>(static_cast<LONG_PTR>(owner));
}

/// A list of the shell's, freed as the shell wants it.
class ItemList {
 public:
  explicit ItemList(LPITEMIDLIST list = nullptr) : list_(list) {}
  ~ItemList() { ::CoTaskMemFree(list_); }
  ItemList(const ItemList&) = delete;
  ItemList& operator=(const ItemList&) = delete;
  [[nodiscard]] LPITEMIDLIST get() const { return list_; }
  LPITEMIDLIST* place() { return &list_; }

 private:
  LPITEMIDLIST list_;
};

bool isThere(const std::filesystem::path& file) {
  return ::GetFileAttributesW(file.c_str()) != INVALID_FILE_ATTRIBUTES;
}

/// Where a page of help may lie: where it is said to, and one folder above, as modules for programs of both
/// sizes of words have one help beside their folders.
std::array<std::filesystem::path, 2> helpPages(std::string_view page) {
  const std::filesystem::path said(com::wide(page));
  const std::filesystem::path folder = said.parent_path();
  return {said, folder.parent_path().parent_path() / folder.filename() / said.filename()};
}

}  // namespace

bool Shell::ShellExecute(std::string_view verb, std::string_view file, std::int32_t showCommand) {
  const HINSTANCE answer = ::ShellExecuteW(ownerWindow(), com::wide(verb).c_str(), com::wide(file).c_str(),
                                           nullptr, nullptr, showCommand);
  constexpr INT_PTR LastError = 32;
  return reinterpret_cast<INT_PTR>(answer) > LastError;
}

std::int64_t Shell::HtmlHelp(std::int64_t owner, std::string_view file, std::uint32_t command,
                             std::uint32_t data) {
  using Call = HWND(WINAPI*)(HWND, LPCWSTR, UINT, DWORD_PTR);
  // It stays loaded: its windows outlive the call.
  static const auto call =
      procedure<Call>(::LoadLibraryExW(L"hhctrl.ocx", nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32), "HtmlHelpW");
  const auto pages = helpPages(file);
  for (const std::filesystem::path& page : pages) {
    const std::filesystem::path compiled = page.parent_path().concat(L".chm");
    if (call == nullptr || !isThere(compiled)) continue;
    const std::wstring topic = compiled.wstring() + L"::/" + page.filename().wstring();
    if (const HWND shown = call(window(owner), topic.c_str(), command, data)) {
      return reinterpret_cast<LONG_PTR>(shown);
    }
  }
  for (const std::filesystem::path& page : pages) {
    if (isThere(page) && ShellExecute("open", com::narrow(page.wstring()), SW_SHOWNORMAL)) return 0;
  }
  MessageBox().MsgBox(
      "The help cannot be shown: neither it nor a program that opens it was found. It should be " +
          com::narrow(pages.back().wstring()) + ".",
      MB_ICONEXCLAMATION, Module().Title());
  return 0;
}

std::optional<std::string> Shell::ComputerName() const {
  std::array<wchar_t, 255> name{};
  auto length = static_cast<DWORD>(name.size());
  if (!::GetComputerNameW(name.data(), &length)) return {};
  return com::narrow({name.data(), length});
}

std::optional<Shell::Browsed> Shell::BrowseForFolder(std::int64_t owner, std::string_view title,
                                                     std::optional<std::int32_t> root, std::uint32_t flags) {
  ItemList rootList;
  if (root && FAILED(::SHGetSpecialFolderLocation(nullptr, *root, rootList.place()))) return {};
  std::array<wchar_t, MAX_PATH> name{};
  const std::wstring wideTitle = com::wide(title);
  BROWSEINFOW browse{};
  browse.hwndOwner = window(owner);
  browse.pidlRoot = rootList.get();
  browse.pszDisplayName = name.data();
  browse.lpszTitle = wideTitle.c_str();
  browse.ulFlags = flags;
  const ItemList chosen(::SHBrowseForFolderW(&browse));
  if (chosen.get() == nullptr) return {};
  Browsed browsed{com::narrow(name.data()), {}};
  std::array<wchar_t, MAX_PATH> path{};
  if (::SHGetPathFromIDListW(chosen.get(), path.data())) browsed.path = com::narrow(path.data());
  return browsed;
}

}  // namespace windows::platform
