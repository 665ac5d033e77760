// Compares what a deck's links ask for with what its sources give.

#include "app/inspect/LinkCheck.h"

#include <algorithm>
#include <functional>
#include <map>
#include <vector>

#include "addin/support/modGlobalFunctions.h"
#include "app/inspect/SourceLook.h"
#include "app/wiring/LinkedShapes.h"
#include "app/wiring/Output.h"
#include "app/wiring/StoredConnections.h"
#include "basic/Conversion.h"
#include "basic/Error.h"
#include "basic/Names.h"
#include "deck/objects/Links.h"
#include "host/services.h"
#include "model/clsShape.h"
#include "model/clsSlide.h"
#include "model/modTable.h"

namespace app {

namespace {

using LF2000::SourceType;

/// What a link can ask of a connection.
struct Source {
  bool isReadable = false;
  std::string name;
  std::vector<std::string> columns;
  double rowCount = 0;
  /// A chart or a scrolling slide goes through them.
  bool showsAllRows = false;
  /// By slide, the rows of shapes that the data do not have today.
  std::map<int, std::vector<double>> blankRows;
  /// The largest that a shape shows.
  double lastRow = 0;
};

class LinkCheck {
 public:
  explicit LinkCheck(deck::Presentation& deck) : deck_(deck) {}

  Findings run(const std::vector<CheckedSource>& sources) {
    for (const CheckedSource& source : sources) note(source);
    for (std::int32_t slide = 1; slide <= deck_.slideCount(); ++slide) {
      const std::vector<LinkedShape> shapes = linkedShapes(deck_, slide);
      for (const LinkedShape& shape : shapes) check(slide, shape);
      checkScrolling(slide, shapes);
      checkFiles(slide);
    }
    for (const auto& [number, source] : sources_) {
      if (source.isReadable) noteRows(source);
    }
    return std::move(findings_);
  }

 private:
  void note(const CheckedSource& checked) {
    Source& source = sources_[checked.number];
    source.name = checked.number;
    if (!checked.description.empty()) source.name += " (" + checked.description + ")";
    if (checked.isUnknown) return;
    if (!checked.look.isReadable()) {
      findings_.push_back(
          {Finding::Gravity::Broken, 0, "", "Connection " + source.name + ": " + checked.look.failure});
      return;
    }
    source.isReadable = true;
    source.columns = checked.look.columns;
    source.rowCount = static_cast<double>(checked.look.rowCount);
    for (const std::string& remark : checked.look.remarks) {
      findings_.push_back({Finding::Gravity::Note, 0, "", "Connection " + source.name + ": " + remark});
    }
  }

  void check(int slide, const LinkedShape& shape) {
    const auto type = static_cast<SourceType>(shape.sourceType);
    if (type == SourceType::Clock) return;
    const auto complain = [&](const std::string& text, const std::string& column = {}) {
      findings_.push_back(
          {Finding::Gravity::Broken, slide, shape.name, text, shape.id, shape.connection, column});
    };
    const auto found = sources_.find(shape.connection);
    if (found == sources_.end()) {
      complain("It is linked to connection " + shape.connection + ", which the deck does not have.");
      return;
    }
    Source& source = found->second;
    if (type == SourceType::Graph) source.showsAllRows = true;
    if (type == SourceType::Graph && !shape.isTable) {
      if (const std::string why = whyNoChart(slide, shape); !why.empty()) complain(why);
    }
    if (!source.isReadable) return;
    if (type == SourceType::Graph) {
      if (shape.isTable) checkTable(slide, shape, source);
      return;
    }
    if (!basic::HasName(source.columns, shape.column)) {
      complain("Connection " + source.name + " has no column '" + shape.column + "'.", shape.column);
    } else if (shape.row < 1) {
      findings_.push_back({Finding::Gravity::Broken, slide, shape.name,
                           "Row " + basic::CStr(shape.row) + " is none: rows count from 1.", shape.id});
    } else if (shape.row > source.rowCount) {
      source.blankRows[slide].push_back(shape.row);
    }
    source.lastRow = std::max(source.lastRow, shape.row);
  }

  /// Rows come and go with the data: blank is what the shapes then are meant to be.
  void noteRows(const Source& source) {
    const std::string today = "Connection " + source.name + " has " + basic::CStr(source.rowCount) +
                              (source.rowCount == 1 ? " row today" : " rows today");
    if (source.showsAllRows) return;
    for (const auto& [slide, rows] : source.blankRows) {
      const auto [first, last] = std::minmax_element(rows.begin(), rows.end());
      const std::string which = *first == *last ? "row " + basic::CStr(*first)
                                                : "rows " + basic::CStr(*first) + " to " + basic::CStr(*last);
      findings_.push_back(
          {Finding::Gravity::Note, slide, "", today + "; what shows " + which + " of it is blank."});
    }
    // Whoever shows the first row alone wants no more.
    if (source.lastRow > 1 && source.rowCount > source.lastRow) {
      findings_.push_back({Finding::Gravity::Note, 0, "",
                           today + "; the deck shows none below row " + basic::CStr(source.lastRow) + "."});
    }
  }

  /// An old graph is an object, of which nothing but a picture is shown.
  [[nodiscard]] std::string whyNoChart(int slide, const LinkedShape& shape) const {
    for (const pugi::xml_node node : deck_.shapesOf(slide).all()) {
      const pugi::xml_node object = presentationml::oleObject(node);
      if (presentationml::shapeId(node) != shape.id || !object) continue;
      try {
        static_cast<void>(deck::OLEFormat(object.attribute("progId").value()).Object());
      } catch (const basic::Error& error) {
        return error.description;
      }
    }
    return {};
  }

  void checkTable(int slide, const LinkedShape& shape, const Source& source) {
    const auto table = deck_.Slides()->Item(slide)->Shapes()->Item(std::string_view(shape.name))->Table();
    std::vector<std::string> columns = source.columns;
    columns.insert(columns.begin(), "");
    try {
      static_cast<void>(LF2000::modTable::ColumnsOf(*table, columns, "Connection " + source.name));
    } catch (const basic::Error& error) {
      findings_.push_back({Finding::Gravity::Broken, slide, shape.name, error.description, shape.id});
    }
    const std::int32_t rows = LF2000::modTable::BodyRows(*table);
    if (source.rowCount <= rows || scrolls(slide, shape)) return;
    findings_.push_back({Finding::Gravity::Note, slide, shape.name,
                         "Connection " + source.name + " has " + basic::CStr(source.rowCount) +
                             " rows today, the table room for " + std::to_string(rows) +
                             "; 'lumenfold slide' makes them scroll."});
  }

  bool scrolls(int slide, const LinkedShape& shape) {
    LF2000::clsSlide properties;
    static_cast<void>(properties.ReadTags(*deck_.Slides()->Item(slide)->Tags()));
    const std::vector<std::int32_t> numbers = properties.ScrollEntryNumbers();
    return std::any_of(numbers.begin(), numbers.end(), [&](std::int32_t number) {
      const std::string name = std::to_string(number);
      return properties.ScrollEnabled(name) && properties.ScrollStep(name) != 0 &&
             (shape.name == name || shape.connectionKey() == LF2000::modGlobalFunctions::Format000(number));
    });
  }

  /// An entry moves the shape of its name, or else those of its connection.
  void checkScrolling(int slide, const std::vector<LinkedShape>& shapes) {
    LF2000::clsSlide properties;
    for (const std::string& failure : properties.ReadTags(*deck_.Slides()->Item(slide)->Tags())) {
      findings_.push_back({Finding::Gravity::Broken, slide, "", failure});
    }
    for (const std::int32_t number : properties.ScrollEntryNumbers()) {
      const std::string name = std::to_string(number);
      const std::string connection = LF2000::modGlobalFunctions::Format000(number);
      if (properties.ScrollEnabled(name)) noteScrolled(shapes, name, connection);
      const bool moves = std::any_of(shapes.begin(), shapes.end(), [&](const LinkedShape& shape) {
        return shape.name == name || shape.connection == connection;
      });
      if (moves || !properties.ScrollEnabled(name)) continue;
      findings_.push_back({Finding::Gravity::Broken, slide, "",
                           "Scroll entry " + name + " moves nothing: no linked shape is named " + name +
                               " or shows connection " + connection + "."});
    }
  }

  void noteScrolled(const std::vector<LinkedShape>& shapes, const std::string& name,
                    const std::string& connection) {
    for (const LinkedShape& shape : shapes) {
      if (shape.name != name && shape.connection != connection) continue;
      const auto found = sources_.find(shape.connection);
      if (found != sources_.end()) found->second.showsAllRows = true;
    }
  }

  /// Pictures, films and objects that the deck itself links to files.
  void checkFiles(int slide) {
    for (const pugi::xml_node shape : deck_.shapesOf(slide).all()) {
      const std::string source = deck::linkSource(deck_, slide, shape);
      if (source.empty() || source.find("://") != std::string::npos) continue;
      try {
        static_cast<void>(host::Current().files->FileDateTime(source.substr(0, source.find('!'))));
      } catch (const basic::Error& error) {
        findings_.push_back({Finding::Gravity::Broken, slide, std::string(presentationml::shapeName(shape)),
                             "It is linked to a file that is not there: " + error.description});
      }
    }
  }

  deck::Presentation& deck_;
  std::map<std::string, Source, std::less<>> sources_;
  Findings findings_;
};

}  // namespace

Findings checkLinks(deck::Presentation& deck) {
  std::vector<CheckedSource> sources;
  for (const StoredConnection& stored : storedConnections(deck)) {
    CheckedSource source;
    source.number = stored.number;
    if (stored.failure.empty()) {
      source.description = stored.connection->ConnectionDescription();
      source.look = lookInto(*stored.connection);
    } else {
      source.look.failure = stored.failure;
    }
    sources.push_back(std::move(source));
  }
  return checkLinks(deck, sources);
}

Findings checkLinks(deck::Presentation& deck, const std::vector<CheckedSource>& sources) {
  return LinkCheck(deck).run(sources);
}

}  // namespace app
