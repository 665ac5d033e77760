#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "host/form_controls.h"

// Forms that are described and not drawn. A form of the system owns named controls, their state and the
// handlers of their events; a view of the host draws it (a browser, a native dialog, a test) and hands in
// what its user does. Everything is called on one thread.

namespace Forms {

/// Label, controls and the group they stand in. Tab order is the order of the rows and of the controls in
/// them.
struct Row {
  /// With "&" before its access key, which leads to the first control; without it the controls' own captions
  /// must do.
  std::string Label;
  std::vector<Control*> Controls;
  /// Null outside of frames.
  const Frame* Group = nullptr;
  /// Buttons that stand together at the end.
  bool IsButtons = false;
};

enum class Width : std::uint8_t { Narrow, Wide };
/// In a panel that stays beside the document, where every change applies at once; or by itself, where OK and
/// Cancel decide.
enum class Placement : std::uint8_t { Docked, Dialog };
enum class Result : std::uint8_t { OK, Cancel };

enum class EventKind : std::uint8_t { Change, Click, DblClick, LostFocus, DropDown, Step };

/// What a user did. `NewValue` comes with Change (the text, the check's value, the list's places) and with
/// Step (how many steps, an integer); a Click on an option or check comes as Change.
struct Event {
  std::string Control;
  EventKind Kind = EventKind::Click;
  std::optional<Value> NewValue;
};

/// By control, the names of the properties that have changed.
using Changes = std::map<std::string, std::vector<std::string>>;

/// What kind of file is asked for: "Text files", "txt csv tsv".
struct FileKind {
  std::string Name;
  /// Separated by blanks, without points.
  std::string Extensions;
};

/// What a host supplies to show forms. A view may show several.
class View {
 public:
  virtual ~View() = default;
  /// Whether the host keeps a panel for property pages beside the document.
  [[nodiscard]] virtual bool Docks() const = 0;
  /// Shows it in the active window and returns at once; in a panel it takes the place of what stood there,
  /// which is closed with Cancel. `closed` is called once, when the form has been closed however.
  virtual void Show(const std::shared_ptr<Form>& form, Placement placement,
                    std::function<void(Result)> closed) = 0;
  /// What a handler has changed, once for each handler.
  virtual void Changed(Form& form, const Changes& changes) = 0;
  /// The control's Problem has been set: a view that does not show problems where they are tells it.
  virtual void Complain(Form& form, const Control& control) = 0;
  virtual void Focus(Form& form, const Control& control) = 0;
  virtual void Close(Form& form, Result result) = 0;

  /// Asks for a path and returns at once; `chosen` hears nothing when nobody chose.
  virtual void ChooseFile(Form& form, std::string_view title, const std::vector<FileKind>& kinds,
                          std::function<void(std::optional<std::string>)> chosen) = 0;
  virtual void ChooseFolder(Form& form, std::string_view title,
                            std::function<void(std::optional<std::string>)> chosen) = 0;
};

class Form : public std::enable_shared_from_this<Form> {
 public:
  /// `name` as in the system ("frmDataField"), `caption` for its title.
  Form(std::string name, std::string caption, Forms::Width width = Width::Narrow);
  virtual ~Form() = default;
  Form(const Form&) = delete;
  Form& operator=(const Form&) = delete;

  [[nodiscard]] const std::string& Name() const { return name_; }
  [[nodiscard]] const std::string& Caption() const { return caption_; }
  [[nodiscard]] Forms::Width Width() const { return width_; }
  /// What it is about, behind the caption: "3 shapes".
  [[nodiscard]] const std::string& Subject() const { return subject_; }
  [[nodiscard]] const std::vector<std::unique_ptr<Control>>& Controls() const { return controls_; }
  /// Null without one of that name.
  [[nodiscard]] Control* Find(std::string_view name) const;
  [[nodiscard]] const std::vector<Row>& Rows() const { return rows_; }
  /// Whether what is chosen on it is kept at once, so that closing it gives nothing up.
  [[nodiscard]] virtual bool KeepsAtOnce() const { return placement_ == Placement::Docked; }
  /// Null without one: what Enter and Esc mean.
  [[nodiscard]] const CommandButton* DefaultButton() const { return default_; }
  [[nodiscard]] const CommandButton* CancelButton() const { return cancel_; }

  /// Shows it in the host's view, which holds it from then on. An error where the host has none.
  void Show(Forms::Placement placement, std::function<void(Result)> closed = {});
  [[nodiscard]] bool IsShown() const { return isShown_; }
  [[nodiscard]] Forms::Placement Placement() const { return placement_; }
  /// A view hands in what its user did. Answers why not, when the form refuses it: a control that is not
  /// there, not enabled or not visible, a value of another kind, a closed form. Nothing is thrown.
  std::optional<std::string> Raise(const Event& event);
  /// The same for several, until one is refused; what they change is told once.
  std::optional<std::string> Raise(const std::vector<Event>& events);
  /// The view's user closes it otherwise than by a button: as its cancel button does, or with Cancel.
  void QueryClose();
  /// Runs what changes controls from outside of an event (an answer that has come, another selection), and
  /// tells the view once.
  void Update(const std::function<void()>& changes);

 protected:
  template <typename T, typename... Arguments>
  T& Add(std::string name, Arguments&&... arguments) {
    auto control = std::make_unique<T>(*this, std::move(name), std::forward<Arguments>(arguments)...);
    T& added = *control;
    controls_.push_back(std::move(control));
    return added;
  }
  void AddRow(std::string label, std::vector<Control*> controls, const Frame* group = nullptr) {
    rows_.push_back({std::move(label), std::move(controls), group, false});
  }
  void AddButtons(std::vector<Control*> controls) {
    rows_.push_back({{}, std::move(controls), nullptr, true});
  }
  void DefaultButton(const CommandButton& button) { default_ = &button; }
  void CancelButton(const CommandButton& button) { cancel_ = &button; }
  void Caption(std::string text) { caption_ = std::move(text); }
  void Subject(std::string text) { subject_ = std::move(text); }

  /// Says what is wrong with what stands in a control; an empty text takes that back. A change of the control
  /// takes it back as well.
  void Complain(Control& control, std::string_view text);
  void Focus(Control& control);
  void Close(Result result);
  /// The view that shows it; an error when none does.
  [[nodiscard]] Forms::View& View() const;
  /// Called in a catch block when a handler has failed, to report it.
  virtual void CatchError() = 0;

 private:
  friend class Control;
  friend class OptionButton;
  class Gathering;

  void NoteChange(const Control& control, std::string_view property);
  std::optional<std::string> Objection(const Event& event) const;
  void Take(const Event& event);
  void ReleaseOptions(std::string_view group);
  void Tell();

  std::string name_;
  std::string caption_;
  std::string subject_;
  Forms::Width width_;
  std::vector<std::unique_ptr<Control>> controls_;
  std::vector<Row> rows_;
  const CommandButton* default_ = nullptr;
  const CommandButton* cancel_ = nullptr;
  Forms::View* view_ = nullptr;
  Forms::Placement placement_ = Placement::Dialog;
  std::function<void(Result)> closed_;
  bool isShown_ = false;
  int gathering_ = 0;
  Changes changes_;
};

}  // namespace Forms
