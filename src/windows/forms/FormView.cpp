// The dialogs that are shown, and the system's own for files and folders.

#include "windows/forms/FormView.h"

#include <algorithm>
#include <utility>

#include "basic/Strings.h"
#include "windows/com/Text.h"
#include "windows/forms/Dialog.h"
#include "windows/platform/Shell.h"
// It needs the headers above, and a macro of theirs.
#define interface struct
#include <commdlg.h>
#undef interface

namespace windows::forms {

namespace {

/// "Text files", "txt csv" as "Text files|*.txt;*.csv|", with NULs for "|".
std::wstring filterOf(const std::vector<Forms::FileKind>& kinds) {
  std::wstring filter;
  const auto add = [&](const std::string& text) { filter.append(com::wide(text)).push_back(L'\0'); };
  for (const Forms::FileKind& kind : kinds) {
    add(kind.Name);
    add("*." + basic::Replace(kind.Extensions, " ", ";*."));
  }
  add("All files");
  add("*.*");
  return filter;
}

std::optional<std::string> fileFromUser(HWND owner, const std::wstring& title, const std::wstring& filter) {
  std::wstring path(32768, L'\0');
  OPENFILENAMEW wanted{};
  wanted.lStructSize = sizeof wanted;
  wanted.hwndOwner = owner;
  wanted.lpstrFilter = filter.c_str();
  wanted.lpstrFile = path.data();
  wanted.nMaxFile = static_cast<DWORD>(path.size());
  wanted.lpstrTitle = title.c_str();
  // The host's present folder is none of ours.
  wanted.Flags = OFN_EXPLORER | OFN_FILEMUSTEXIST | OFN_PATHMUSTEXIST | OFN_HIDEREADONLY | OFN_NOCHANGEDIR;
  if (!::GetOpenFileNameW(&wanted)) return {};
  return com::narrow(path.substr(0, path.find(L'\0')));
}

}  // namespace

FormView::~FormView() {
  for (const auto& each : std::exchange(dialogs_, {})) each->close(Forms::Result::Cancel);
}

void FormView::Show(const std::shared_ptr<Forms::Form>& form, Forms::Placement,
                    std::function<void(Forms::Result)> closed) {
  const auto dialog = std::make_shared<Dialog>(
      form, [this, shown = form.get(), closed = std::move(closed)](Forms::Result result) {
        std::erase_if(dialogs_, [&](const auto& each) { return &each->form() == shown; });
        closed(result);
      });
  dialogs_.push_back(dialog);
  try {
    dialog->open();
  } catch (...) {
    std::erase(dialogs_, dialog);
    throw;
  }
}

void FormView::Changed(Forms::Form& form, const Forms::Changes& changes) {
  if (const auto dialog = dialogOf(form)) dialog->changed(changes);
}

void FormView::Complain(Forms::Form& form, const Forms::Control& control) {
  if (const auto dialog = dialogOf(form)) dialog->complain(control);
}

void FormView::Focus(Forms::Form& form, const Forms::Control& control) {
  if (const auto dialog = dialogOf(form)) dialog->focus(control);
}

void FormView::Close(Forms::Form& form, Forms::Result result) {
  if (const auto dialog = dialogOf(form)) dialog->close(result);
}

void FormView::ChooseFile(Forms::Form& form, std::string_view title,
                          const std::vector<Forms::FileKind>& kinds,
                          std::function<void(std::optional<std::string>)> chosen) {
  loop_.post([this, weak = form.weak_from_this(), title = com::wide(title), filter = filterOf(kinds),
              chosen = std::move(chosen)] {
    const auto asking = weak.lock();
    const HWND owner = asking ? windowOf(*asking) : nullptr;
    if (owner == nullptr) return;
    const auto path = fileFromUser(owner, title, filter);
    if (path && asking->IsShown()) asking->Update([&] { chosen(path); });
  });
}

void FormView::ChooseFolder(Forms::Form& form, std::string_view title,
                            std::function<void(std::optional<std::string>)> chosen) {
  loop_.post([this, weak = form.weak_from_this(), title = std::string(title), chosen = std::move(chosen)] {
    const auto asking = weak.lock();
    const HWND owner = asking ? windowOf(*asking) : nullptr;
    if (owner == nullptr) return;
    constexpr std::uint32_t FoldersAlone = 1;
    constexpr std::uint32_t NewDialog = 0x40;
    const auto browsed = platform::Shell().BrowseForFolder(reinterpret_cast<LONG_PTR>(owner), title, {},
                                                           FoldersAlone | NewDialog);
    if (browsed && browsed->path && asking->IsShown()) asking->Update([&] { chosen(browsed->path); });
  });
}

HWND FormView::windowOf(const Forms::Form& form) const {
  const auto dialog = dialogOf(form);
  return dialog ? dialog->window() : nullptr;
}

std::shared_ptr<Dialog> FormView::dialogOf(const Forms::Form& form) const {
  const auto found = std::find_if(dialogs_.begin(), dialogs_.end(),
                                  [&](const auto& each) { return &each->form() == &form; });
  return found == dialogs_.end() ? nullptr : *found;
}

}  // namespace windows::forms
