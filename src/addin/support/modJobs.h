#pragma once

#include <memory>

#include "host/jobs.h"

/// What may wait for others is handed in here, and never done in the handler of a form or a command.
namespace LF2000::modJobs {

/// Hands the job to the host's queue. In a host without one it is done before this returns, and has told how
/// it ended; Cancel and Deadline mean nothing then.
std::shared_ptr<host::RunningJob> Start(host::Job job);

}  // namespace LF2000::modJobs
