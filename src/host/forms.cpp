// What forms do by themselves: they keep the state of their controls, refuse events that cannot be, and
// gather what their handlers change.

#include "host/forms.h"

#include <algorithm>
#include <charconv>
#include <utility>

#include "basic/Error.h"
#include "host/services.h"

namespace Forms {

Control::Control(Form& form, Forms::Kind kind, std::string name)
    : form_(form), kind_(kind), name_(std::move(name)) {
  properties_["Enabled"] = true;
  properties_["Visible"] = true;
}

void Control::Set(std::string_view property, Value value) {
  const auto found = properties_.find(property);
  if (found != properties_.end() && found->second == value) return;
  properties_.insert_or_assign(std::string(property), std::move(value));
  form_.NoteChange(*this, property);
}

void Control::Enabled(bool enabled, std::string_view reason) {
  Set("Enabled", enabled);
  Set("Reason", std::string(enabled ? std::string_view() : reason));
}

TextBox::TextBox(Form& form, std::string name, std::int64_t lines)
    : Control(form, Kind::TextBox, std::move(name)) {
  Set("Lines", lines);
}

UpDown::UpDown(Form& form, std::string name, TextBox& buddy, std::int64_t minimum, std::int64_t maximum)
    : Control(form, Kind::UpDown, std::move(name)), buddy_(buddy), minimum_(minimum), maximum_(maximum) {
  Set("Buddy", buddy.Name());
  Set("Minimum", minimum);
  Set("Maximum", maximum);
}

/// A text that is no number counts as what lies before the first step, a number out of bounds as what lies
/// behind the last one.
void UpDown::Step(std::int64_t steps) {
  const std::string& text = buddy_.Text();
  std::int64_t number = steps > 0 ? minimum_ - 1 : minimum_ + 1;
  std::from_chars(text.data(), text.data() + text.size(), number);
  number = std::clamp(number, minimum_ - 1, maximum_ + 1);
  steps = std::clamp(steps, minimum_ - maximum_, maximum_ - minimum_);
  buddy_.Text(std::to_string(std::clamp(number + steps, minimum_, maximum_)));
}

CheckBox::CheckBox(Form& form, std::string name, std::string_view caption)
    : Control(form, Kind::CheckBox, std::move(name)) {
  Set("Caption", std::string(caption));
  Set("Value", false);
}

OptionButton::OptionButton(Form& form, std::string name, std::string_view caption, std::string_view group)
    : Control(form, Kind::OptionButton, std::move(name)) {
  Set("Caption", std::string(caption));
  Set("Group", std::string(group));
  Set("Value", false);
}

void OptionButton::Value(bool value) {
  if (value) Owner().ReleaseOptions(Get<std::string>("Group"));
  Set("Value", value);
}

ComboBox::ComboBox(Form& form, std::string name, bool isEditable)
    : Control(form, Kind::ComboBox, std::move(name)) {
  Set("IsEditable", isEditable);
}

std::int64_t ComboBox::ListIndex() const {
  const Forms::Items& items = Items();
  const auto found =
      std::find_if(items.begin(), items.end(), [this](const Item& item) { return item.Text == Text(); });
  return found == items.end() ? -1 : found - items.begin();
}

void ComboBox::State(ListState state, std::string_view why) {
  Set("ListState", static_cast<std::int64_t>(state));
  Set("ListProblem", std::string(why));
}

ListBox::ListBox(Form& form, std::string name, std::vector<std::string> columns, bool isMulti)
    : Control(form, Kind::ListBox, std::move(name)) {
  Forms::Items headers;
  for (std::string& column : columns) headers.push_back({std::move(column), {}});
  Set("Columns", std::move(headers));
  Set("IsMulti", isMulti);
}

void ListBox::Items(Forms::Items items) {
  Set("Items", std::move(items));
  Selected(Selected());
}

void ListBox::Selected(Places places) {
  const auto count = static_cast<std::int64_t>(Items().size());
  std::erase_if(places, [count](std::int64_t place) { return place < 0 || place >= count; });
  if (!Get<bool>("IsMulti") && places.size() > 1) places.erase(places.begin() + 1, places.end());
  Set("Selected", std::move(places));
}

std::int64_t ListBox::ListIndex() const { return Selected().empty() ? -1 : Selected().front(); }

CommandButton::CommandButton(Form& form, std::string name, std::string_view caption)
    : Control(form, Kind::CommandButton, std::move(name)) {
  Caption(caption);
}

Frame::Frame(Form& form, std::string name, std::string_view caption)
    : Control(form, Kind::Frame, std::move(name)) {
  Set("Caption", std::string(caption));
}

void Grid::Rows(Forms::Rows rows) {
  Set("Rows", std::move(rows));
  Set("Selected", Places());
}

bool Grid::Shows(const Places& places) const {
  if (!Get<bool>("Selects") || places.size() != 4) return false;
  const auto rows = static_cast<std::int64_t>(Get<Forms::Rows>("Rows").Cells.size());
  const auto columns = static_cast<std::int64_t>(Get<Forms::Items>("Columns").size());
  return -1 <= places[0] && places[0] <= places[2] && places[2] < rows && 0 <= places[1] &&
         places[1] <= places[3] && places[3] < columns;
}

void ProgressBar::Step(std::int64_t step, std::int64_t maximum) {
  Set("Step", step);
  Set("Maximum", maximum);
}

/// Tells the view at the end of the outermost one what was changed within.
class Form::Gathering {
 public:
  explicit Gathering(Form& form) : form_(form.shared_from_this()) { ++form_->gathering_; }
  ~Gathering() {
    if (--form_->gathering_ == 0) form_->Tell();
  }
  Gathering(const Gathering&) = delete;
  Gathering& operator=(const Gathering&) = delete;

 private:
  /// A handler may close the form.
  std::shared_ptr<Form> form_;
};

Form::Form(std::string name, std::string caption, Forms::Width width)
    : name_(std::move(name)), caption_(std::move(caption)), width_(width) {}

Control* Form::Find(std::string_view name) const {
  const auto found = std::find_if(controls_.begin(), controls_.end(),
                                  [&](const auto& each) { return each->Name() == name; });
  return found == controls_.end() ? nullptr : found->get();
}

void Form::Show(Forms::Placement placement, std::function<void(Result)> closed) {
  Forms::View* view = host::Current().forms;
  if (view == nullptr) {
    throw basic::Error(basic::AdapterError, name_, "Forms cannot be shown here: " + caption_ + ".");
  }
  view_ = view;
  placement_ = placement;
  closed_ = std::move(closed);
  isShown_ = true;
  changes_.clear();
  view_->Show(shared_from_this(), placement, [weak = weak_from_this()](Result result) {
    const auto form = weak.lock();
    if (!form || !form->isShown_) return;
    form->isShown_ = false;
    if (const auto told = std::exchange(form->closed_, nullptr)) told(result);
  });
}

std::optional<std::string> Form::Raise(const Event& event) { return Raise(std::vector<Event>{event}); }

std::optional<std::string> Form::Raise(const std::vector<Event>& events) {
  const Gathering gathering(*this);
  for (const Event& event : events) {
    if (auto objection = Objection(event)) return objection;
    Take(event);
  }
  return std::nullopt;
}

namespace {

bool Takes(const Control& control, const Event& event) {
  const auto holds = [&event]<typename T>(T) {
    return event.NewValue && std::holds_alternative<T>(*event.NewValue);
  };
  switch (event.Kind) {
    case EventKind::Change:
      switch (control.Kind()) {
        case Kind::TextBox:
        case Kind::ComboBox:
          return holds(std::string());
        case Kind::CheckBox:
        case Kind::OptionButton:
          return holds(bool());
        case Kind::ListBox:
        case Kind::Grid:
          return holds(Places());
        default:
          return false;
      }
    case EventKind::Step:
      return control.Kind() == Kind::UpDown && holds(std::int64_t());
    case EventKind::Click:
    case EventKind::DblClick:
    case EventKind::LostFocus:
    case EventKind::DropDown:
      return control.Kind() != Kind::Label && control.Kind() != Kind::Frame;
  }
  return false;
}

/// A text that only a list offers.
bool IsOffered(const Control& control, const Event& event) {
  const auto* combo = dynamic_cast<const ComboBox*>(&control);
  if (event.Kind != EventKind::Change || combo == nullptr) return true;
  const auto& properties = control.Properties();
  const auto editable = properties.find("IsEditable");
  if (editable != properties.end() && std::get<bool>(editable->second)) return true;
  const auto& text = std::get<std::string>(*event.NewValue);
  const Items& items = combo->Items();
  return text == combo->Text() || std::any_of(items.begin(), items.end(), [&](const Item& item) {
           return item.Enabled && item.Text == text;
         });
}

}  // namespace

std::optional<std::string> Form::Objection(const Event& event) const {
  if (!isShown_) return "The form has been closed.";
  const Control* control = Find(event.Control);
  if (control == nullptr) return "There is no control '" + event.Control + "' on " + name_ + ".";
  if (!control->Visible()) return "'" + event.Control + "' is not to be seen now.";
  if (!control->Enabled()) {
    return control->Reason().empty() ? "'" + event.Control + "' is not enabled." : control->Reason();
  }
  if (!Takes(*control, event)) return "'" + event.Control + "' does not take this.";
  const auto* grid = dynamic_cast<const Grid*>(control);
  const bool isDrawn = grid != nullptr && event.Kind == EventKind::Change;
  if (isDrawn && !grid->Shows(std::get<Places>(*event.NewValue))) {
    return "'" + event.Control + "' does not show these cells.";
  }
  if (!IsOffered(*control, event)) return "'" + event.Control + "' does not offer this.";
  return std::nullopt;
}

namespace {

const std::function<void()>& HandlerOf(const Control& control, EventKind kind) {
  switch (kind) {
    case EventKind::Click:
      return control.Click;
    case EventKind::DblClick:
      return control.DblClick;
    case EventKind::LostFocus:
      return control.LostFocus;
    case EventKind::DropDown:
      return control.DropDown;
    case EventKind::Change:
    case EventKind::Step:
      break;
  }
  return control.Change;
}

}  // namespace

void Form::Take(const Event& event) {
  Control* control = Find(event.Control);
  if (event.Kind == EventKind::Change) {
    Complain(*control, {});
    if (auto* option = dynamic_cast<OptionButton*>(control)) {
      option->Value(std::get<bool>(*event.NewValue));
    } else if (auto* list = dynamic_cast<ListBox*>(control)) {
      list->Selected(std::get<Places>(*event.NewValue));
    } else if (control->Kind() == Kind::Grid) {
      control->Set("Selected", *event.NewValue);
    } else if (control->Kind() == Kind::CheckBox) {
      control->Set("Mixed", false);
      control->Set("Value", *event.NewValue);
    } else {
      control->Set("Text", *event.NewValue);
    }
  } else if (event.Kind == EventKind::Step) {
    auto* upDown = dynamic_cast<UpDown*>(control);
    Complain(upDown->buddy_, {});
    upDown->Step(std::get<std::int64_t>(*event.NewValue));
    control = &upDown->buddy_;
  }
  // A copy: the handler may put another in its place.
  const std::function<void()> handler = HandlerOf(*control, event.Kind);
  if (!handler) return;
  try {
    handler();
  } catch (...) {
    CatchError();
  }
}

void Form::ReleaseOptions(std::string_view group) {
  for (const auto& control : controls_) {
    auto* option = dynamic_cast<OptionButton*>(control.get());
    if (option != nullptr && option->Get<std::string>("Group") == group) option->Set("Value", false);
  }
}

void Form::QueryClose() {
  if (!isShown_) return;
  if (cancel_ == nullptr) {
    Close(Result::Cancel);
  } else {
    Raise(Event{cancel_->Name(), EventKind::Click, {}});
  }
}

void Form::Update(const std::function<void()>& changes) {
  const Gathering gathering(*this);
  changes();
}

void Form::NoteChange(const Control& control, std::string_view property) {
  if (!isShown_) return;
  auto& names = changes_[control.Name()];
  if (std::find(names.begin(), names.end(), property) == names.end()) names.emplace_back(property);
  if (gathering_ == 0) Tell();
}

void Form::Tell() {
  const Changes changes = std::exchange(changes_, {});
  if (isShown_ && !changes.empty()) view_->Changed(*this, changes);
}

void Form::Complain(Control& control, std::string_view text) {
  if (control.Problem() != text) control.Set("Problem", std::string(text));
  if (isShown_ && !text.empty()) view_->Complain(*this, control);
}

void Form::Focus(Control& control) {
  if (isShown_) view_->Focus(*this, control);
}

void Form::Close(Result result) {
  if (isShown_) view_->Close(*this, result);
}

View& Form::View() const {
  if (view_ == nullptr || !isShown_) {
    throw basic::Error(basic::AdapterError, name_, "The form is not shown: " + caption_ + ".");
  }
  return *view_;
}

}  // namespace Forms
