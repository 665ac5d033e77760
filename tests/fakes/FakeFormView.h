#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "fakes/FormUser.h"
#include "host/forms.h"

namespace fakes {

/// A view of forms that draws nothing: it keeps what is shown, and a test does what a user would.
class FormView final : public Forms::View, public FormUser {
 public:
  struct Shown {
    std::shared_ptr<Forms::Form> form;
    Forms::Placement placement;
    std::function<void(Forms::Result)> closed;
  };

  [[nodiscard]] bool Docks() const override { return docks; }
  void Show(const std::shared_ptr<Forms::Form>& form, Forms::Placement placement,
            std::function<void(Forms::Result)> closed) override {
    if (placement == Forms::Placement::Docked) CloseDocked();
    shown.push_back({form, placement, std::move(closed)});
  }
  void Changed(Forms::Form&, const Forms::Changes& changes) override { changed.push_back(changes); }
  void Complain(Forms::Form&, const Forms::Control& control) override {
    complaints.push_back(control.Name() + ": " + control.Problem());
  }
  void Focus(Forms::Form&, const Forms::Control& control) override { focused.push_back(control.Name()); }
  void Close(Forms::Form& form, Forms::Result how) override {
    for (std::size_t i = shown.size(); i-- > 0;) {
      if (shown[i].form.get() == &form) return CloseAt(i, how);
    }
  }
  void ChooseFile(Forms::Form&, std::string_view title, const std::vector<Forms::FileKind>& kinds,
                  std::function<void(std::optional<std::string>)> chosen) override {
    titles.emplace_back(title);
    fileKinds = kinds;
    answer = std::move(chosen);
  }
  void ChooseFolder(Forms::Form&, std::string_view title,
                    std::function<void(std::optional<std::string>)> chosen) override {
    titles.emplace_back(title);
    answer = std::move(chosen);
  }

  /// The form that was shown last and is there still; a test that has none fails.
  [[nodiscard]] Forms::Form& Top() const { return *shown.at(shown.size() - 1).form; }
  [[nodiscard]] bool IsEmpty() const { return shown.empty(); }
  [[nodiscard]] std::string TopName() const override { return shown.empty() ? "(none)" : Top().Name(); }

  template <typename T = Forms::Control>
  [[nodiscard]] T& Get(std::string_view name) const {
    auto* control = dynamic_cast<T*>(Top().Find(name));
    if (control == nullptr) throw std::invalid_argument("no control " + std::string(name));
    return *control;
  }

  std::string Raise(const Forms::Event& event) const override {
    // A handler may close the form, and show another.
    const std::shared_ptr<Forms::Form> form = shown.at(shown.size() - 1).form;
    return form->Raise(event).value_or("");
  }

  /// The Text property of a label, text box, combo box or progress bar.
  [[nodiscard]] std::string Text(std::string_view name) const { return Property(name, "Text"); }
  [[nodiscard]] std::string Property(std::string_view name, std::string_view property) const {
    const auto& properties = Get(name).Properties();
    const auto found = properties.find(property);
    return found == properties.end() ? std::string() : std::get<std::string>(found->second);
  }
  /// The cells of a grid.
  [[nodiscard]] std::vector<std::vector<std::string>> Cells(std::string_view name) const {
    const auto& properties = Get(name).Properties();
    const auto found = properties.find("Rows");
    if (found == properties.end()) return {};
    return std::get<Forms::Rows>(found->second).Cells;
  }
  [[nodiscard]] std::string Problem(std::string_view name) const { return Get(name).Problem(); }
  [[nodiscard]] bool Visible(std::string_view name) const { return Get(name).Visible(); }
  /// The texts of a list's items.
  [[nodiscard]] std::vector<std::string> Items(std::string_view name) const {
    const auto& properties = Get(name).Properties();
    std::vector<std::string> texts;
    const auto found = properties.find("Items");
    if (found == properties.end()) return texts;
    for (const Forms::Item& item : std::get<Forms::Items>(found->second)) texts.push_back(item.Text);
    return texts;
  }

  bool docks = true;
  std::vector<Shown> shown;
  std::vector<Forms::Changes> changed;
  std::vector<std::string> complaints;
  std::vector<std::string> focused;
  std::vector<std::string> titles;
  std::vector<Forms::FileKind> fileKinds;
  /// Of the question for a file or folder that was asked last.
  std::function<void(std::optional<std::string>)> answer;
  /// How the form that was closed last was closed.
  std::optional<Forms::Result> result;

 private:
  void CloseAt(std::size_t place, Forms::Result how) {
    const Shown entry = std::move(shown[place]);
    shown.erase(shown.begin() + static_cast<std::ptrdiff_t>(place));
    result = how;
    if (entry.closed) entry.closed(how);
  }
  void CloseDocked() {
    for (std::size_t i = shown.size(); i-- > 0;) {
      if (shown[i].placement == Forms::Placement::Docked) CloseAt(i, Forms::Result::Cancel);
    }
  }
};

}  // namespace fakes
