#pragma once

#include <algorithm>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "basic/Error.h"
#include "basic/Strings.h"
#include "fakes/FakeTable.h"
#include "host/powerpoint.h"

/// Slides and what stands on them, in memory: objects with public state, so that a test sets up and looks at
/// what the system reads and writes.
namespace fakes {

[[noreturn]] inline void Fail(const std::string& what) {
  throw basic::Error(basic::AdapterError, "fake host", what);
}

class Tags final : public PowerPoint::Tags {
 public:
  std::int32_t Count() const override {
    if (failOnRead) Fail("the tags cannot be read");
    return static_cast<std::int32_t>(items.size());
  }
  std::string Name(std::int32_t index) const override { return At(index).first; }
  std::string Value(std::int32_t index) const override { return At(index).second; }
  void Add(std::string_view name, std::string_view value) override {
    if (failOnAdd) Fail("the tag cannot be added");
    const std::string upper = basic::UCase(name);
    const auto found = Find(upper);
    if (found != items.end()) {
      found->second = value;
    } else {
      items.emplace_back(upper, value);
    }
  }
  void Delete(std::string_view name) override {
    const auto found = Find(basic::UCase(name));
    if (found != items.end()) items.erase(found);
  }

  /// The value, or "(none)".
  std::string operator[](std::string_view name) const {
    for (const auto& [key, value] : items) {
      if (key == name) return value;
    }
    return "(none)";
  }

  std::vector<std::pair<std::string, std::string>> items;
  bool failOnAdd = false;
  bool failOnRead = false;

 private:
  const std::pair<std::string, std::string>& At(std::int32_t index) const {
    if (index < 1 || index > Count()) Fail("tag index out of range");
    return items[static_cast<std::size_t>(index) - 1];
  }
  std::vector<std::pair<std::string, std::string>>::iterator Find(const std::string& name) {
    return std::find_if(items.begin(), items.end(), [&](const auto& item) { return item.first == name; });
  }
};

/// A chart whose datasheet is one table; all of it in one object.
class Chart final : public PowerPoint::OLEFormat,
                    public MSGraph::Chart,
                    public MSGraph::Application,
                    public MSGraph::DataSheet,
                    public std::enable_shared_from_this<Chart> {
 public:
  std::string ProgID() const override { return "MSGraph.Chart.8"; }
  std::shared_ptr<MSGraph::Chart> Object() override { return shared_from_this(); }
  std::shared_ptr<MSGraph::Application> Application() override { return shared_from_this(); }
  std::shared_ptr<MSGraph::DataSheet> DataSheet() override { return shared_from_this(); }
  MSGraph::Table Cells() const override { return cells; }
  void Cells(const MSGraph::Table& table) override {
    Check(table);
    cells = table;
    ++fills;
  }
  void Check(const MSGraph::Table&) const override {
    if (fails) Fail("the chart takes no data");
  }
  void Restore() override { ++restored; }

  bool IsLinked() const override { return isLinked; }
  void BreakLink() override { isLinked = false; }

  MSGraph::Table cells;
  bool isLinked = false;
  bool fails = false;
  int fills = 0;
  int restored = 0;
};

/// A shape, which is its own frame of text.
class Shape final : public PowerPoint::Shape,
                    public PowerPoint::TextFrame,
                    public PowerPoint::TextRange,
                    public std::enable_shared_from_this<Shape> {
 public:
  explicit Shape(std::string shapeName) : name(std::move(shapeName)) {}
  std::int32_t Id() const override { return id; }
  std::string Name() const override { return name; }
  void Name(std::string_view value) override { name = value; }
  PowerPoint::ShapeType Type() const override { return type; }
  double Left() const override { return left; }
  double Top() const override { return top; }
  double Width() const override { return width; }
  double Height() const override { return height; }
  bool HasTextFrame() const override { return hasTextFrame; }
  std::shared_ptr<PowerPoint::TextFrame> TextFrame() override {
    if (!hasTextFrame) Fail("shape " + name + " has no text frame");
    return shared_from_this();
  }
  bool HasText() const override { return !text.empty(); }
  std::shared_ptr<PowerPoint::TextRange> TextRange() override { return shared_from_this(); }
  std::string Text() const override { return text; }
  void Text(std::string_view value) override {
    text = value;
    ++writes;
  }
  void InsertDateTime(PowerPoint::DateTimeFormat format, bool insertAsField) override {
    text = std::string(insertAsField ? "field " : "") + std::string(PowerPoint::PictureOf(format));
  }
  std::shared_ptr<PowerPoint::Tags> Tags() override { return tags; }
  std::shared_ptr<PowerPoint::LinkFormat> LinkFormat() override {
    struct Link final : PowerPoint::LinkFormat {
      explicit Link(Shape& owner) : shape(owner), path(owner.shownFile) {}
      std::string SourceFullName() const override { return path.empty() ? shape.linkSource : path; }
      void SourceFullName(std::string_view file) override { path = file; }
      void Update() override {
        if (path.find("broken") != std::string::npos) Fail(path + " holds no picture");
        shape.shownFile = path;
        ++shape.writes;
      }
      void BreakLink() override {
        if (shape.linkSource.empty() && path.empty()) Fail(shape.name + " is not linked");
        shape.linkSource.clear();
        shape.type = PowerPoint::ShapeType::Picture;
      }
      Shape& shape;
      std::string path;
    };
    if (hasTextFrame) Fail("shape " + name + " is neither a picture nor linked");
    return std::make_shared<Link>(*this);
  }
  std::shared_ptr<PowerPoint::OLEFormat> OLEFormat() override {
    if (!chart) Fail("no object");
    return chart;
  }
  std::shared_ptr<PowerPoint::GroupShapes> GroupItems() override {
    struct Items final : PowerPoint::GroupShapes {
      explicit Items(std::vector<std::shared_ptr<Shape>> shapes) : items(std::move(shapes)) {}
      std::int32_t Count() const override { return static_cast<std::int32_t>(items.size()); }
      std::shared_ptr<PowerPoint::Shape> Item(std::int32_t index) override {
        return items[static_cast<std::size_t>(index) - 1];
      }
      std::vector<std::shared_ptr<Shape>> items;
    };
    if (type != PowerPoint::ShapeType::Group) Fail("shape " + name + " is no group");
    return std::make_shared<Items>(grouped);
  }

  bool HasTable() const override { return table != nullptr; }
  std::shared_ptr<PowerPoint::Table> Table() override {
    if (!table) Fail("shape " + name + " is no table");
    return table;
  }

  std::shared_ptr<Shape> Clone() const {
    auto clone = std::make_shared<Shape>(*this);
    clone->tags = std::make_shared<fakes::Tags>(*tags);
    if (chart) clone->chart = std::make_shared<fakes::Chart>(*chart);
    if (table) clone->table = std::make_shared<fakes::Table>(*table);
    for (auto& each : clone->grouped) each = each->Clone();
    return clone;
  }

  std::int32_t id = 0;
  std::string name;
  std::string text;
  std::string linkSource;
  /// The file that it shows in place of its own content.
  std::string shownFile;
  PowerPoint::ShapeType type = PowerPoint::ShapeType::TextBox;
  bool hasTextFrame = true;
  // Points.
  double left = 0;
  double top = 0;
  double width = 100;
  double height = 20;
  /// Of a group.
  std::vector<std::shared_ptr<Shape>> grouped;
  int writes = 0;
  std::shared_ptr<fakes::Tags> tags = std::make_shared<fakes::Tags>();
  std::shared_ptr<fakes::Chart> chart;
  std::shared_ptr<fakes::Table> table;
};

class Transition final : public PowerPoint::SlideShowTransition {
 public:
  bool Hidden() const override { return hidden; }
  void Hidden(bool value) override { hidden = value; }
  bool AdvanceOnTime() const override { return seconds.has_value(); }
  void AdvanceOnTime(bool advances) override {
    if (advances != AdvanceOnTime()) seconds = advances ? std::optional(0.0) : std::nullopt;
  }
  double AdvanceTime() const override { return seconds.value_or(0); }
  void AdvanceTime(double value) override { seconds = value; }
  void EntryEffect(PowerPoint::EntryEffect) override { hasEffect = false; }
  bool hidden = false;
  bool hasEffect = true;
  std::optional<double> seconds;
};

class TimeLine final : public PowerPoint::TimeLine {
 public:
  void Delete() override { isDeleted = true; }
  bool isDeleted = false;
};

class Slide;

/// The presentation of a slide, as the slide knows it.
class SlideOwner {
 public:
  virtual ~SlideOwner() = default;
  virtual std::shared_ptr<PowerPoint::Slide> DuplicateOf(const Slide& slide) = 0;
  virtual void Remove(const Slide& slide) = 0;
  virtual void Move(const Slide& slide, std::int32_t toPos) = 0;
};

class Slide final : public PowerPoint::Slide,
                    public PowerPoint::Shapes,
                    public std::enable_shared_from_this<Slide> {
 public:
  std::int32_t SlideIndex() const override { return index; }
  std::int32_t SlideID() const override { return id; }
  std::shared_ptr<PowerPoint::TimeLine> TimeLine() override { return timeLine; }
  std::shared_ptr<PowerPoint::Slide> Duplicate() override { return owner->DuplicateOf(*this); }
  void Delete() override { owner->Remove(*this); }
  void MoveTo(std::int32_t toPos) override { owner->Move(*this, toPos); }
  std::shared_ptr<PowerPoint::Shapes> Shapes() override { return shared_from_this(); }
  std::shared_ptr<PowerPoint::Tags> Tags() override { return tags; }
  std::shared_ptr<PowerPoint::SlideShowTransition> SlideShowTransition() override { return transition; }

  std::int32_t Count() const override {
    if (isDeleted) Fail("the slide has been deleted");
    return static_cast<std::int32_t>(shapes.size());
  }
  std::shared_ptr<PowerPoint::Shape> Item(std::int32_t i) override {
    if (i < 1 || i > Count()) Fail("shape index out of range");
    return shapes[static_cast<std::size_t>(i) - 1];
  }
  std::shared_ptr<PowerPoint::Shape> Item(std::string_view name) override {
    for (const auto& shape : shapes) {
      if (basic::EqualsIgnoreCase(shape->name, name)) return shape;
    }
    Fail("no shape named " + std::string(name));
  }

  fakes::Shape& Add(std::string name) {
    shapes.push_back(std::make_shared<fakes::Shape>(std::move(name)));
    shapes.back()->id = Count() + 1;
    return *shapes.back();
  }
  /// A text or, by its type 3, a picture that shows a value of a connection.
  fakes::Shape& AddField(std::string name, int row, const std::string& connection = "001",
                         const std::string& column = "Price", int sourceType = 2) {
    fakes::Shape& shape = Add(std::move(name));
    shape.hasTextFrame = sourceType == 2;
    shape.type = shape.hasTextFrame ? PowerPoint::ShapeType::TextBox : PowerPoint::ShapeType::Picture;
    shape.tags->items = {{"CORVANE COLUMN TYPE", std::to_string(sourceType)},
                         {"CORVANE COLUMN TAG", connection},
                         {"CORVANE COLUMN COLUMNNAME", column},
                         {"CORVANE COLUMN ROW", std::to_string(row)}};
    return shape;
  }
  fakes::Shape& AddClock(const std::string& format) {
    fakes::Shape& shape = Add("clock");
    shape.tags->items = {{"CORVANE COLUMN TYPE", "1"}, {"CORVANE COLUMN DATE FORMAT", format}};
    return shape;
  }
  fakes::Chart& AddChart(const std::string& name, const std::string& connection = "001") {
    fakes::Shape& shape = Add(name);
    shape.hasTextFrame = false;
    shape.chart = std::make_shared<fakes::Chart>();
    shape.tags->items = {{"CORVANE COLUMN TYPE", "4"}, {"CORVANE COLUMN TAG", connection}};
    return *shape.chart;
  }
  fakes::Table& AddTable(const std::string& name, const std::string& cells,
                         const std::string& connection = "001") {
    fakes::Shape& shape = Add(name);
    shape.hasTextFrame = false;
    shape.table = std::make_shared<fakes::Table>(cells);
    shape.tags->items = {{"CORVANE COLUMN TYPE", "4"}, {"CORVANE COLUMN TAG", connection}};
    return *shape.table;
  }
  /// An object that is linked to a file.
  fakes::Shape& AddLinked(std::string source,
                          PowerPoint::ShapeType type = PowerPoint::ShapeType::LinkedOLEObject) {
    fakes::Shape& shape = Add("linked to " + source);
    shape.hasTextFrame = false;
    shape.type = type;
    shape.linkSource = std::move(source);
    return shape;
  }

  std::shared_ptr<Slide> Clone() const {
    auto clone = std::make_shared<Slide>(*this);
    clone->tags = std::make_shared<fakes::Tags>(*tags);
    clone->transition = std::make_shared<Transition>(*transition);
    clone->timeLine = std::make_shared<fakes::TimeLine>(*timeLine);
    for (auto& shape : clone->shapes) shape = shape->Clone();
    return clone;
  }

  std::int32_t index = 1;
  std::int32_t id = 256;
  bool isDeleted = false;
  SlideOwner* owner = nullptr;
  std::vector<std::shared_ptr<fakes::Shape>> shapes;
  std::shared_ptr<fakes::Tags> tags = std::make_shared<fakes::Tags>();
  std::shared_ptr<Transition> transition = std::make_shared<Transition>();
  std::shared_ptr<fakes::TimeLine> timeLine = std::make_shared<fakes::TimeLine>();
};

}  // namespace fakes
