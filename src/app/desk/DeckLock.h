#pragma once

#include <map>
#include <string>

#include "process/Descriptor.h"

namespace app {

/// Lets one program of this machine edit a deck at a time: locks (flock) on files in a folder, named by the
/// deck's path and by its device and inode, as it may be reached by several paths. They hold the address of
/// who edits, which may hold a token: mode 0600. The system frees them when the process ends, however it
/// does.
class DeckLock {
 public:
  /// The folder is made when it is not there.
  DeckLock(std::string folder, std::string deck);
  ~DeckLock();
  DeckLock(const DeckLock&) = delete;
  DeckLock& operator=(const DeckLock&) = delete;

  /// Whether somebody else edits the deck.
  [[nodiscard]] bool isTaken() const { return isTaken_; }
  /// Their address; empty when they have not told it yet.
  [[nodiscard]] const std::string& theirAddress() const { return theirAddress_; }
  /// Why nothing could be locked, as a sentence: the folder cannot be written. Empty when that is not so.
  [[nodiscard]] const std::string& problem() const { return problem_; }

  /// Where the deck is being edited from now on.
  void tell(std::string address);
  /// The deck's file has been replaced, by a save of any program.
  void follow();

 private:
  void take(const std::string& name);
  void release(const std::string& name);
  void write(const process::Descriptor& file) const;

  std::string folder_;
  std::string deck_;
  std::map<std::string, process::Descriptor> held_;
  std::string byInode_;
  std::string address_;
  bool isTaken_ = false;
  std::string theirAddress_;
  std::string problem_;
};

/// A name for what is kept about a deck: its own, and a number made of its path.
[[nodiscard]] std::string stateNameOf(const std::string& deck);

}  // namespace app
