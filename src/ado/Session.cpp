// What the loop and the thread of a connection have in common, and which of them may still speak.

#include "ado/Session.h"

#include <new>
#include <system_error>
#include <utility>

#include "process/BackgroundThread.h"

namespace ado {

void EndingWorkers::add() {
  const std::lock_guard lock(mutex_);
  ++count_;
}

void EndingWorkers::remove() {
  const std::lock_guard lock(mutex_);
  --count_;
  changed_.notify_all();
}

void EndingWorkers::waitFor(std::chrono::milliseconds longest) {
  std::unique_lock lock(mutex_);
  changed_.wait_for(lock, longest, [this] { return count_ == 0; });
}

struct Session::Shared {
  std::mutex mutex;
  std::condition_variable changed;
  State state = State::Connecting;
  std::optional<basic::Error> failure;
  std::deque<std::shared_ptr<Query>> queries;  // the first one may be under way
  std::shared_ptr<EndingWorkers> ending;
  bool workerDone = false;

  /// From the worker, unless the loop has given it up.
  void connected(std::optional<basic::Error> why) {
    const std::lock_guard lock(mutex);
    if (state != State::Connecting) return;
    state = why ? State::Failed : State::Open;
    failure = std::move(why);
  }

  /// Waits for a query; null when it is time to end.
  std::shared_ptr<Query> next() {
    std::unique_lock lock(mutex);
    changed.wait(lock, [this] { return state != State::Open || !queries.empty(); });
    return state == State::Open ? queries.front() : nullptr;
  }

  void done(const std::shared_ptr<Query>& query) {
    const std::lock_guard lock(mutex);
    std::erase(queries, query);
  }

  void leave() {
    const std::lock_guard lock(mutex);
    workerDone = true;
    if (state == State::Ended) ending->remove();
  }
};

std::shared_ptr<Session> Session::start(Target target, std::shared_ptr<EndingWorkers> ending) try {
  auto session = std::make_shared<Session>();
  session->shared_ = std::make_shared<Shared>();
  session->shared_->ending = std::move(ending);
  session->shown_ = target.shown;
  session->connectTimeout_ = target.connectTimeout;
  session->commandTimeout_ = target.commandTimeout;
  process::startThread([shared = session->shared_, target = std::move(target)] {
    work(shared, target);
    shared->leave();
  });
  return session;
} catch (const std::system_error& error) {
  throw basic::Error(basic::AdapterError, "ADODB.Connection",
                     std::string("No thread can be started for the database: ") + error.what() + ".");
}

void Session::work(const std::shared_ptr<Shared>& shared, const Target& target) try {
  Database database(target);
  shared->connected(std::nullopt);
  while (const auto query = shared->next()) {
    query->run(database);
    shared->done(query);
  }
} catch (const basic::Error& error) {
  shared->connected(error);
} catch (const std::bad_alloc&) {
  shared->connected(basic::Error(basic::AdapterError, "ADODB.Connection", "The memory does not suffice."));
}

Session::State Session::state() {
  const std::lock_guard lock(shared_->mutex);
  const auto waited = std::chrono::steady_clock::now() - started_;
  // The driver's own time-out, where it has one, comes with better words.
  constexpr std::chrono::seconds Grace{1};
  if (shared_->state == State::Connecting && connectTimeout_.count() > 0 &&
      waited > connectTimeout_ + Grace) {
    shared_->state = State::Failed;
    shared_->failure = basic::Error(basic::AdapterError, "ADODB.Connection",
                                    "Cannot open the connection '" + shown_ + "': no answer within " +
                                        std::to_string(connectTimeout_.count()) + " seconds.");
  }
  return shared_->state;
}

basic::Error Session::failure() const {
  const std::lock_guard lock(shared_->mutex);
  return *shared_->failure;
}

std::shared_ptr<Query> Session::read(Source source) {
  auto query = std::make_shared<Query>(std::move(source));
  const std::lock_guard lock(shared_->mutex);
  shared_->queries.push_back(query);
  shared_->changed.notify_all();
  return query;
}

void Session::end() {
  std::deque<std::shared_ptr<Query>> queries;
  {
    const std::lock_guard lock(shared_->mutex);
    if (shared_->state == State::Ended) return;
    shared_->state = State::Ended;
    if (!shared_->workerDone) shared_->ending->add();
    queries = shared_->queries;
    shared_->changed.notify_all();
  }
  for (const auto& query : queries) {
    Query::abandon(query, "The connection was closed while the recordset was being filled.");
  }
}

}  // namespace ado
