#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

// The controls of forms (host/forms.h), and what they hold.

namespace Forms {

class Form;

/// What a control is; its name begins with the prefix.
enum class Kind : std::uint8_t {
  Label,          // lbl
  TextBox,        // txt
  UpDown,         // ud, beside the text box of its number
  CheckBox,       // chk
  OptionButton,   // opt, one of its group
  ComboBox,       // cmb
  ListBox,        // lst
  CommandButton,  // cmd
  Frame,          // fra, a group of rows with a caption
  Grid,           // grd, a preview of data
  Picture,        // pic
  ProgressBar     // prg
};

/// One line of a list.
struct Item {
  std::string Text;
  /// Said beside it in a lighter voice.
  std::string Note = {};
  bool Enabled = true;
  /// Of a list with columns: the cells behind Text.
  std::vector<std::string> Cells = {};
  friend bool operator==(const Item&, const Item&) = default;
};
using Items = std::vector<Item>;

/// Rows of a grid.
struct Rows {
  /// The number of the first of them, from 1.
  std::int64_t First = 1;
  std::vector<std::vector<std::string>> Cells;
  friend bool operator==(const Rows&, const Rows&) = default;
};

/// Places in a list, from 0.
using Places = std::vector<std::int64_t>;

using Value = std::variant<bool, std::int64_t, std::string, Items, Rows, Places>;

/// How a label speaks.
enum class Severity : std::int64_t { Plain = 0, Ok = 1, Warning = 2, Error = 3 };
/// How far the list of a combo box has come.
enum class ListState : std::int64_t { Ready = 0, Loading = 1, Failed = 2 };

/// A control's state is a set of named properties. Those that views know are the members of the
/// classes below, under their names ("Text", "Enabled", "Items"); one that is not there has its type's
/// empty value, but Enabled and Visible are true from the beginning.
class Control {
 public:
  Control(Form& form, Forms::Kind kind, std::string name);
  virtual ~Control() = default;
  Control(const Control&) = delete;
  Control& operator=(const Control&) = delete;

  [[nodiscard]] Forms::Kind Kind() const { return kind_; }
  [[nodiscard]] const std::string& Name() const { return name_; }
  [[nodiscard]] const std::map<std::string, Value, std::less<>>& Properties() const { return properties_; }

  [[nodiscard]] bool Enabled() const { return Get<bool>("Enabled"); }
  /// `reason` says why it is not.
  void Enabled(bool enabled, std::string_view reason = {});
  [[nodiscard]] const std::string& Reason() const { return Get<std::string>("Reason"); }
  [[nodiscard]] bool Visible() const { return Get<bool>("Visible"); }
  void Visible(bool visible) { Set("Visible", visible); }
  /// A sentence beside or below it.
  [[nodiscard]] const std::string& Hint() const { return Get<std::string>("Hint"); }
  void Hint(std::string_view text) { Set("Hint", std::string(text)); }
  /// What is wrong with what stands in it; see Form::Complain.
  [[nodiscard]] const std::string& Problem() const { return Get<std::string>("Problem"); }

  /// Handlers; an event without one is taken and does nothing more.
  std::function<void()> Change;
  std::function<void()> Click;
  std::function<void()> DblClick;
  std::function<void()> LostFocus;
  /// The list is about to be shown.
  std::function<void()> DropDown;

 protected:
  friend class Form;
  template <typename T>
  [[nodiscard]] const T& Get(std::string_view property) const {
    static const T empty{};
    const auto found = properties_.find(property);
    return found == properties_.end() ? empty : std::get<T>(found->second);
  }
  /// Tells the form what has changed, if anything has.
  void Set(std::string_view property, Value value);
  [[nodiscard]] Form& Owner() const { return form_; }

 private:
  Form& form_;
  Forms::Kind kind_;
  std::string name_;
  std::map<std::string, Value, std::less<>> properties_;
};

class Label final : public Control {
 public:
  Label(Form& form, std::string name) : Control(form, Kind::Label, std::move(name)) {}
  [[nodiscard]] const std::string& Text() const { return Get<std::string>("Text"); }
  void Text(std::string_view text, Forms::Severity severity = Severity::Plain) {
    Set("Text", std::string(text));
    Set("Severity", static_cast<std::int64_t>(severity));
  }
  [[nodiscard]] Forms::Severity Severity() const {
    return static_cast<Forms::Severity>(Get<std::int64_t>("Severity"));
  }
};

class TextBox final : public Control {
 public:
  /// `lines`: how many it shows; more than one takes line breaks.
  TextBox(Form& form, std::string name, std::int64_t lines = 1);
  [[nodiscard]] const std::string& Text() const { return Get<std::string>("Text"); }
  void Text(std::string_view text) { Set("Text", std::string(text)); }
  /// What stands behind it: "ms", "of 12 rows".
  void Unit(std::string_view text) { Set("Unit", std::string(text)); }
  void Placeholder(std::string_view text) { Set("Placeholder", std::string(text)); }
  /// What is typed is not shown.
  void Secret(bool secret) { Set("Secret", secret); }
};

/// Changes the number in a text box by steps.
class UpDown final : public Control {
 public:
  UpDown(Form& form, std::string name, TextBox& buddy, std::int64_t minimum, std::int64_t maximum);

 private:
  friend class Form;
  void Step(std::int64_t steps);
  TextBox& buddy_;
  std::int64_t minimum_;
  std::int64_t maximum_;
};

class CheckBox final : public Control {
 public:
  CheckBox(Form& form, std::string name, std::string_view caption);
  [[nodiscard]] bool Value() const { return Get<bool>("Value"); }
  void Value(bool value) { Set("Value", value); }
  /// Several objects differ in it.
  void Mixed(bool mixed) { Set("Mixed", mixed); }
};

/// Of the options with one group at most one is chosen.
class OptionButton final : public Control {
 public:
  OptionButton(Form& form, std::string name, std::string_view caption, std::string_view group);
  [[nodiscard]] bool Value() const { return Get<bool>("Value"); }
  /// Choosing one releases the others of its group.
  void Value(bool value);
};

/// A drop-down list. What is chosen is its text; where it is editable, any text may stand in it.
class ComboBox final : public Control {
 public:
  ComboBox(Form& form, std::string name, bool isEditable = false);
  [[nodiscard]] const Forms::Items& Items() const { return Get<Forms::Items>("Items"); }
  void Items(Forms::Items items) { Set("Items", std::move(items)); }
  [[nodiscard]] const std::string& Text() const { return Get<std::string>("Text"); }
  /// A text that is no item stays and is shown as one that is missing.
  void Text(std::string_view text) { Set("Text", std::string(text)); }
  /// The place of the text among the items, from 0; -1 where it is none.
  [[nodiscard]] std::int64_t ListIndex() const;
  void State(ListState state, std::string_view why = {});
  /// In the list what an item means, its note, stands before what it says.
  void NotesFirst(bool notesFirst) { Set("NotesFirst", notesFirst); }
};

class ListBox final : public Control {
 public:
  /// `columns`: headers of a list with columns; empty for one without.
  ListBox(Form& form, std::string name, std::vector<std::string> columns = {}, bool isMulti = false);
  [[nodiscard]] const Forms::Items& Items() const { return Get<Forms::Items>("Items"); }
  void Items(Forms::Items items);
  [[nodiscard]] const Places& Selected() const { return Get<Places>("Selected"); }
  /// Places that are none of the list are left out.
  void Selected(Places places);
  /// The first of them, -1 without any.
  [[nodiscard]] std::int64_t ListIndex() const;
};

class CommandButton final : public Control {
 public:
  CommandButton(Form& form, std::string name, std::string_view caption);
  [[nodiscard]] const std::string& Caption() const { return Get<std::string>("Caption"); }
  void Caption(std::string_view text) { Set("Caption", std::string(text)); }
  /// What a click puts onto the clipboard of who clicks, by the view; empty: nothing.
  [[nodiscard]] const std::string& Copies() const { return Get<std::string>("Copies"); }
  void Copies(std::string_view text) { Set("Copies", std::string(text)); }
};

class Frame final : public Control {
 public:
  Frame(Form& form, std::string name, std::string_view caption);
};

/// A preview, read only.
class Grid final : public Control {
 public:
  Grid(Form& form, std::string name) : Control(form, Kind::Grid, std::move(name)) {}
  /// Whether its user may draw a rectangle over its cells, which is a Change. Their columns' notes are shown.
  void Selects(bool selects) { Set("Selects", selects); }
  /// What was drawn last: first row, first column, last row, last column, both ends included, as places among
  /// what is shown; row -1 are the headers. Empty before, and whenever other rows are shown.
  [[nodiscard]] const Places& Selected() const { return Get<Places>("Selected"); }
  void Columns(Forms::Items columns) { Set("Columns", std::move(columns)); }
  void Rows(Forms::Rows rows);
  void Total(std::int64_t rows) { Set("Total", rows); }

 private:
  friend class Form;
  /// Whether they are four, in order, and of cells that are shown.
  [[nodiscard]] bool Shows(const Places& places) const;
};

class Picture final : public Control {
 public:
  Picture(Form& form, std::string name) : Control(form, Kind::Picture, std::move(name)) {}
  /// A file of the machine that the system runs on; empty for none. Views show it, if they may.
  [[nodiscard]] const std::string& File() const { return Get<std::string>("File"); }
  void File(std::string_view path) { Set("File", std::string(path)); }
};

class ProgressBar final : public Control {
 public:
  ProgressBar(Form& form, std::string name) : Control(form, Kind::ProgressBar, std::move(name)) {}
  /// Of `maximum`; 0 of 0 is of unknown length.
  void Step(std::int64_t step, std::int64_t maximum);
  void Text(std::string_view text) { Set("Text", std::string(text)); }
};

}  // namespace Forms
