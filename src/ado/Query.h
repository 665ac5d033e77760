#pragma once

#include <memory>
#include <mutex>
#include <optional>

#include "ado/Database.h"
#include "ado/ResultTable.h"
#include "ado/StatementSlot.h"
#include "basic/Error.h"

namespace ado {

/// A source being read in the background: the loop looks, the worker works.
class Query {
 public:
  explicit Query(Source source) : source_(std::move(source)) {}

  /// On the worker. Throws nothing: what happens is told to the loop.
  void run(Database& database);

  // On the loop; none of these blocks.
  [[nodiscard]] bool finished() const;
  /// The rows; throws the failure. Once, after it is finished.
  [[nodiscard]] ResultTable take();

  /// Ends the query from the loop's side at once, with that failure, and has the
  /// worker break off in its own time. Nothing when it is finished.
  static void abandon(const std::shared_ptr<Query>& query, const std::string& why);

 private:
  void finish(std::optional<ResultTable> table, std::optional<basic::Error> failure);

  Source source_;
  StatementSlot slot_;
  mutable std::mutex mutex_;
  bool finished_ = false;
  std::optional<ResultTable> table_;
  std::optional<basic::Error> failure_;
};

}  // namespace ado
