// The shell's calls for wide characters.

#include "windows/platform/Shell.h"

#include <array>

#include "windows/com/Text.h"
#include "windows/com/WindowsApi.h"
#include "windows/platform/Library.h"
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

/// A page of help: within the compiled file beside its folder ("help.chm" beside "help"), where there is one.
std::string compiledHelp(std::string_view page) {
  const std::size_t end = page.find_last_of("\\/");
  if (end == std::string_view::npos) return std::string(page);
  const std::string compiled = std::string(page.substr(0, end)) + ".chm";
  if (::GetFileAttributesW(com::wide(compiled).c_str()) == INVALID_FILE_ATTRIBUTES) return std::string(page);
  return compiled + "::/" + std::string(page.substr(end + 1));
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
  if (call == nullptr) return 0;
  return reinterpret_cast<LONG_PTR>(
      call(window(owner), com::wide(compiledHelp(file)).c_str(), command, data));
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
