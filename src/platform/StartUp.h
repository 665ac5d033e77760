#pragma once

namespace platform {

/// What a program does before anything else, so that nothing ends it half way:
///
/// - Descriptors 0 to 2 that are closed are opened on /dev/null. Otherwise the next
///   file that is opened, a deck perhaps, would get what is written to standard
///   output.
/// - A pipe or connection that nobody reads is an error of the write (EPIPE) instead
///   of the end (SIGPIPE), and so is a file beyond the limit for files (EFBIG, SIGXFSZ).
/// - The hang-up of the terminal (SIGHUP) waits: a verb that saves finishes first,
///   a show takes it as the wish to end (EventLoop::onSignal).
void prepareProcess();

}  // namespace platform
