#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/date_time_format.h"
#include "host/graph.h"
#include "host/office.h"
#include "host/slide_show.h"
#include "host/table.h"

// The part of the PowerPoint object model that the system uses. Names, numbers
// and behaviour follow the object model's own reference (PowerPoint Visual Basic
// reference); a property is a const
// member to get it and an overload with one argument to let it. Collections
// count from 1. Objects are handed out by shared pointers; a host hands out the
// same presentation object for the same presentation, so identity is equality
// of pointers. A member that fails throws basic::Error. Everything is called on
// one thread.

namespace PowerPoint {

/// MsoShapeType, as far as used.
enum class ShapeType : std::int32_t {
  AutoShape = 1,
  Chart = 3,
  Freeform = 5,
  Group = 6,
  EmbeddedOLEObject = 7,
  Line = 9,
  LinkedOLEObject = 10,
  LinkedPicture = 11,
  Picture = 13,
  Placeholder = 14,
  Media = 16,
  TextBox = 17,
  Table = 19,
  Diagram = 24,
};

/// Named strings of a presentation, a slide or a shape.
class Tags {
 public:
  virtual ~Tags() = default;
  [[nodiscard]] virtual std::int32_t Count() const = 0;
  /// Names are upper case, as Add stores them. Index out of range is an error.
  [[nodiscard]] virtual std::string Name(std::int32_t index) const = 0;
  [[nodiscard]] virtual std::string Value(std::int32_t index) const = 0;
  /// Stores the name in upper case; a tag of the same name is replaced in its place.
  virtual void Add(std::string_view name, std::string_view value) = 0;
  /// A name that is not there is no error.
  virtual void Delete(std::string_view name) = 0;
};

class TextRange {
 public:
  virtual ~TextRange() = default;
  /// Paragraphs are separated by CR (code 13), line breaks are VT (code 11).
  [[nodiscard]] virtual std::string Text() const = 0;
  /// Replaces the whole text; the first run's and paragraph's formatting stay.
  /// LF and CR LF count as CR.
  virtual void Text(std::string_view text) = 0;
  /// Replaces the whole text by the date or time; as a field it is brought up to the present whenever the
  /// slide is shown. The formatting stays as with Text.
  virtual void InsertDateTime(DateTimeFormat format, bool insertAsField) = 0;
};

class TextFrame {
 public:
  virtual ~TextFrame() = default;
  /// Whether there is a character in it.
  [[nodiscard]] virtual bool HasText() const = 0;
  [[nodiscard]] virtual std::shared_ptr<PowerPoint::TextRange> TextRange() = 0;
};

/// Present on pictures, embedded ones too, and on linked objects.
class LinkFormat {
 public:
  virtual ~LinkFormat() = default;
  /// The source's full path; for a part of a workbook followed by "!" and the
  /// sheet or range. Empty for an embedded picture.
  [[nodiscard]] virtual std::string SourceFullName() const = 0;
  /// The picture file that the shape shows from the next Update on, in its frame
  /// and with its crop, without a change to what it is linked to; the empty text
  /// means its own content. A host saves a presentation with the own content.
  virtual void SourceFullName(std::string_view path) = 0;
  /// Reads the file anew. What cannot be read or is no picture is an error, and
  /// the shape goes on showing what it shows.
  virtual void Update() = 0;
  /// The shape keeps what it shows and is no longer linked; a linked object becomes a picture, under its id
  /// and name. What was asked of the shape before is asked anew afterwards. An error where nothing is linked,
  /// and where there is nothing that the shape could show instead.
  virtual void BreakLink() = 0;
};

/// Present on embedded and linked objects, and on charts.
class OLEFormat {
 public:
  virtual ~OLEFormat() = default;
  /// Of a chart "MSGraph.Chart" and a version.
  [[nodiscard]] virtual std::string ProgID() const = 0;
  /// The chart; an error where the object is none that can be refilled.
  [[nodiscard]] virtual std::shared_ptr<MSGraph::Chart> Object() = 0;
};

class GroupShapes;

class Shape {
 public:
  virtual ~Shape() = default;
  /// Names the shape on its slide for as long as it stands there.
  [[nodiscard]] virtual std::int32_t Id() const = 0;
  /// Another shape of the slide may have the same.
  [[nodiscard]] virtual std::string Name() const = 0;
  /// An error for one that another shape of the slide has, in any case of letters, and for the empty one.
  virtual void Name(std::string_view name) = 0;
  [[nodiscard]] virtual ShapeType Type() const = 0;
  /// The frame on the slide as it is before the shape is rotated, in points from the slide's upper
  /// left corner.
  [[nodiscard]] virtual double Left() const = 0;
  [[nodiscard]] virtual double Top() const = 0;
  [[nodiscard]] virtual double Width() const = 0;
  [[nodiscard]] virtual double Height() const = 0;
  [[nodiscard]] virtual bool HasTextFrame() const = 0;
  /// An error on a shape without a text frame.
  [[nodiscard]] virtual std::shared_ptr<PowerPoint::TextFrame> TextFrame() = 0;
  [[nodiscard]] virtual std::shared_ptr<PowerPoint::Tags> Tags() = 0;
  /// An error on a shape that is neither picture nor linked.
  [[nodiscard]] virtual std::shared_ptr<PowerPoint::LinkFormat> LinkFormat() = 0;
  /// An error on a shape that is neither object nor chart.
  [[nodiscard]] virtual std::shared_ptr<PowerPoint::OLEFormat> OLEFormat() = 0;
  [[nodiscard]] virtual bool HasTable() const = 0;
  /// An error on a shape that is no table.
  [[nodiscard]] virtual std::shared_ptr<PowerPoint::Table> Table() = 0;
  /// An error on a shape that is no group.
  [[nodiscard]] virtual std::shared_ptr<PowerPoint::GroupShapes> GroupItems() = 0;
};

/// The shapes of a group and of the groups within it, which are none of its items, in drawing order.
class GroupShapes {
 public:
  virtual ~GroupShapes() = default;
  [[nodiscard]] virtual std::int32_t Count() const = 0;
  [[nodiscard]] virtual std::shared_ptr<Shape> Item(std::int32_t index) = 0;
};

/// The top-level shapes of a slide in drawing order; a group is one shape.
class Shapes {
 public:
  virtual ~Shapes() = default;
  [[nodiscard]] virtual std::int32_t Count() const = 0;
  [[nodiscard]] virtual std::shared_ptr<Shape> Item(std::int32_t index) = 0;
  /// The first shape of that name (any case); an error when there is none.
  [[nodiscard]] virtual std::shared_ptr<Shape> Item(std::string_view name) = 0;
};

/// The slide's animations (MainSequence and InteractiveSequences in one).
class TimeLine {
 public:
  virtual ~TimeLine() = default;
  /// Takes every effect away: the shapes are there from the beginning. Where films or sounds are played among
  /// the effects, all stay.
  virtual void Delete() = 0;
};

class Slide {
 public:
  virtual ~Slide() = default;
  /// Its place in the presentation, from 1.
  [[nodiscard]] virtual std::int32_t SlideIndex() const = 0;
  /// Names it in the presentation wherever it stands.
  [[nodiscard]] virtual std::int32_t SlideID() const = 0;
  [[nodiscard]] virtual std::shared_ptr<PowerPoint::Shapes> Shapes() = 0;
  [[nodiscard]] virtual std::shared_ptr<PowerPoint::Tags> Tags() = 0;
  [[nodiscard]] virtual std::shared_ptr<PowerPoint::SlideShowTransition> SlideShowTransition() = 0;
  [[nodiscard]] virtual std::shared_ptr<PowerPoint::TimeLine> TimeLine() = 0;
  // Slides come and go in presentations without a window alone. Those behind move, and an object stands for
  // a place: the slide there is asked for anew.
  /// A copy behind it, with notes and tags, in the same section and in no named show. Where shapes show
  /// other pictures for the time being, the copy shows its own.
  virtual std::shared_ptr<Slide> Duplicate() = 0;
  /// Also takes it out of sections and named shows, and removes what leads to it.
  virtual void Delete() = 0;
  /// To this place, in the section of the slide before it.
  virtual void MoveTo(std::int32_t toPos) = 0;
};

class Slides {
 public:
  virtual ~Slides() = default;
  [[nodiscard]] virtual std::int32_t Count() const = 0;
  /// Index out of range is an error.
  [[nodiscard]] virtual std::shared_ptr<Slide> Item(std::int32_t index) = 0;
};

class Presentation {
 public:
  virtual ~Presentation() = default;
  /// Name with path.
  [[nodiscard]] virtual std::string FullName() const = 0;
  /// Whether nothing has changed since the last save.
  [[nodiscard]] virtual bool Saved() const = 0;
  virtual void Saved(bool saved) = 0;
  /// Raises PresentationSave first; called from within that event it only writes.
  virtual void Save() = 0;
  /// Writes another file, with what the shapes show at present; the presentation keeps its name and what
  /// Saved says.
  virtual void SaveCopyAs(std::string_view fileName) = 0;
  /// What was not saved is lost. Nothing when it is closed already.
  virtual void Close() = 0;
  [[nodiscard]] virtual std::shared_ptr<PowerPoint::Tags> Tags() = 0;
  [[nodiscard]] virtual std::shared_ptr<PowerPoint::Slides> Slides() = 0;
  [[nodiscard]] virtual std::shared_ptr<PowerPoint::SlideShowSettings> SlideShowSettings() = 0;
  /// Refreshes the linked objects from their sources.
  virtual void UpdateLinks() = 0;
};

/// Where a show goes from the slide on show, in its own order: a range of slides, a custom
/// show, a loop. Slides by their indices.
struct SlidesAhead {
  /// What it shows next; nothing when it stays where it is, or ends.
  std::optional<std::int32_t> Next;
  /// The hidden slides that it passes over on the way. Where no slide is ahead, also those
  /// behind the slide on show to which it may go back.
  std::vector<std::int32_t> PassedOver;
};

/// The view of a running show; errors when the show has ended.
class SlideShowView {
 public:
  virtual ~SlideShowView() = default;
  /// The index of the slide on show; count + 1 on the black end slide.
  [[nodiscard]] virtual std::int32_t CurrentShowPosition() const = 0;
  /// As hidden and visible slides are now; nothing on the end slide. The object model knows the
  /// settings that it follows from (SlideShowSettings, NamedSlideShows), not the way itself.
  [[nodiscard]] virtual PowerPoint::SlidesAhead SlidesAhead() const = 0;
  /// The slide on show.
  [[nodiscard]] virtual std::shared_ptr<PowerPoint::Slide> Slide() = 0;
  [[nodiscard]] virtual SlideShowPointerType PointerType() const = 0;
  virtual void PointerType(SlideShowPointerType type) = 0;
};

/// A running show.
class SlideShowWindow {
 public:
  virtual ~SlideShowWindow() = default;
  /// The presentation that it shows.
  [[nodiscard]] virtual std::shared_ptr<PowerPoint::Presentation> Presentation() = 0;
  [[nodiscard]] virtual std::shared_ptr<SlideShowView> View() = 0;
};

/// PpSelectionType.
enum class SelectionType : std::int32_t { None = 0, Slides = 1, Shapes = 2, Text = 3 };

/// What is selected in a document window.
class Selection {
 public:
  virtual ~Selection() = default;
  /// Text: the cursor stands in the text of the one shape that is selected.
  [[nodiscard]] virtual SelectionType Type() const = 0;
  /// The selected shapes (ShapeRange) in the order in which they were selected; none of any other type.
  [[nodiscard]] virtual std::vector<std::shared_ptr<Shape>> ShapeRange() = 0;
  /// The slides that they stand on, or those that are selected themselves (SlideRange); without a selection
  /// the slide that is being edited, if there is one.
  [[nodiscard]] virtual std::vector<std::shared_ptr<Slide>> SlideRange() = 0;
};

/// A window in which a presentation is edited.
class DocumentWindow {
 public:
  virtual ~DocumentWindow() = default;
  [[nodiscard]] virtual std::shared_ptr<PowerPoint::Presentation> Presentation() = 0;
  [[nodiscard]] virtual std::shared_ptr<PowerPoint::Selection> Selection() = 0;
};

class Presentations {
 public:
  virtual ~Presentations() = default;
  /// How many are open.
  [[nodiscard]] virtual std::int32_t Count() const = 0;
  /// Opens a file without a window (WithWindow: False), and raises PresentationOpen. One that is open already
  /// is handed out again.
  virtual std::shared_ptr<Presentation> Open(std::string_view fileName) = 0;
};

/// What a client of the application's events implements. Handlers do not throw.
class ApplicationEvents {
 public:
  virtual ~ApplicationEvents() = default;
  /// A presentation without a file was made.
  virtual void NewPresentation(const std::shared_ptr<Presentation>& presentation) = 0;
  /// One was read from its file.
  virtual void PresentationOpen(const std::shared_ptr<Presentation>& presentation) = 0;
  /// It is about to be closed, and is whole still.
  virtual void PresentationClose(const std::shared_ptr<Presentation>& presentation) = 0;
  /// It is about to be saved; what a client changes now is saved as well.
  virtual void PresentationSave(const std::shared_ptr<Presentation>& presentation) = 0;
  /// The first slide is on show.
  virtual void SlideShowBegin(const std::shared_ptr<SlideShowWindow>& window) = 0;
  /// Another slide has come on show, be it an earlier one. The build-up of a slide raises nothing.
  virtual void SlideShowNextSlide(const std::shared_ptr<SlideShowWindow>& window) = 0;
  /// The show has ended. It may come while a handler of the other events waits (Loop::DoEvents).
  virtual void SlideShowEnd(const std::shared_ptr<Presentation>& presentation) = 0;
  /// Another selection, or another slide is being edited.
  virtual void WindowSelectionChange(const std::shared_ptr<Selection>& selection) = 0;
  /// The user goes on in this window.
  virtual void WindowActivate(const std::shared_ptr<Presentation>& presentation,
                              const std::shared_ptr<DocumentWindow>& window) = 0;
  /// It is about to be printed.
  virtual void PresentationPrint(const std::shared_ptr<Presentation>& presentation) = 0;
};

class Application {
 public:
  virtual ~Application() = default;
  /// "9.0" and what follows it: the major version stands before the first point.
  [[nodiscard]] virtual std::string Version() const = 0;
  [[nodiscard]] virtual std::shared_ptr<PowerPoint::Presentations> Presentations() = 0;
  /// The window in which the user is at work; null without one (the object model raises an error then).
  [[nodiscard]] virtual std::shared_ptr<DocumentWindow> ActiveWindow() = 0;
  [[nodiscard]] virtual std::shared_ptr<Office::CommandBars> CommandBars() = 0;
  /// What is changed from here to the end of the handler can be undone as one step that bears this label
  /// ("Link Price"). Steps in a row with the same `run`, unless it is empty, are one. (The object model has
  /// this without label and run.)
  virtual void StartNewUndoEntry(std::string_view label, std::string_view run = {}) = 0;
  /// Subscribes to the events; the sink must outlive its subscription. A null
  /// sink ends it. One sink at a time.
  virtual void Advise(ApplicationEvents* sink) = 0;
};

}  // namespace PowerPoint
