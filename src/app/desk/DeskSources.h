#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "app/wiring/LinkedShapes.h"
#include "model/clsPresentation.h"

namespace app {

/// A connection of the open deck as its author is told of it.
struct DeskSource {
  enum class State { Opening, Fresh, Stale, Failing };

  std::string number;
  std::string description;
  /// "text", "database", "workbook", "sample"
  std::string kind;
  /// Where the data come from, without secrets.
  std::string source;
  State state = State::Opening;
  /// Why it fails, without passwords.
  std::string message;
  /// How long it has been in a state other than Fresh.
  std::int64_t seconds = 0;
  std::vector<std::string> columns;
  std::int64_t rows = 0;
  /// When it delivered last, "14:02:11"; empty before.
  std::string read;
  /// "every second"
  std::string asked;
  /// Another number for other rows.
  std::int64_t version = 0;

  [[nodiscard]] bool hasColumn(std::string_view name) const;
};

/// How a link does.
struct LinkState {
  enum class Kind { Fresh, Stale, Broken };
  Kind kind = Kind::Fresh;
  /// Empty when it is fresh.
  std::string message;
};

/// How the connections of the open deck do, as of the last look. Nothing here waits for a source.
class DeskSources {
 public:
  explicit DeskSources(std::shared_ptr<LF2000::clsPresentation> model) : model_(std::move(model)) {}

  void look();
  [[nodiscard]] const std::vector<DeskSource>& all() const { return all_; }
  /// Null without one of that number.
  [[nodiscard]] const DeskSource* find(std::string_view number) const;
  /// Whether the link's connection is there and is known not to have its column.
  [[nodiscard]] bool missesColumn(const LinkedShape& link) const;
  [[nodiscard]] LinkState stateOf(const LinkedShape& link) const;

 private:
  /// What is known of an object only by looking often.
  struct Seen {
    std::weak_ptr<LF2000::clsConnection> connection;
    std::uint64_t deliveries = 0;
    std::string read;
    DeskSource::State state = DeskSource::State::Opening;
    std::int64_t since = 0;
  };

  [[nodiscard]] DeskSource describe(const std::shared_ptr<LF2000::clsConnection>& connection);

  std::shared_ptr<LF2000::clsPresentation> model_;
  std::vector<DeskSource> all_;
  /// By number.
  std::map<std::string, Seen> seen_;
};

}  // namespace app
