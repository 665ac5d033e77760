#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/desk/FormJson.h"
#include "host/forms.h"
#include "json/Json.h"

namespace app {

/// The system's forms in the windows of a desk: pages draw them and say what their users do. What a handler
/// changes is told once, by flush(). Each window has one docked form; dialogs lie upon it.
class DeskForms final : public Forms::View {
 public:
  static constexpr std::size_t MostForms = 200;

  struct Surroundings {
    /// The window in which the author works; empty without one.
    std::function<std::string()> activeWindow;
    /// An event for a window's page.
    std::function<void(const std::string& window, std::string_view event, const json::Json& data)> send;
    /// Something is to be told: flush() is wanted.
    std::function<void()> changed;
    AddressOf addressOf;
  };
  explicit DeskForms(Surroundings surroundings) : around_(std::move(surroundings)) {}

  // docs/desk-protocol.md. Throw web::Refusal for a form or choice that the window does not have, and for
  // events that the form refuses (409).

  /// {"seq": 41, "events": […]} → {"ack": 41, "patch": {…}}
  json::Json raise(const std::string& window, int form, const json::Json& body);
  void queryClose(const std::string& window, int form);
  /// Nothing: nobody chose.
  void chosen(const std::string& window, int choice, std::optional<std::string> path);

  /// The forms of a window, the docked one first.
  [[nodiscard]] json::Json toJson(const std::string& window) const;
  /// What tells whether these are others: as short as it can be.
  [[nodiscard]] json::Json names(const std::string& window) const;
  /// Sends what has changed since the last call.
  void flush();
  /// Says once more what is being asked.
  void repeat(const std::string& window) const;
  /// The window is gone, with its forms.
  void forget(const std::string& window);
  void closeAll();

  [[nodiscard]] bool Docks() const override { return true; }
  void Show(const std::shared_ptr<Forms::Form>& form, Forms::Placement placement,
            std::function<void(Forms::Result)> closed) override;
  void Changed(Forms::Form& form, const Forms::Changes& changes) override;
  void Complain(Forms::Form& form, const Forms::Control& control) override;
  void Focus(Forms::Form& form, const Forms::Control& control) override;
  void Close(Forms::Form& form, Forms::Result result) override;
  void ChooseFile(Forms::Form& form, std::string_view title, const std::vector<Forms::FileKind>& kinds,
                  std::function<void(std::optional<std::string>)> chosen) override;
  void ChooseFolder(Forms::Form& form, std::string_view title,
                    std::function<void(std::optional<std::string>)> chosen) override;

 private:
  struct Shown {
    std::string window;
    std::shared_ptr<Forms::Form> form;
    std::function<void(Forms::Result)> closed;
    /// The newest of its events that was handled.
    std::int64_t ack = 0;
    json::Json patch = json::Json::object();
    std::string focus;
    std::string complain;
  };
  struct Choice {
    std::string window;
    int form = 0;
    json::Json question;
    std::function<void(std::optional<std::string>)> chosen;
  };

  Shown& shown(const std::string& window, int form);
  /// 0 for a form that is not shown.
  [[nodiscard]] int idOf(const Forms::Form& form) const;
  void close(int id, Forms::Result result);
  void ask(const Forms::Form& form, std::string_view title, const char* what, json::Json kinds,
           std::function<void(std::optional<std::string>)> chosen);

  Surroundings around_;
  /// By id, so in the order in which they were shown.
  std::map<int, Shown> forms_;
  std::map<int, Choice> choices_;
  int lastForm_ = 0;
  int lastChoice_ = 0;
};

}  // namespace app
