#include "host/jobs.h"

#include <exception>

#include "basic/Error.h"

namespace host {

JobEnd DoWork(const Job& job) {
  try {
    job.Work();
    return {};
  } catch (const basic::Error& error) {
    return {JobEnd::Kind::Failed, error.number, error.source, error.description};
  } catch (const std::exception& error) {
    return {JobEnd::Kind::Failed, basic::AdapterError, basic::DefaultSource, error.what()};
  }
}

}  // namespace host
