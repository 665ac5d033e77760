#include "app/LinkCheck.h"

#include <algorithm>
#include <functional>
#include <map>

#include "app/LinkedShapes.h"
#include "app/StoredConnections.h"
#include "basic/Conversion.h"
#include "basic/Error.h"
#include "basic/Strings.h"
#include "model/clsShape.h"

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
      for (const LinkedShape& shape : linkedShapes(deck_, slide)) check(slide, shape);
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
    } catch (const basic::Error& error) {
      findings_.push_back(
          {Finding::Gravity::Broken, 0, "",
           "Connection " + source.name + ": " + basic::Replace(error.description, "\r\n", "")});
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

  deck::Presentation& deck_;
  std::map<std::string, Source, std::less<>> sources_;
  Findings findings_;
};

}  // namespace

Findings checkLinks(deck::Presentation& deck) { return LinkCheck(deck).run(); }

}  // namespace app
