// Compares what a deck's links ask for with what its sources give.

#include "app/inspect/LinkCheck.h"

#include <algorithm>
#include <functional>
#include <map>

#include "addin/support/modGlobalFunctions.h"
#include "app/inspect/SheetUse.h"
#include "app/wiring/LinkedShapes.h"
#include "app/wiring/Output.h"
#include "app/wiring/StoredConnections.h"
#include "basic/Conversion.h"
#include "basic/Error.h"
#include "basic/Strings.h"
#include "deck/objects/Links.h"
#include "host/services.h"
#include "model/clsShape.h"
#include "model/clsSlide.h"

namespace app {

namespace {

using LF2000::clsConnection;
using LF2000::SourceType;

/// What a link can ask of a connection.
struct Source {
  bool isReadable = false;
  std::string name;
  std::vector<std::string> columns;
  double rowCount = 0;
};

class LinkCheck {
 public:
  explicit LinkCheck(deck::Presentation& deck) : deck_(deck) {}

  Findings run() {
    for (const StoredConnection& stored : storedConnections(deck_)) open(stored);
    for (std::int32_t slide = 1; slide <= deck_.slideCount(); ++slide) {
      const std::vector<LinkedShape> shapes = linkedShapes(deck_, slide);
      for (const LinkedShape& shape : shapes) check(slide, shape);
      checkScrolling(slide, shapes);
      checkFiles(slide);
    }
    return std::move(findings_);
  }

 private:
  void open(const StoredConnection& stored) {
    clsConnection& connection = *stored.connection;
    Source& source = sources_[stored.number];
    source.name = stored.number + " (" + connection.ConnectionDescription() + ")";
    if (!stored.failure.empty()) {
      findings_.push_back(
          {Finding::Gravity::Broken, 0, "", "Connection " + stored.number + ": " + stored.failure});
      return;
    }
    try {
      connection.OpenConnection();
      connection.OpenRecordset();
      connection.CloseConnection();
      source.isReadable = connection.RecordsetReady();
      source.columns = connection.Columns();
      source.columns.erase(source.columns.begin());
      source.rowCount = connection.RecordCount();
      for (const std::string& remark : remarksOn(connection)) {
        findings_.push_back({Finding::Gravity::Note, 0, "", "Connection " + source.name + ": " + remark});
      }
    } catch (const basic::Error& error) {
      findings_.push_back({Finding::Gravity::Broken, 0, "",
                           "Connection " + source.name + ": " + joinedLines(error.description)});
    }
  }

  void check(int slide, const LinkedShape& shape) {
    const auto type = static_cast<SourceType>(shape.sourceType);
    if (type == SourceType::Clock) return;
    const auto complain = [&](const std::string& text) {
      findings_.push_back({Finding::Gravity::Broken, slide, shape.name, text});
    };
    const auto found = sources_.find(shape.connection);
    if (found == sources_.end()) {
      complain("It is linked to connection " + shape.connection + ", which the deck does not have.");
      return;
    }
    const Source& source = found->second;
    if (!source.isReadable || type == SourceType::Graph) return;
    const bool hasColumn = std::any_of(source.columns.begin(), source.columns.end(), [&](const auto& column) {
      return basic::EqualsIgnoreCase(column, shape.column);
    });
    if (!hasColumn) {
      complain("Connection " + source.name + " has no column '" + shape.column + "'.");
    } else if (shape.row < 1 || shape.row > source.rowCount) {
      complain("Connection " + source.name + " has no row " + basic::CStr(shape.row) + "; it has " +
               basic::CStr(source.rowCount) + " today.");
    }
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
      const bool moves = std::any_of(shapes.begin(), shapes.end(), [&](const LinkedShape& shape) {
        return shape.name == name || shape.connection == connection;
      });
      if (moves || !properties.ScrollEnabled(name)) continue;
      findings_.push_back({Finding::Gravity::Broken, slide, "",
                           "Scroll entry " + name + " moves nothing: no linked shape is named " + name +
                               " or shows connection " + connection + "."});
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

Findings checkLinks(deck::Presentation& deck) { return LinkCheck(deck).run(); }

}  // namespace app
