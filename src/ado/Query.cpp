#include "ado/Query.h"

#include <new>
#include <system_error>
#include <utility>

#include "process/BackgroundThread.h"

namespace ado {

void Query::run(Database& database) {
  if (slot_.stopped()) return;
  try {
    finish(database.read(source_, slot_), std::nullopt);
  } catch (const basic::Error& error) {
    finish(std::nullopt, error);
  } catch (const std::bad_alloc&) {
    finish(std::nullopt,
           basic::Error(basic::AdapterError, "ADODB.Recordset",
                        "Cannot read " + shownSource(source_) + ": the memory does not suffice."));
  }
}

bool Query::finished() const {
  const std::lock_guard lock(mutex_);
  return finished_;
}

ResultTable Query::take() {
  const std::lock_guard lock(mutex_);
  if (failure_) throw *failure_;
  return std::move(*table_);
}

void Query::abandon(const std::shared_ptr<Query>& query, const std::string& why) {
  if (query->finished()) return;
  query->slot_.stop();
  query->finish(std::nullopt, basic::Error(basic::AdapterError, "ADODB.Recordset", why));
  try {
    process::startThread([query] { query->slot_.interrupt(); });
  } catch (const std::system_error&) {
    // Then the worker breaks off at the next row instead.
  }
}

void Query::finish(std::optional<ResultTable> table, std::optional<basic::Error> failure) {
  const std::lock_guard lock(mutex_);
  if (finished_) return;
  finished_ = true;
  table_ = std::move(table);
  failure_ = std::move(failure);
}

}  // namespace ado
